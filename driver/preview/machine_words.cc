// The sentence of the machine. Units and trays have the names that the settings' lists have.
#include "engine/engine.h"
#include "preview/sentence.h"
#include "preview/words.h"

namespace heron::preview {
namespace {

constexpr uint32_t kMachine = 32150, kWithoutOptions = 32151, kMailBins = 32152, kSaddle = 32153;
constexpr uint32_t kPaperFrom = 32154, kSheetsTo = 32155, kBookletsTo = 32156;
// Controls whose lists name the values.
constexpr uint16_t kFeedUnits = 802, kOutputUnits = 804, kPaperTrays = 120, kOutputTrays = 139;
constexpr uint16_t kNotInstalled = 1, kIsInstalled = 2;

std::u16string_view NameOf(uint16_t control, uint16_t value) {
  const char16_t* const name = engine::GetValueLabel(control, value);
  return name == nullptr ? std::u16string_view() : name;
}

void AddNamed(Sentence& sentence, uint32_t text, std::u16string_view name) {
  if (!name.empty()) sentence.AddText(text, name);
}

}  // namespace

std::u16string SayMachine(const MachinePicture& picture, bool highlights) {
  Sentence sentence;
  sentence.AddText(kMachine);
  const bool feeds = picture.sourceUnit > kNotInstalled;
  const bool finishes = picture.outputUnit > kNotInstalled;
  if (feeds) sentence.Add(NameOf(kFeedUnits, picture.sourceUnit));
  if (finishes) sentence.Add(NameOf(kOutputUnits, picture.outputUnit));
  if (!feeds && !finishes) sentence.AddText(kWithoutOptions);
  if (finishes && picture.mailBinKit == kIsInstalled) sentence.AddText(kMailBins);
  if (finishes && picture.saddleUnit == kIsInstalled) sentence.AddText(kSaddle);
  if (!highlights) return sentence.Take();
  const LitParts lit = LitPartsOf(picture);
  if (lit.source) AddNamed(sentence, kPaperFrom, NameOf(kPaperTrays, picture.mediaSource));
  if (lit.tray) AddNamed(sentence, kSheetsTo, NameOf(kOutputTrays, picture.outputTray));
  if (lit.saddle) sentence.AddText(kBookletsTo);
  return sentence.Take();
}

}  // namespace heron::preview
