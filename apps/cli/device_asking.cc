// The query of a device without a window (device_asking.h).

#include "device_asking.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "generated/texts.h"
#include "platform/api/text.h"
#include "rules/control_tables.h"
#include "setting_names.h"

namespace heron::cli {
namespace {

[[noreturn]] void FailAsking(int code, const Catalogue& catalogue, uint32_t text, const std::string& more = {}) {
  throw Failure(code, catalogue.Text(text) + more);
}

uint16_t ValueNow(const UiState& ui, uint16_t control) {
  return *FieldsOf(ui, engine::ParamIndexOfControl(engine::IndexOf(control))).value;
}

/// The next command reads the record anew; an option that it wouldn't find isn't stored.
void CheckKept(SettingsSession& opened, const AskedDevice& asked) {
  const auto again = opened.ReadAgain();
  for (const ReportedOption& option : asked.options) {
    const uint16_t wanted = ValueNow(opened.ui(), option.control);
    if (ValueNow(*again->ui, option.control) == wanted) continue;
    throw Failure(kRefused, ControlName(opened.engine(), option.control) + ": the settings don't keep \"" +
                                Printable(DeviceValueText(option.control, wanted)) + "\"; nothing was changed");
  }
}

}  // namespace

std::u16string DeviceAddressOf(const std::string& text) {
  const std::u16string address = platform::FromUtf8(text);
  const bool control = std::ranges::any_of(address, [](char16_t c) { return c < u' ' || c == 0x7F; });
  if (control || address.size() > kDeviceAddressLength || text.size() > kDeviceAddressLength)
    throw Failure(kUsage, "the address \"" + Printable(text) + "\" isn't one: it has at most " +
                              std::to_string(kDeviceAddressLength) + " characters, like printer.example:161");
  return address;
}

AskedDevice AskDevice(const DeviceTarget& target, const Catalogue& catalogue) {
  if (const uint32_t why = WhyNotAsked(target); why != 0)
    FailAsking(why == text::kEnterDeviceAddress ? kUsage : kNoDevice, catalogue, why,
               why == text::kEnterDeviceAddress ? " (--address)" : "");
  const DeviceProbe probe = ProbeDevice(target);
  if (probe.reply == DeviceReply::kNoAnswer) FailAsking(kNoDevice, catalogue, text::kDeviceDoesNotAnswer);
  if (probe.reply == DeviceReply::kOtherModel)
    FailAsking(kRefused, catalogue, text::kDeviceDoesNotAnswer, " (it is a \"" + Printable(probe.model) + "\")");
  AskedDevice asked{.address = target.address, .report = {}, .options = {}};
  std::optional<DeviceReport> report = ReadDevice(target);
  if (!report) FailAsking(kNoDevice, catalogue, text::kNoDeviceModule);
  asked.report = std::move(*report);
  // A device that left between the two conversations reported nothing.
  if (!IsAcceptedModel(asked.report.model)) FailAsking(kNoDevice, catalogue, text::kDeviceDoesNotAnswer);
  asked.options = MapDeviceOptions(asked.report);
  return asked;
}

bool StoreAsked(SettingsSession& opened, const AskedDevice& asked) {
  SetDeviceAddress(opened.ui(), asked.address);
  StoreDeviceOptions(opened.ui(), asked.options);
  opened.Commit(nullptr);
  CheckKept(opened, asked);
  return opened.Keep(opened.Record());
}

}  // namespace heron::cli
