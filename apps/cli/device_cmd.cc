// `heron device`: what is installed in a printer, as stored, and asked of the device itself.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "catalog/strings.h"
#include "common/command.h"
#include "device_asking.h"
#include "generated/texts.h"
#include "platform/api/profile.h"
#include "rules/control_tables.h"
#include "setting_names.h"
#include "settings/printer_data.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {
namespace {

struct DeviceOptions {
  std::string printer;
  std::string address;
  bool json = false;
  ConsentOptions consent;
};

Json OptionJson(uint16_t control, uint16_t value) {
  return {{"control", control},
          {"key", KeyOfSetting(engine::ParamIndexOfControl(engine::IndexOf(control)))},
          {"value", value},
          {"label", Printable(DeviceValueText(control, value))}};
}

void Show(const DeviceOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDevice);
  opened.Open(false);
  const std::u16string address = DeviceAddress(opened.ui());
  Json rows = Json::array();
  for (const DeviceOptionRow& row : kDeviceOptions)
    rows.push_back(OptionJson(row.control, engine::GetControlValue(opened.engine(), row.control)));
  if (options.json) return PrintJson("device.show", {{"address", Printable(address)}, {"options", rows}});
  std::cout << Heading(options.printer) << '\n';
  const auto line = [](const std::string& what, const std::string& value) {
    std::cout << "  " << Padded(what, 22) << (value.empty() ? "-" : value) << '\n';
  };
  line("Network address", Printable(address));
  for (size_t i = 0; i < rows.size(); ++i)
    line(ControlName(opened.engine(), kDeviceOptions[i].control), rows[i]["label"].get<std::string>());
}

Json AnswerJson(const UiState& ui, const AskedDevice& asked, bool applied) {
  Json rows = Json::array();
  for (const ReportedOption& option : asked.options) {
    const Json known = OptionJson(option.control, ValueOf(ui, option));
    rows.push_back({{"control", known["control"]},
                    {"key", known["key"]},
                    {"bits", option.bits},
                    {"value", known["value"]},
                    {"label", known["label"]},
                    {"default", !option.value.has_value()}});
  }
  const auto text = [](const std::string& ansi) { return Printable(platform::FromAnsi(ansi)); };
  return {{"address", Printable(asked.address)},
          {"model", text(asked.report.model)},
          {"family", text(asked.report.family)},
          {"complete", asked.report.complete},
          {"applied", applied},
          {"options", rows}};
}

/// Without a terminal there is no way to agree later; the device isn't asked then, as in the window after a No.
void CheckConsent(const DeviceOptions& options) {
  const Consent consent = options.consent.consent();
  if (consent == Consent::kNo) throw Failure(kConsent, "declined; the device wasn't asked and nothing was changed");
  if (consent == Consent::kAsk && isatty(STDIN_FILENO) == 0)
    throw Failure(kConsent,
                  "the answer replaces the installed options of the printer; agree with --yes, see it first with "
                  "--dry-run, or run on a terminal to be asked");
}

/// Shows the changes; whether to make them.
bool Agrees(const DeviceOptions& options, const std::string& changes) {
  if (options.consent.consent() != Consent::kAsk) return true;
  PrintReport(std::cerr, {.caption = Printable(std::u16string_view(GetUiString(text::kGetDeviceSettings))),
                          .text = changes + PrintableLines(GetUiString(text::kAskToChange)),
                          .asked = true,
                          .yes = false});
  return AnswerOf(Consent::kAsk).value_or(false);
}

/// False, with nothing stored, if another program has changed the printer's settings meanwhile.
bool TryStoring(const DeviceOptions& options, Printer& printer, const AskedDevice& asked, std::string* agreed) {
  SettingsSession opened(printer, options.printer, {}, SettingsKind::kDevice);
  opened.Open(false);
  const std::string changes = PrintableLines(DescribeReport(opened.ui(), asked.report, asked.options));
  if (changes != *agreed && !Agrees(options, changes)) throw Failure(kConsent, "declined; nothing was changed");
  *agreed = changes;
  const bool applies = !options.consent.dry_run;
  const Json answer = AnswerJson(opened.ui(), asked, applies);
  if (applies && !StoreAsked(opened, asked)) return false;
  if (options.json) {
    PrintJson("device.query", answer);
    return true;
  }
  std::cout << changes << (changes.ends_with('\n') ? "" : "\n");
  if (!applies) std::cout << "Nothing was changed (--dry-run).\n";
  return true;
}

DeviceTarget TargetOfPrinter(const DeviceOptions& options, Printer& printer) {
  const SettingsSession opened(printer, options.printer, {}, SettingsKind::kDevice);
  DeviceTarget target = TargetOf(opened.ui());
  if (!options.address.empty()) target.address = DeviceAddressOf(options.address);
  return target;
}

void Query(const DeviceOptions& options) {
  Printer printer(options.printer);
  const DeviceTarget target = TargetOfPrinter(options, printer);
  CheckConsent(options);
  const AskedDevice asked = AskDevice(target, Catalogue(ReadLocaleCountry()));
  std::string agreed;
  UntilKept([&] { return TryStoring(options, printer, asked, &agreed); });
}

}  // namespace

void AddDeviceCommands(CLI::App& app) {
  const auto options = std::make_shared<DeviceOptions>();
  CLI::App* group = AddCommand(app, "device", "Show what is installed in a printer, or ask the device itself");
  group->require_subcommand(1);
  CLI::App* show = AddCommand(*group, "show", "Show the installed options that are stored for a printer");
  CLI::App* query = AddCommand(*group, "query", "Ask the device over the network and store what is installed");
  for (CLI::App* command : {show, query}) {
    command->add_option("-p,--printer", options->printer, "Printer whose options to use")->required();
    command->add_flag("--json", options->json, "Answer as JSON");
  }
  query->add_option("--address", options->address, "Address of the device, if not the stored one; it is stored");
  options->consent.AddTo(*query);
  show->callback([options] { Show(*options); });
  query->callback([options] { Query(*options); });
}

}  // namespace heron::cli
