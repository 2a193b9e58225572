#include "pages/device_page.h"

#include <optional>
#include <stop_token>

#include "engine/setting.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/text.h"

namespace heron::pages {
namespace {

using engine::Setting;

constexpr ControlId kPcl5 = engine::ControlId(u"lpPDLType.Pcl5"), kPclXl = engine::ControlId(u"lpPDLType.PclXl");
constexpr ControlId kNetworkGroup = 870, kAddress = 873, kQueryButton = 814;

/// In the order in which they are shown.
enum Group : uint8_t { kOptions, kLanguage, kNetwork };

// clang-format off
constexpr ShownControl kControls[] = {
    {engine::ControlId(u"lpSourceUnit"), kOptions},
    {engine::ControlId(u"lpOutputUnit"), kOptions},
    {engine::ControlId(u"lpMailBinKit"), kOptions},
    {engine::ControlId(u"lpPunchKit"), kOptions},
    {engine::ControlId(u"lpSaddleUnit"), kOptions},
    {engine::ControlId(u"lpFAXUnit"), kOptions},
    {engine::ControlId(u"lpCopierHardDisk"), kOptions},
    {engine::ControlId(u"lpEngine"), kOptions},
    {engine::ControlId(u"Secur_Check"), kOptions},
    {kPcl5, kLanguage}, {kPclXl, kLanguage},
};
// clang-format on

/// What a query brought, from another thread.
struct Answer {
  DeviceProbe probe;
  std::optional<DeviceReport> report;
};

/// Asks for the options only if the model is one of the driver's.
void Ask(const DeviceTarget& target, const std::stop_token& stop, Answer* answer) {
  answer->probe = ProbeDevice(target, stop);
  if (answer->probe.reply == DeviceReply::kAccepted) answer->report = ReadDevice(target, stop);
}

}  // namespace

DevicePage::DevicePage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, kControls) {}

void DevicePage::OnInitialise() {
  dialog().SetTextLimit(kAddress, kDeviceAddressLength);
  Page::OnInitialise();
  if (DeviceProbeLibrary(ui()) && DeviceProbeNetwork(ui())) return;
  for (const ControlId id : {kNetworkGroup, kAddress, kQueryButton}) dialog().Enable(id, false);
}

void DevicePage::OnGroupShown(uint8_t group) {
  if (group == kLanguage) {
    namespace language = value::lpPDLType;
    const uint16_t chosen = Setting<u"lpPDLType">(ui());
    dialog().SetChecked(kPclXl, chosen >= language::kPclXl && chosen <= language::kPclXlMode4);
  }
  // Only if it differs, so that the caret stays.
  if (group == kNetwork && dialog().Text(kAddress) != DeviceAddress(ui()))
    dialog().SetText(kAddress, DeviceAddress(ui()));
}

void DevicePage::OnTextChanged(ControlId id) {
  if (id != kAddress) return Page::OnTextChanged(id);
  const std::u16string typed = dialog().Text(kAddress).substr(0, kDeviceAddressLength);
  if (typed == DeviceAddress(ui())) return;
  SetDeviceAddress(ui(), typed);
  MarkChanged();
}

void DevicePage::OnButton(ControlId id) {
  if (id != kQueryButton) return Page::OnButton(id);
  QueryDevice();
  dialog().Focus(kQueryButton);
}

bool DevicePage::OnApply() {
  if (!Page::OnApply()) return false;
  if (Editable()) DeviceSaveToDirectory(ui());
  return true;
}

void DevicePage::QueryDevice() {
  const std::u16string caption = TextOf(text::kGetDeviceSettings);
  if (Tell(TextOf(text::kAskToQueryDevice), caption, platform::MB_YESNO | platform::MB_ICONQUESTION) != platform::IDYES)
    return;
  const DeviceTarget target = TargetOf(ui());
  if (const uint32_t why = WhyNotAsked(target); why != 0) return RefuseQuery(why);
  Answer answer;
  const std::u16string asking =
      platform::ExpandText(TextOf(text::kAskingDevice), {std::u16string_view(target.address)});
  const auto work = [&](const std::stop_token& stop) { Ask(target, stop, &answer); };
  if (!dialog().RunBusy({.title = caption, .text = asking, .work = work})) return;
  if (!answer.report) return RefuseQuery(text::kDeviceDoesNotAnswer);
  TakeReport(*answer.report);
}

void DevicePage::RefuseQuery(uint32_t text) {
  Tell(TextOf(text), TextOf(text::kGetDeviceSettings), platform::MB_OK | platform::MB_ICONEXCLAMATION);
}

/// No rule runs: what is installed is a fact. The rules see it with the next change, and which options fit is shown at
/// once.
void DevicePage::TakeReport(const DeviceReport& report) {
  const ReportedOptions options = MapDeviceOptions(report);
  const std::u16string words = DescribeReport(ui(), report, options);
  StoreDeviceOptions(ui(), options);
  Rebuild();
  MarkChanged();
  Tell(words, TextOf(text::kGetDeviceSettings), platform::MB_OK | platform::MB_ICONINFORMATION);
}

}  // namespace heron::pages
