// What a device reports, in words (device_query.h).

#include <algorithm>

#include "catalog/strings.h"
#include "devicelink/device_query.h"
#include "engine/engine.h"
#include "generated/texts.h"
#include "platform/api/profile.h"
#include "platform/api/text.h"
#include "rules/control_tables.h"

namespace heron {
namespace {

using platform::ExpandText;

std::u16string LabelOf(uint16_t control) {
  return GetUiString(engine::kControls[engine::IndexOf(control)].label);
}

}  // namespace

std::u16string DeviceValueText(uint16_t control, uint16_t value) {
  if (const uint32_t label = engine::ValueLabel(engine::IndexOf(control), value); label != 0) return GetUiString(label);
  // The model is an option that the catalogue has no items for.
  for (const ModelBitRow& model : kModelBits) {
    const auto row = std::ranges::find(kValueBits, model.bit, &ValueBitsRow::bits);
    if (control == engine::ControlId(u"lpEngine") && row->value == value) return platform::FromUtf8(model.model);
  }
  return ExpandText(u"%d", {value});
}

std::u16string DescribeReport(const UiState& ui, const DeviceReport& report, const ReportedOptions& options) {
  std::u16string lines;
  for (const ReportedOption& option : options) {
    const uint16_t old = *FieldsOf(ui, engine::ParamIndexOfControl(engine::IndexOf(option.control))).value;
    const uint16_t now = ValueOf(ui, option);
    if (old == now) continue;
    lines += ExpandText(
        GetUiString(text::kDeviceChange),
        {LabelOf(option.control), DeviceValueText(option.control, old), DeviceValueText(option.control, now)});
  }
  const std::u16string model = platform::FromAnsi(report.model);
  std::u16string words = lines.empty() ? ExpandText(GetUiString(text::kDeviceReportsNoChange), {model})
                                       : ExpandText(GetUiString(text::kDeviceReports), {model, lines});
  if (!report.complete) words += GetUiString(text::kDeviceAnswersIncomplete);
  return words;
}

}  // namespace heron
