// Pages on their way from the driver to the sheet's host (dialog.h).
#include "platform/dialog/dialog.h"

#include <memory>

#include "platform/api/handle_table.h"

namespace heron::platform {

HANDLE CreatePropertySheetPageW(const PropertyPage& page) {
  return page.logic == nullptr ? nullptr : InsertHandle(OpenedPage{page});
}

std::optional<PropertyPage> TakePropertySheetPage(HANDLE page) {
  const auto opened = FindHandleOf<OpenedPage>(page);
  if (opened == nullptr || !EraseHandleOf<OpenedPage>(page)) return std::nullopt;
  return opened->page;
}

}  // namespace heron::platform
