#include "uistate/keep_lists.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <span>

#include "platform/api/handles.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

template <typename Piece>
bool SamePiece(const Piece& a, const Piece& b) {
  return a == b;
}

// Working memory that is never stored doesn't count.
bool SamePiece(const PageList& a, const PageList& b) {
  return std::ranges::equal(a.name, b.name) && a.pageCount == b.pageCount && a.mixplex == b.mixplex &&
         a.tabSettings == b.tabSettings && a.tabDialog == b.tabDialog && std::ranges::equal(a.pages, b.pages);
}
bool SamePiece(const WatermarkStore& a, const WatermarkStore& b) {
  return a.wMarkListNum == b.wMarkListNum && std::ranges::equal(a.entries, b.entries);
}

std::span<PageList> Pieces(PageListStore& store) {
  return store.lists;
}
std::span<CustomPaperEntry> Pieces(UserPaperStore& store) {
  return store;
}
template <typename Store>
std::span<Store> Pieces(Store& store) {
  return {&store, 1};
}

/// One store as it is here, as it was read, and as it is stored now.
template <typename Store>
struct ThreeStates {
  Store& mine;
  Store& seen;
  Store& stored;

  bool Changed() const {
    for (size_t n = 0; n < Pieces(mine).size(); ++n) {
      if (!SamePiece(Pieces(mine)[n], Pieces(seen)[n])) return true;
    }
    return false;
  }

  /// Brings the pieces that were changed here into `stored`. False if one of them was changed elsewhere too.
  bool Merge(Overtaken overtaken) {
    for (size_t n = 0; n < Pieces(mine).size(); ++n) {
      const auto& own = Pieces(mine)[n];
      auto& now = Pieces(stored)[n];
      if (SamePiece(own, Pieces(seen)[n]) || SamePiece(own, now)) continue;
      if (overtaken == Overtaken::kLeave && !SamePiece(now, Pieces(seen)[n])) return false;
      std::memcpy(&now, &own, sizeof now);
    }
    return true;
  }

  /// What was changed here is stored now; the other pieces stay as they were read, however old, so that they are never
  /// taken for changes of this program.
  void Remember() {
    for (size_t n = 0; n < Pieces(mine).size(); ++n) {
      const auto& own = Pieces(mine)[n];
      if (!SamePiece(own, Pieces(seen)[n])) std::memcpy(&Pieces(seen)[n], &own, sizeof own);
    }
  }
};

/// Where the store lies that is being kept: how it begins a transaction, is read and is written.
struct Place {
  ListStoreId id;
  std::u16string_view printer_name;
  platform::HANDLE printer;

  bool Read(ListStoreSet& stored) const {
    if (id == ListStoreId::kUserPapers) return LoadUserPapers(stored.userPapers.get(), printer);
    return WalkStore(stored, id, printer_name, WalkOp::kRead);
  }
  bool Write(const ListStoreSet& stored) const {
    if (id == ListStoreId::kUserPapers) return SaveUserPapers(*stored.userPapers, printer);
    return WalkStore(stored, id, printer_name, WalkOp::kWrite);
  }
};

enum class StoreKept : uint8_t { kDone, kOvertaken, kUnwritten };

/// The whole of one store inside the transaction `batch`.
template <typename Batch, typename Store>
StoreKept KeepInBatch(Batch&& batch, const Place& place, std::unique_ptr<Store> ListStoreSet::*member,
                      const ListStoreSet& set, ListStoreSet& seen, Overtaken overtaken) {
  ListStoreSet stored = CreateListStoreSet();
  if (!batch.open() || stored.*member == nullptr || !place.Read(stored)) return StoreKept::kUnwritten;
  ThreeStates<Store> states{*(set.*member), *(seen.*member), *(stored.*member)};
  if (!states.Merge(overtaken)) {
    batch.Keep();  // nothing was written, and a batch around this one mustn't be withdrawn
    return StoreKept::kOvertaken;
  }
  if (!place.Write(stored) || !batch.Keep()) return StoreKept::kUnwritten;
  states.Remember();
  return StoreKept::kDone;
}

template <typename Store>
StoreKept KeepStore(const Place& place, std::unique_ptr<Store> ListStoreSet::*member, const ListStoreSet& set,
                    ListStoreSet& seen, Overtaken overtaken) {
  if (set.*member == nullptr || seen.*member == nullptr) return StoreKept::kUnwritten;
  if (!ThreeStates<Store>{*(set.*member), *(seen.*member), *(seen.*member)}.Changed()) return StoreKept::kDone;
  if (place.id == ListStoreId::kUserPapers)
    return KeepInBatch(platform::PrinterDataBatch(place.printer), place, member, set, seen, overtaken);
  return KeepInBatch(platform::RegistryBatch(platform::HKEY_CURRENT_USER), place, member, set, seen, overtaken);
}

}  // namespace

ListStoreSet CopyOfLists(const ListStoreSet& set) {
  ListStoreSet copy = CreateListStoreSet();
  const auto drop_missing = [](auto& mine, const auto& theirs) {
    if (theirs == nullptr) mine.reset();
  };
  drop_missing(copy.pageLists, set.pageLists);
  drop_missing(copy.overlays, set.overlays);
  drop_missing(copy.watermarks, set.watermarks);
  drop_missing(copy.fontSubst, set.fontSubst);
  drop_missing(copy.faxCover, set.faxCover);
  drop_missing(copy.userPapers, set.userPapers);
  CopyListStoreSet(copy, set);
  return copy;
}

ListsKept KeepListStores(const ListStoreSet& set, ListStoreSet& seen, std::u16string_view printer_name,
                         platform::HANDLE printer, bool printer_data_locked, Overtaken overtaken) {
  ListsKept kept;
  const auto keep = [&](ListStoreId id, auto member) {
    const StoreKept result = KeepStore({id, printer_name, printer}, member, set, seen, overtaken);
    if (result == StoreKept::kOvertaken) kept.overtaken.push_back(id);
    if (result == StoreKept::kUnwritten) kept.unwritten.push_back(id);
  };
  keep(ListStoreId::kPageLists, &ListStoreSet::pageLists);
  keep(ListStoreId::kOverlays, &ListStoreSet::overlays);
  keep(ListStoreId::kWatermarks, &ListStoreSet::watermarks);
  keep(ListStoreId::kFontSubst, &ListStoreSet::fontSubst);
  keep(ListStoreId::kFaxCover, &ListStoreSet::faxCover);
  const bool server = printer_name.starts_with(u"\\\\");
  if (!server || !printer_data_locked) keep(ListStoreId::kUserPapers, &ListStoreSet::userPapers);
  return kept;
}

}  // namespace heron
