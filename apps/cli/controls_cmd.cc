// `heron controls`: every control that rules speak of, whether it is available, and which items of its list are
// allowed.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "common/command.h"
#include "engine/engine.h"
#include "platform/api/text.h"
#include "rules/control_tables.h"
#include "setting_names.h"
#include "settings_session.h"

namespace heron::cli {
namespace {

using engine::ControlIndex;
using engine::ControlRow;
using engine::kControls;

struct ControlsOptions {
  std::string printer;
  std::string in;
  bool json = false;
};

const char* TypeName(engine::ControlType type) {
  switch (type) {
    case engine::ControlType::kList:
      return "list";
    case engine::ControlType::kRadio:
      return "radio";
    case engine::ControlType::kCheck:
      return "check";
    case engine::ControlType::kNumber:
      return "number";
    case engine::ControlType::kButton:
      return "button";
  }
  return "";
}

Json ItemsJson(const engine::Engine& engine, const ControlRow& row) {
  Json items = Json::array();
  if (row.type != engine::ControlType::kList) return items;
  for (const ListItem& item : engine::GetControlBlock(engine, row.id)->Items()) {
    items.push_back({{"value", item.value}, {"label", ValueName(row.id, item.value)}, {"status", item.status}});
  }
  return items;
}

Json ControlJson(const engine::Engine& engine, const ControlRow& row) {
  const uint16_t parameter = engine::ParamIndexOfControl(engine::IndexOf(row.id));
  const auto number = [&](uint16_t value) { return NumberOf(parameter, value); };
  return {{"control", row.id},
          {"key", Printable(row.key)},
          {"label", ControlName(engine, row.id)},
          {"type", TypeName(row.type)},
          {"dialog", row.dialog},
          {"value", number(engine::GetControlValue(engine, row.id))},
          {"default", number(engine::GetControlDefault(engine, row.id))},
          {"available", engine::IsControlAvailable(engine, row.id)},
          {"usable", engine::IsControlUsable(engine, row.id)},
          {"items", ItemsJson(engine, row)}};
}

/// "4 of 6 allowed; not Two staples, Corner" for a list some of whose items are forbidden.
std::string ItemsText(const engine::Engine& engine, const ControlRow& row) {
  if (row.type != engine::ControlType::kList) return {};
  size_t allowed = 0;
  std::string forbidden;
  const auto items = engine::GetControlBlock(engine, row.id)->Items();
  for (const ListItem& item : items) {
    if (item.status == engine::kItemAllowed) {
      ++allowed;
      continue;
    }
    if (!forbidden.empty()) forbidden += ", ";
    forbidden += ValueName(row.id, item.value);
  }
  if (forbidden.empty()) return {};
  return std::to_string(allowed) + " of " + std::to_string(items.size()) + " allowed; not " + forbidden;
}

void PrintControls(const engine::Engine& engine) {
  std::cout << Heading(Padded("Control", 9) + Padded("Setting", 28) + Padded("Label", 30) + Padded("Value", 24) +
                       "State")
            << '\n';
  for (const ControlRow& row : kControls) {
    const uint16_t value = engine::GetControlValue(engine, row.id);
    const bool button = row.type == engine::ControlType::kButton;
    std::cout << Padded(std::to_string(row.id), 9) << Padded(button ? "" : Printable(row.key), 27) << ' '
              << Padded(ControlName(engine, row.id), 29) << ' ' << Padded(button ? "" : ValueName(row.id, value), 23)
              << ' ' << (engine::IsControlAvailable(engine, row.id) ? "available" : "not available") << '\n';
    const std::string items = ItemsText(engine, row);
    if (!items.empty()) std::cout << "         " << items << '\n';
  }
}

void Controls(const ControlsOptions& options) {
  Printer printer(options.printer);
  SettingsSession opened(printer, options.printer, options.in, SettingsKind::kDocument);
  opened.Open(false);  // without the corrections of the opening pass: shows what the record holds
  if (!options.json) return PrintControls(opened.engine());
  Json rows = Json::array();
  for (const ControlRow& row : kControls) rows.push_back(ControlJson(opened.engine(), row));
  PrintJson("controls", {{"controls", rows}});
}

}  // namespace

void AddControlsCommand(CLI::App& app) {
  const auto options = std::make_shared<ControlsOptions>();
  CLI::App* command = AddCommand(app, "controls", "Show which settings can be changed now, and to which values");
  command->add_option("-p,--printer", options->printer, "Printer whose settings to show")->required();
  command->add_option("--in", options->in,
                      "Record to look at instead of your own for this printer (- for standard input)");
  command->add_flag("--json", options->json, "Answer as JSON");
  command->callback([options] { Controls(*options); });
}

}  // namespace heron::cli
