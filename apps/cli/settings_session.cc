// The life of a command's settings: open, change, commit, store, and repeat if overtaken (settings_session.h).

#include "settings_session.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <new>
#include <random>
#include <thread>
#include <utility>

#include "changes/commit.h"
#include "devicelink/device_query.h"
#include "platform/api/handles.h"
#include "platform/sqlite/store.h"
#include "resolved_record.h"
#include "settings/defaults.h"
#include "settings/printer_data.h"
#include "uistate/keep_lists.h"

namespace heron::cli {
namespace {

std::unique_ptr<ResourceContext, CloseContext> OpenResources(Printer& printer) {
  RefreshDriverDirectory(printer.handle());
  std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(ReadLocaleCountry()));
  if (resources == nullptr) throw std::bad_alloc();
  return resources;
}

/// The record that a document sheet begins with. `own` receives the user's own one if it was read.
Bytes DocumentRecord(Printer& printer, const std::string& name, const std::string& in, bool fresh,
                     std::optional<Bytes>* own) {
  if (fresh) return ResolvedRecord(printer, {});
  if (!in.empty()) return ResolvedRecord(printer, ReadRecord(in));
  return ResolvedRecord(printer, own->emplace(OwnRecord(name)));
}

}  // namespace

SettingsSession::SettingsSession(Printer& printer, const std::string& name, const std::string& in, SettingsKind kind,
                                 bool fresh)
    : printer_(printer), name_(name), kind_(kind), resources_(OpenResources(printer)) {
  if (kind == SettingsKind::kDevice && fresh) {
    BuildDefaultEnv(resources_.get(), &env_, printer.name(), printer.handle());
    saved_ = ReadSavedRecord(printer.handle());  // what Keep compares with, though the settings begin with the defaults
  } else if (kind == SettingsKind::kDevice) {
    LoadPrinterEnv(printer.handle(), &env_, printer.name(), resources_.get(), &saved_);
  } else {
    const Bytes record = DocumentRecord(printer, name, in, fresh, &seen_);
    std::copy_n(record.begin(), kEnvSize, env_.bytes.begin());
  }
  OpenEnv();
}

SettingsSession::SettingsSession(Printer& printer, const std::string& name, const DriverEnv& record)
    : printer_(printer), name_(name), kind_(SettingsKind::kDocument), resources_(OpenResources(printer)), env_(record) {
  OpenEnv();
}

void SettingsSession::OpenEnv() {
  settings_ = engine::OpenRecord(resources_.get(), env_, printer_.handle());
  if (settings_ == nullptr) FailStore("open the settings");
  lists_ = CopyOfLists(ui().stores);  // what was read, to notice at Keep that another program changed them
  recipients_ = std::make_unique<AddressBlock>();
  FillAddressBlock(ui(), recipients_.get());
}

void SettingsSession::Open(bool corrects) {
  engine::OpenSettings(settings_->resolver, nullptr, corrects ? engine::OpeningPass::kRun : engine::OpeningPass::kSkip);
}

void SettingsSession::Commit(engine::EngineView* view) {
  engine::CommitSettings(settings_->engine, view);
}

std::unique_ptr<engine::OpenedSettings> SettingsSession::ReadAgain() {
  DriverEnv env = env_;
  FillRecord(*settings_->ui, env, resources_.get());
  // Through the driver's own export, as the next command will: its validation may still correct the record.
  if (kind_ == SettingsKind::kDocument) {
    const Bytes read = ResolvedRecord(printer_, {env.bytes.begin(), env.bytes.end()});
    std::copy_n(read.begin(), kEnvSize, env.bytes.begin());
  }
  auto settings = engine::OpenRecord(resources_.get(), env, printer_.handle());
  if (settings == nullptr) throw std::bad_alloc();
  engine::OpenSettings(settings->resolver, nullptr, engine::OpeningPass::kSkip);
  return settings;
}

Bytes SettingsSession::Record(Recipients recipients) {
  WriteBackUiState(*settings_->ui, env_, resources_.get(), AddressFile::kLeave);
  WriteRecipients(recipients);
  return {env_.bytes.begin(), env_.bytes.end()};
}

void SettingsSession::WriteRecipients(Recipients recipients) {
  const auto now = std::make_unique<AddressBlock>();
  FillAddressBlock(ui(), now.get());
  const bool same = std::memcmp(now.get(), recipients_.get(), sizeof *now) == 0;
  if (same && (recipients == Recipients::kShare || now->count == 0 || new_file_ != 0)) return;
  if (new_file_ == 0) old_file_ = Get<"faxAddressFileId">(env_);
  DeleteAddressFile(std::exchange(new_file_, 0));
  if (now->count > 0 && (new_file_ = MakeAddressFile(*now)) == 0) FailStore("store the recipients");
  Set<"faxAddressFileId">(env_, new_file_);
  recipients_ = std::make_unique<AddressBlock>(*now);
}

void SettingsSession::DropRecipients() {
  DeleteAddressFile(std::exchange(new_file_, 0));
  old_file_ = 0;
}

void SettingsSession::KeepNamedFiles() {
  // The file of before belongs to the record of before, which stays as it is.
  old_file_ = 0;
  if (new_file_ != 0) RecordAddressFile(GetText<"dmDeviceName">(env_), std::exchange(new_file_, 0));
}

bool SettingsSession::KeepRecord(const Bytes& record) {
  const Bytes* const seen = seen_.has_value() ? &*seen_ : nullptr;
  UserLock lock;
  const bool kept = KeepOwnRecord(name_, seen, record);
  // Only the file of a record that is kept takes a place in the ring, which deletes the oldest.
  if (kept && new_file_ != 0) RecordAddressFile(GetText<"dmDeviceName">(env_), std::exchange(new_file_, 0));
  lock.Keep();
  if (kept) DeleteAddressFile(std::exchange(old_file_, 0));
  return kept;
}

bool SettingsSession::Keep(const Bytes& record, Lists lists) {
  if (kind_ == SettingsKind::kDevice) {
    const Replaced replaced = ReplacePrinterEnv(printer_.handle(), saved_, env_);
    if (replaced == Replaced::kUnwritten) FailStore("store the printer's settings");
    if (replaced == Replaced::kDone) {
      UpdateStoredCountry(printer_.handle());
      DeviceSaveToDirectory(ui());
    }
    return replaced == Replaced::kDone;
  }
  if (lists == Lists::kLeave) return KeepRecord(record);
  // Code that needs both trees takes the machine's first, so that two programs never wait for each other. A user who
  // may not write there changes no custom papers.
  platform::PrinterDataBatch printer_data(printer_.handle());
  UserLock lock;
  if (!KeepLists() || !KeepRecord(record)) return false;
  lock.Keep();
  if (printer_data.open() && !printer_data.Keep()) FailWith(platform::kErrorWriteFault, "store the custom papers");
  return true;
}

bool SettingsSession::IsKept(const Bytes& record) const {
  // Read from the store again: an acknowledged change must be there for the next program.
  return kind_ == SettingsKind::kDevice ? IsSaved(printer_.handle(), env_) : OwnRecord(name_) == record;
}

bool SettingsSession::KeepLists() {
  const bool locked = ui().head().printerDataLocked != 0;
  const ListsKept kept = KeepListStores(ui().stores, lists_, PrinterName(printer_.handle()), printer_.handle(), locked);
  if (!kept.unwritten.empty()) FailStore("store the lists of watermarks, forms, pages and papers");
  return kept.overtaken.empty();
}

std::string SettingsSession::PlaceOfRecord() const {
  return kind_ == SettingsKind::kDevice ? "the printer's saved record" : store::WorkingRecordPath(name_).string();
}

void UntilKept(const std::function<bool()>& attempt) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::seconds kPatience{30};
  // Random pauses that grow: programs that collided don't collide again, and each of them gets its turn.
  std::minstd_rand dice(std::random_device{}());
  const auto end = Clock::now() + kPatience;
  for (int longest = 2; !attempt(); longest = std::min(2 * longest, 64)) {
    if (Clock::now() > end) {
      throw Failure(kFailed,
                    "other programs keep changing the same settings; nothing was changed, try again in a moment");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(std::uniform_int_distribution(0, longest)(dice)));
  }
}

}  // namespace heron::cli
