// A sheet opened through the exports, its pages on the scripted desk. Text n of the resource module reads "[n]",
// formats apart, so that a message tells which texts it was made of.
#pragma once

#include <memory>
#include <sstream>

#include "engine/engine.h"
#include "engine/setting.h"
#include "entry/exports.h"
#include "pages/sheet_context.h"
#include "platform/text.h"
#include "support/driver_fixture.h"
#include "support/scripted_desk.h"

namespace heron::test {

inline constexpr platform::DWORD kMayChangePrinterData = 78;  ///< mode of the call, DM_COPY among it

/// The host of one sheet.
class ScriptedSheet {
 public:
  ScriptedSheet(ScriptedDesk& desk, platform::HANDLE printer, platform::DWORD mode, bool is_device = false)
      : desk_(desk), is_device_(is_device) {
    document_ = {.cbSize = sizeof document_,
                 .Reserved = 0,
                 .hPrinter = printer,
                 .pszPrinterName = nullptr,
                 .pdmIn = nullptr,
                 .pdmOut = reinterpret_cast<platform::DEVMODEW*>(out.bytes.data()),
                 .cbOut = 0,
                 .fMode = mode};
    device_ = {
        .cbSize = sizeof device_, .Flags = static_cast<uint16_t>(mode), .hPrinter = printer, .pszPrinterName = nullptr};
    info_.hComPropSheet = this;
    info_.pfnComPropSheet = [](platform::HANDLE sheet, uint32_t function, platform::LPARAM page,
                               platform::LPARAM value) {
      return static_cast<ScriptedSheet*>(sheet)->Call(function, page, value);
    };
    info_.lParamInit =
        is_device ? reinterpret_cast<platform::LPARAM>(&device_) : reinterpret_cast<platform::LPARAM>(&document_);
  }
  ~ScriptedSheet() { Close(); }

  platform::LONG Reason(uint16_t reason, platform::LPARAM lParam = 0) {
    info_.Reason = reason;
    return is_device_ ? DrvDevicePropertySheets(&info_, lParam) : DrvDocumentPropertySheets(&info_, lParam);
  }
  /// The record that the caller hands in.
  void SetInput(const DriverEnv& env) {
    input_ = env;
    document_.pdmIn = reinterpret_cast<platform::DEVMODEW*>(input_.bytes.data());
  }
  platform::LONG Open() { return Reason(platform::PROPSHEETUI_REASON_INIT); }

  /// Brings a page to the front, first leaving the one there; null if that one refuses.
  ScriptedDialog* Show(uint16_t number) {
    if (front_ != nullptr && !front_->logic->Deactivate()) return nullptr;
    front_ = nullptr;
    for (Page& page : pages) {
      if (page.number == number) front_ = &page;
    }
    if (front_ == nullptr) return nullptr;
    if (front_->dialog == nullptr) {
      front_->dialog = std::make_unique<ScriptedDialog>(desk_, number, front_->logic);
      front_->logic->Initialise(front_->dialog.get());
    }
    front_->logic->Activate();
    return front_->dialog.get();
  }

  /// OK: false if the page in front or a page's apply refuses.
  bool Confirm() {
    if (!Apply()) return false;
    End(1);
    return true;
  }
  bool Apply() {
    if (front_ != nullptr && !front_->logic->Deactivate()) return false;
    for (Page& page : pages) {
      if (page.dialog != nullptr && !page.logic->Apply()) return false;
    }
    return true;
  }
  void Cancel() {
    for (Page& page : pages) {
      if (page.dialog != nullptr) page.logic->Reset();
    }
    End(0);
  }

  SheetContext& context() { return *reinterpret_cast<SheetContext*>(info_.UserData); }
  platform::PROPSHEETUI_INFO& info() { return info_; }

  struct Page {
    uint16_t number = 0;
    platform::DialogLogic* logic = nullptr;
    std::unique_ptr<ScriptedDialog> dialog = {};
  };
  std::vector<Page> pages;
  size_t accepted = 100;  ///< pages that the host takes
  int results = 0;        ///< times that it was told a result
  DriverEnv out{};        ///< what a confirmed document sheet gives

 private:
  intptr_t Call(uint32_t function, platform::LPARAM page, platform::LPARAM value) {
    if (function == platform::CPSFUNC_SET_RESULT) return results += static_cast<int>(value);
    if (pages.size() >= accepted) return 0;
    const auto given = platform::TakePropertySheetPage(reinterpret_cast<platform::HANDLE>(page));
    EXPECT_TRUE(given && given->has_help);
    pages.push_back({.number = given->dialog, .logic = given->logic});
    return 1;
  }
  void End(platform::LRESULT result) {
    platform::SETRESULT_INFO told{.cbSize = sizeof told, .wReserved = 0, .hSetResult = nullptr, .Result = result};
    EXPECT_EQ(Reason(platform::PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<platform::LPARAM>(&told)), 1);
    EXPECT_EQ(info_.Result, static_cast<platform::ULONG_PTR>(result));
    Close();
  }
  void Close() {
    if (info_.UserData == 0) return;
    for (Page& page : pages) {
      if (page.dialog != nullptr) page.logic->Destroy();
    }
    front_ = nullptr;
    EXPECT_EQ(Reason(platform::PROPSHEETUI_REASON_DESTROY), 1);
    EXPECT_EQ(info_.UserData, 0U);
    pages.clear();
  }

  ScriptedDesk& desk_;
  bool is_device_;
  DriverEnv input_{};
  platform::DOCUMENTPROPERTYHEADER document_{};
  platform::DEVICEPROPERTYHEADER device_{};
  platform::PROPSHEETUI_INFO info_{};
  Page* front_ = nullptr;
};

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
    engine::LoadTrayMirrors(engine());
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
