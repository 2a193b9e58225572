// A printer's settings opened as a sheet opens them, without a window: the record, the working store, the engine.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "changes/opening.h"
#include "common/command.h"
#include "common/record_file.h"
#include "settings/printer_data.h"
#include "uistate/list_stores.h"
#include "uistate/recipients.h"

namespace heron::cli {

enum class SettingsKind {
  kDocument,  ///< an application's record: a file's, or the user's own working record of the printer
  kDevice,    ///< the printer's saved record
};

class SettingsSession {
 public:
  /// Opens the record of file `in`, or without one the user's own (`fresh`: the printer's valid default instead,
  /// of the device settings the record of a printer without options).
  SettingsSession(Printer& printer, const std::string& name, const std::string& in, SettingsKind kind,
                  bool fresh = false);

  /// The same for a document's record in memory.
  SettingsSession(Printer& printer, const std::string& name, const DriverEnv& record);
  ~SettingsSession() { DropRecipients(); }
  SettingsSession(const SettingsSession&) = delete;
  SettingsSession& operator=(const SettingsSession&) = delete;

  /// Runs the opening steps, and the opening pass of the rules if `corrects`.
  void Open(bool corrects);

  const UiState& ui() const { return *settings_->ui; }
  const engine::Engine& engine() const { return settings_->engine; }
  engine::Engine& engine() { return settings_->engine; }
  engine::Resolver& resolver() { return settings_->resolver; }

  const ResourceContext* resources() const { return resources_.get(); }

  /// Commits the working values; what the commit has to say goes to `view`.
  void Commit(engine::EngineView* view);
  /// The committed settings as the next call would read them; nothing is stored for it.
  std::unique_ptr<engine::OpenedSettings> ReadAgain();
  /// The record that a confirmed sheet would return. Fax recipients that were changed go to a new file, which the
  /// record names: a file that a record names never changes, so that whoever compares records compares recipients too.
  enum class Recipients { kShare, kCopy };  ///< whether a list that wasn't changed goes to a new file too
  Bytes Record(Recipients recipients = Recipients::kShare);
  enum class Lists { kLeave, kWrite };  ///< whether the lists that the settings brought with them are written too

  /// Makes `record` what this kind of settings is kept as: the user's own working record, or the printer's saved one.
  /// False, and nothing is written, if another program has changed that record or those lists since this session began:
  /// the change has to be made again in a new session (UntilKept).
  [[nodiscard]] bool Keep(const Bytes& record, Lists lists = Lists::kLeave);
  /// Whether what is stored now is what Keep stored.
  bool IsKept(const Bytes& record) const;
  /// Writes the lists alone, for a record that goes to a file; false as of Keep.
  [[nodiscard]] bool KeepLists();
  std::string PlaceOfRecord() const;
  /// For a record that goes to a file: what it names besides is kept.
  void KeepNamedFiles();

 private:
  void OpenEnv();
  void WriteRecipients(Recipients recipients);
  void DropRecipients();
  bool KeepRecord(const Bytes& record);

  using Resources = std::unique_ptr<ResourceContext, CloseContext>;

  Printer& printer_;
  std::string name_;
  SettingsKind kind_;
  Resources resources_;
  DriverEnv env_;
  std::optional<Bytes> seen_;  ///< the own record that this session began with; nothing if it began with another
  SavedRecord saved_;          ///< the same of the printer's saved record
  ListStoreSet lists_;         ///< the lists as they were read
  std::unique_ptr<AddressBlock> recipients_;  ///< those as they were read
  uint32_t new_file_ = 0;                     ///< address file that Record made, and nothing keeps yet
  uint32_t old_file_ = 0;                     ///< address file that the record of before names
  std::unique_ptr<engine::OpenedSettings> settings_;
};

/// Runs `attempt`, which opens a session, changes its settings and keeps them, until it wasn't overtaken by another
/// program: until it returns true. Each time that it is overtaken the other one got on, so there is no standstill; a
/// command that never gets its turn ends with a failure.
void UntilKept(const std::function<bool()>& attempt);

}  // namespace heron::cli
