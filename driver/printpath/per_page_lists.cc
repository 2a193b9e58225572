// The per-page list that a record chooses goes to the printing side once, and the texts of its tab sheets after it.
#include <new>

#include "platform/api/document_events.h"
#include "printpath/handlers.h"
#include "printpath/tab_text.h"
#include "settings/printer_data.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

/// A list of the job, with its store; no list unless it holds between 1 and 30 entries.
struct JobList {
  std::unique_ptr<PageListStore> store;
  const PageList* list = nullptr;
};

/// The list that the job's record chooses; false if the record can't be had.
bool FetchJobList(const DocumentEvent& event, JobList* found) {
  const auto record = FetchJobRecord(event.hdc);
  if (record == nullptr) return false;
  const int number = Get<"lpInterSheetList">(*record);
  if (!IsOn<"InterSheet_Check">(*record) || number < 1 || number > kPageListCount) return true;
  ListStoreSet set;
  set.pageLists = std::make_unique<PageListStore>();
  if (!ReadStoreItem(set, ListStoreId::kPageLists, PrinterName(event.printer), number)) return true;
  const PageList& list = set.pageLists->lists[number - 1];
  if (list.pageCount < 1 || list.pageCount > kPagesPerList) return true;
  *found = {.store = std::move(set.pageLists), .list = &list};
  return true;
}

bool SendList(platform::HDC hdc, const PageList& list) {
  const std::span<const PageEntry> entries(list.pages, list.pageCount);
  const std::span bytes(reinterpret_cast<const uint8_t*>(entries.data()), entries.size_bytes());
  return SendEscape<"EscSetPageListCount">(hdc, uint32_t{list.pageCount}) &&
         SendEscapeBytes<"EscSetPageList">(hdc, bytes) && SendEscape<"EscSetPageListRange">(hdc, list.tabSettings) &&
         SendEscape<"EscSetPageListMixplex">(hdc, uint32_t{list.mixplex}) && SendEscape<"EscPageListDone">(hdc);
}

/// The texts of the list's tabs; that there are no more of them is said in any case.
bool SendTabs(platform::HDC hdc, const PageList* list) {
  if (list != nullptr) {
    const std::span<const PageEntry> entries(list->pages, list->pageCount);
    const uint32_t tabs = CountTabs(entries);
    if (tabs > 0 && !SendEscape<"EscSetTabCount">(hdc, tabs)) return false;
    DrawTabs(hdc, entries);
  }
  return SendEscape<"EscTabsEnd">(hdc);
}

bool SendListAndTabs(const DocumentEvent& event) {
  const auto state = FetchJobState(event.hdc);
  if (state == nullptr) return false;
  const bool sent = ReadAt<uint32_t>(*state, JobStateBlock::kPageListsSent) == 1;
  JobList job;
  if (!sent) {
    if (!FetchJobList(event, &job)) return false;
    if (job.list != nullptr && !SendList(event.hdc, *job.list)) return false;
  }
  uint32_t tabs_done = 0;
  if (!AskEscape<"EscTabsDone">(event.hdc, &tabs_done)) return false;
  if (tabs_done != 0) return true;
  return (!sent || FetchJobList(event, &job)) && SendTabs(event.hdc, job.list);
}

}  // namespace

int OnPerPageLists(const DocumentEvent& event) {
  return SendListAndTabs(event) ? kGoOn : kFailed;
}

}  // namespace heron
