#include "desk.h"

#include <QEventLoop>
#include <memory>

#include "message_window.h"
#include "platform/dialog.h"
#include "property_sheet.h"
#include "text.h"

namespace heron::desk {
namespace {

using platform::LPARAM;
using platform::PROPSHEETUI_INFO;

/// The callback that the driver adds its pages with. The sheet's handle is its window.
intptr_t CallSheet(platform::HANDLE handle, uint32_t function, LPARAM first, LPARAM second) {
  auto* const sheet = static_cast<PropertySheet*>(handle);
  if (sheet == nullptr) return 0;
  if (function == platform::CPSFUNC_SET_RESULT) {
    sheet->SetResult(second);
    return 1;
  }
  if (function != platform::CPSFUNC_ADD_HPROPSHEETPAGE) return 0;
  const auto page = platform::TakePropertySheetPage(reinterpret_cast<platform::HANDLE>(first));
  return page.has_value() && sheet->AddPage(*page) ? 1 : 0;
}

/// The driver's operation with the block that it keeps its own things in from one reason to the next.
class DriverSheet {
 public:
  DriverSheet(const SheetRequest& request, PropertySheet& sheet)
      : operation_(request.operation),
        info_{.cbSize = sizeof(PROPSHEETUI_INFO),
              .Version = 0x100,
              .Flags = 0,
              .Reason = 0,
              .hComPropSheet = &sheet,
              .pfnComPropSheet = CallSheet,
              .lParamInit = reinterpret_cast<LPARAM>(request.header),
              .UserData = 0,
              .Result = 0} {}

  int32_t Call(platform::WORD reason, void* argument = nullptr) {
    info_.Reason = reason;
    return operation_(&info_, reinterpret_cast<LPARAM>(argument));
  }

 private:
  SheetOperation operation_;
  PROPSHEETUI_INFO info_;
};

/// A window's title made of what the driver calls the sheet.
QString Title(DriverSheet& driver) {
  platform::PROPSHEETUI_INFO_HEADER header{};
  header.cbSize = sizeof(header);
  driver.Call(platform::PROPSHEETUI_REASON_GET_INFO_HEADER, &header);
  const QString name = header.pTitle == nullptr ? QString() : QString::fromUtf16(header.pTitle);
  return name.isEmpty() ? QStringLiteral("Printer settings") : QStringLiteral("%1 - Printer settings").arg(name);
}

/// Takes itself away at the end, so that nobody is asked by a desk that is gone.
class InstalledMessages {
 public:
  InstalledMessages() { platform::InstallMessageDesk(&windows_); }
  ~InstalledMessages() { platform::InstallMessageDesk(nullptr); }
  InstalledMessages(const InstalledMessages&) = delete;
  InstalledMessages& operator=(const InstalledMessages&) = delete;

 private:
  MessageWindows windows_;
};

}  // namespace

SheetEnd RunSheet(const SheetRequest& request) {
  const InstalledMessages messages;
  Resources resources(request.resources);
  intptr_t result = 0;
  bool made = false;
  auto sheet = std::make_unique<PropertySheet>(resources);
  DriverSheet driver(request, *sheet);
  made = driver.Call(platform::PROPSHEETUI_REASON_INIT) > 0 && sheet->pageCount() > 0;
  if (made) {
    sheet->setWindowTitle(Title(driver));
    if (request.opened) request.opened(*sheet);
    QEventLoop loop;
    QObject::connect(sheet.get(), &QDialog::finished, &loop, &QEventLoop::quit);
    sheet->Open();
    loop.exec();
    result = sheet->result();
    platform::SETRESULT_INFO info{.cbSize = sizeof(info),
                                  .wReserved = 0,
                                  .hSetResult = sheet.get(),
                                  .Result = static_cast<platform::LRESULT>(result)};
    if (driver.Call(platform::PROPSHEETUI_REASON_SET_RESULT, &info) <= 0) made = false;
  }
  // The pages go before the settings that they show.
  sheet.reset();
  driver.Call(platform::PROPSHEETUI_REASON_DESTROY);
  if (!made) return SheetEnd::kRefused;
  return result == 1 ? SheetEnd::kConfirmed : SheetEnd::kCancelled;
}

}  // namespace heron::desk
