#include "sheet.h"

#include <algorithm>
#include <new>

#include "engine/commit.h"
#include "resolved_record.h"
#include "settings/printer_data.h"
#include "store/store.h"
#include "uistate/walk_store.h"

namespace heron::cli {
namespace {

std::unique_ptr<ResourceContext, CloseContext> OpenResources(Printer& printer) {
  RefreshDriverDirectory(printer.handle());
  std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(ReadLocaleCountry()));
  if (resources == nullptr) throw std::bad_alloc();
  return resources;
}

/// The record that a document sheet begins with.
Bytes DocumentRecord(Printer& printer, const std::string& name, const std::string& in, bool fresh) {
  if (fresh) return ResolvedRecord(printer, {});
  if (!in.empty()) return ResolvedRecord(printer, ReadRecord(in));
  return ResolvedRecord(printer, OwnRecord(name));
}

}  // namespace

Sheet::Sheet(Printer& printer, const std::string& name, const std::string& in, SheetKind kind, bool fresh)
    : printer_(printer), name_(name), kind_(kind), resources_(OpenResources(printer)) {
  if (kind == SheetKind::kDevice) {
    LoadPrinterEnv(printer.handle(), &env_, printer.name(), resources_.get());
  } else {
    const Bytes record = DocumentRecord(printer, name, in, fresh);
    std::copy_n(record.begin(), kEnvSize, env_.bytes.begin());
  }
  settings_ = engine::OpenRecord(resources_.get(), env_, printer.handle());
  if (settings_ == nullptr)
    throw Failure(kFailed, "the settings can't be opened: the store can't be read now; try again");
}

void Sheet::Open(bool corrects) {
  engine::OpenSettings(settings_->resolver, nullptr, corrects ? engine::OpeningPass::kRun : engine::OpeningPass::kSkip);
}

void Sheet::Commit(engine::EngineView* view) {
  engine::CommitSettings(settings_->engine, view);
}

Bytes Sheet::Record() {
  WriteBackUiState(*settings_->ui, env_, resources_.get());
  return {env_.bytes.begin(), env_.bytes.end()};
}

void Sheet::Keep(const Bytes& record) {
  if (kind_ == SheetKind::kDevice) {
    if (!SavePrinterEnv(printer_.handle(), env_)) FailWith(platform::GetLastError(), "store the printer's settings");
    UpdateStoredCountry(printer_.handle());
    return;
  }
  KeepOwnRecord(name_, record);
}

void Sheet::KeepLists() {
  const bool locked = ui().head().printerDataLocked != 0;
  if (!WriteListStores(ui().stores, PrinterName(printer_.handle()), printer_.handle(), locked))
    throw Failure(kFailed,
                  "can't store the lists of watermarks, forms, pages and papers; check the disk and your rights");
}

std::string Sheet::PlaceOfRecord() const {
  return kind_ == SheetKind::kDevice ? "the printer's saved record" : store::WorkingRecordPath(name_).string();
}

}  // namespace heron::cli
