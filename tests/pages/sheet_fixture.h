// A sheet opened through the exports, its pages on the scripted desk. Text n of the resource module reads "[n]",
// formats apart, so that a message tells which texts it was made of.
#pragma once

#include <memory>

#include "engine/engine.h"
#include "engine/setting.h"
#include "platform/api/text.h"
#include "support/driver_fixture.h"
#include "support/named_values.h"
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
    texts[32031] = u"lists:%s";
    texts[32040] = u"changed lists:%s";
    texts[32041] = u"changed printer %s";
    texts[25007] = u"%s,%s,%s,%s,%s,%s";
    texts[21570] = u"%ld.%01ld-%ld.%01ld mm";
    texts[21571] = u"%ld.%03ld-%ld.%03ld inch";
  }

  /// Opens a document sheet, sets what `settings` tells ("Staple_Check=On lpOutputUnit=Bin"), and shows a page.
  ScriptedDialog& OpenPage(const std::string& settings = {}, DialogName number = "paper",
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

  HeldValue Value(std::string_view name) {
    const engine::ControlIndex control = ControlNamed(name);
    return {control, engine().Value(control)};
  }
  void Put(const std::string& settings) {
    ForEachSetting(settings, [this](engine::ControlIndex control, uint16_t value) { engine().Set(control, value); });
    LoadAllTrayMirrors(ui());
    engine::EvaluateRules(engine(), nullptr);
    engine::ComputeAllItemStatus(engine());
  }

  /// The user picks the item with this value from a list of `dialog`, "Booklet" or a number.
  void Choose(ScriptedDialog& dialog, ControlName list, std::string_view value) {
    const uint16_t wanted = ValueNamed(engine::IndexOf(list), value);
    for (const ListItem& item : engine::GetControlBlock(engine(), list)->Items()) {
      if (item.value != wanted) continue;
      const std::u16string_view label(item.label, kLabelLength);
      dialog.Choose(list, label.substr(0, label.find(u'\0')));
      return;
    }
    ADD_FAILURE() << NameOfControl(list) << " has no value " << value;
  }
  void Choose(ControlName list, std::string_view value) { Choose(*page, list, value); }
  void Choose(ControlName list, uint16_t value) { Choose(*page, list, std::to_string(value)); }

  /// Fills a field of a dialog past its filter, confirms, and returns the messages shown and the focused field.
  std::string Confirm(ScriptedDialog& dialog, ControlName field = 0, std::u16string_view text = {}) {
    if (field != 0) dialog.Put(field, text);
    dialog.Focus(0);
    dialog.Click(platform::kOkButton);
    return dialog.ended() ? "closed" : desk.Told() + " at " + dialog.FocusedName();
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
