// The sentence of the status panel: a symbol's words are in its row of status_tables.h.
#include "preview/sentence.h"
#include "preview/status_tables.h"
#include "preview/words.h"

namespace heron::preview {
namespace {

void AddSymbol(Sentence& sentence, Group group, uint8_t feature, uint8_t code) {
  const SymbolRow* const row = FindSymbol(group, feature, code);
  if (row != nullptr) sentence.AddText(static_cast<uint32_t>(row->words + code - row->first));
}

}  // namespace

std::u16string SayStatus(const StatusPicture& picture) {
  Sentence sentence;
  for (const uint8_t code : picture.jobSymbols) AddSymbol(sentence, Group::kJob, 0, code);
  for (const uint8_t code : picture.sheetSymbols) AddSymbol(sentence, Group::kSheet, 0, code);
  AddSymbol(sentence, Group::kOverlay, 0, picture.overlay);
  AddSymbol(sentence, Group::kStamp, 0, picture.stamp);
  AddSymbol(sentence, Group::kDepartment, 0, picture.department);
  for (const uint8_t feature : picture.iconOrder)
    AddSymbol(sentence, Group::kFeature, feature, FeatureCode(picture, feature));
  return sentence.Take();
}

}  // namespace heron::preview
