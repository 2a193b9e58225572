// A sheet opened through the exports, its pages on the scripted desk. Text n of the resource module reads "[n]",
// formats apart, so that a message tells which texts it was made of.
#pragma once

#include <memory>
#include <sstream>

#include "engine/engine.h"
#include "engine/setting.h"
#include "platform/text.h"
#include "support/driver_fixture.h"
#include "support/scripted_sheet.h"

namespace heron::test {

class SheetTest : public DriverTest {
 protected:
  SheetTest() {
    auto& texts = backend.modules[kResourceModule];
    for (uint32_t n = 20000; n < 50000; ++n) texts[n] = u"[" + platform::FromUtf8(std::to_string(n)) + u"]";
    texts.erase(21200);
    texts[21000] = u"%s %s-%s";
    texts[21014] = u"%s %d-%d";
    texts[25005] = u"for %s";
    texts[25007] = u"%s,%s,%s,%s,%s,%s";
    texts[21570] = u"%ld.%01ld-%ld.%01ld mm";
    texts[21571] = u"%ld.%03ld-%ld.%03ld inch";
  }

  /// Opens a document sheet, sets what `settings` tells ("Staple_Check=1 lpOutputUnit=2"), and shows a page.
  ScriptedDialog& OpenPage(const std::string& settings = {}, uint16_t number = 100,
                           platform::DWORD mode = kMayChangePrinterData) {
    sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), mode);
    EXPECT_EQ(sheet->Open(), 1);
    Put(settings);
    page = sheet->Show(number);
    EXPECT_EQ(desk.Told(), "");
    return *page;
  }

  engine::Engine& engine() { return sheet->context().engine(); }
  const UiState& ui() { return sheet->context().ui(); }

  static engine::ControlIndex Named(std::string_view name) {
    for (size_t i = 0; i < engine::kControlCount; ++i) {
      const std::string own = platform::ToUtf8(engine::kControls[i].name);
      if (own == name || own.substr(0, own.find('.')) == name) return static_cast<engine::ControlIndex>(i);
    }
    ADD_FAILURE() << "no control " << name;
    return 0;
  }
  uint16_t Value(std::string_view name) { return engine().Value(Named(name)); }
  void Put(const std::string& settings) {
    std::istringstream words(settings);
    for (std::string word; words >> word;) {
      const size_t equals = word.find('=');
      engine().Set(Named(word.substr(0, equals)), static_cast<uint16_t>(std::stoi(word.substr(equals + 1))));
    }
    LoadAllTrayMirrors(ui());
    engine::EvaluateRules(engine(), nullptr);
    engine::ComputeAllItemStatus(engine());
  }

  /// The user picks the item with this value from a list of `dialog`.
  void Choose(ScriptedDialog& dialog, uint16_t list, int value) {
    for (const ListItem& item : engine::GetControlBlock(engine(), list)->Items()) {
      if (item.value != value) continue;
      const std::u16string_view label(item.label, kLabelLength);
      dialog.Choose(list, label.substr(0, label.find(u'\0')));
      return;
    }
    ADD_FAILURE() << "control " << list << " has no value " << value;
  }
  void Choose(uint16_t list, int value) { Choose(*page, list, value); }

  /// Fills a field of a dialog past its filter, confirms, and gives what was told and which field has the focus.
  std::string Confirm(ScriptedDialog& dialog, ControlId field = 0, std::u16string_view text = {}) {
    if (field != 0) dialog.Put(field, text);
    dialog.Focus(0);
    dialog.Click(platform::kOkButton);
    return dialog.ended() ? "closed" : desk.Told() + " at " + std::to_string(dialog.Focused());
  }

  /// All bytes of the settings, to see that nothing changed.
  std::vector<uint8_t> Bytes() {
    std::vector<uint8_t> bytes(ui().fixed.get(), ui().fixed.get() + ui().fixedSize);
    bytes.insert(bytes.end(), ui().variable.get(), ui().variable.get() + ui().variableSize);
    const auto* papers = reinterpret_cast<const uint8_t*>(ui().stores.userPapers.get());
    bytes.insert(bytes.end(), papers, papers + sizeof(UserPaperStore));
    return bytes;
  }

  ScriptedDesk desk;
  std::unique_ptr<ScriptedSheet> sheet;
  ScriptedDialog* page = nullptr;
};

}  // namespace heron::test
