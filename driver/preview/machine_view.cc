#include "preview/machine_view.h"

#include <algorithm>

#include "engine/setting.h"
#include "preview/machine_tables.h"

namespace heron::preview {
namespace {

constexpr uint16_t kIsInstalled = 2;

bool Meets(Need need, uint16_t unit) {
  return need == Need::kAny || unit == kIsInstalled;
}

void Add(Stack& stack, uint16_t picture, Mode mode = Mode::kAnd) {
  if (picture != 0) stack.push_back({picture, mode, 0, 0, kMachineWidth, kMachineHeight, false});
}

/// The first row of a table that matches, or null.
template <typename Rows, typename Matches>
auto FirstRow(const Rows& rows, Matches matches) {
  const auto row = std::ranges::find_if(rows, matches);
  return row == std::ranges::end(rows) ? nullptr : &*row;
}

const SourceRow* SourceRowOf(const MachinePicture& picture) {
  return FirstRow(kLitSources, [&](const SourceRow& r) {
    return r.mediaSource == picture.mediaSource && Holds(r.sourceUnits, picture.sourceUnit);
  });
}

const TrayRow* TrayRowOf(const MachinePicture& picture) {
  return FirstRow(kLitTrays, [&](const TrayRow& r) {
    return r.outputTray == picture.outputTray && Meets(r.mailBins, picture.mailBinKit) &&
           Meets(r.saddle, picture.saddleUnit) && !(r.withoutFold && picture.foldStaple != 0) &&
           Holds(r.outputUnits, picture.outputUnit);
  });
}

}  // namespace

constexpr std::array<MachineField, 7> kMachineFields = {{
    {"lpSourceUnit", &MachinePicture::sourceUnit},
    {"lpOutputUnit", &MachinePicture::outputUnit},
    {"lpMailBinKit", &MachinePicture::mailBinKit},
    {"lpSaddleUnit", &MachinePicture::saddleUnit},
    {"lpMediaSource", &MachinePicture::mediaSource},
    {"lpOutputTray", &MachinePicture::outputTray},
    {"FoldStaple_Check", &MachinePicture::foldStaple},
}};

MachinePicture DescribeMachine(const UiState& ui) {
  using engine::Setting;
  return {.sourceUnit = Setting<u"lpSourceUnit">(ui),
          .outputUnit = Setting<u"lpOutputUnit">(ui),
          .mailBinKit = Setting<u"lpMailBinKit">(ui),
          .saddleUnit = Setting<u"lpSaddleUnit">(ui),
          .mediaSource = Setting<u"lpMediaSource">(ui),
          .outputTray = Setting<u"lpOutputTray">(ui),
          .foldStaple = engine::IsOn<u"FoldStaple_Check">(ui)};
}

Stack StackMachine(const MachinePicture& picture) {
  Stack stack;
  if (const auto* row = FirstRow(kBodies, [&](const BodyRow& r) { return r.sourceUnit == picture.sourceUnit; })) {
    for (const uint16_t number : row->pictures) Add(stack, number);
  }
  const auto* const output = FirstRow(kOutputUnits, [&](const OutputRow& r) {
    return Meets(r.mailBins, picture.mailBinKit) && Meets(r.saddle, picture.saddleUnit) &&
           Holds(r.outputUnits, picture.outputUnit);
  });
  if (output != nullptr) {
    for (const uint16_t number : output->pictures) Add(stack, number);
  }
  return stack;
}

LitParts LitPartsOf(const MachinePicture& picture) {
  return {.source = SourceRowOf(picture) != nullptr,
          .tray = TrayRowOf(picture) != nullptr,
          .saddle = Holds(kSaddleOutputUnits, picture.outputUnit) && picture.saddleUnit == kIsInstalled &&
                    picture.foldStaple != 0 && !Holds(kTraysBesideSaddle, picture.outputTray)};
}

Stack StackHighlights(const MachinePicture& picture) {
  Stack stack;
  if (const SourceRow* const source = SourceRowOf(picture)) Add(stack, source->picture);
  if (const TrayRow* const tray = TrayRowOf(picture)) {
    Add(stack, tray->below, Mode::kXor);
    Add(stack, tray->picture);
  }
  if (LitPartsOf(picture).saddle) Add(stack, kLitSaddle);
  return stack;
}

}  // namespace heron::preview
