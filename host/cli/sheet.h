// A printer's settings opened as a sheet opens them, without a window: the record, the working store, the engine.
#pragma once

#include <memory>
#include <string>

#include "command.h"
#include "engine/opening.h"
#include "record_file.h"

namespace heron::cli {

enum class SheetKind {
  kDocument,  ///< an application's record: a file's, or the user's own working record of the printer
  kDevice,    ///< the printer's saved record
};

class Sheet {
 public:
  /// Opens the record of file `in`, or without one the user's own (`fresh`: the printer's valid default instead).
  Sheet(Printer& printer, const std::string& name, const std::string& in, SheetKind kind, bool fresh = false);

  /// Runs the opening steps, and the opening pass of the rules if `corrects`.
  void Open(bool corrects);

  const UiState& ui() const { return *settings_->ui; }
  engine::Engine& engine() { return settings_->engine; }
  engine::Resolver& resolver() { return settings_->resolver; }

  const ResourceContext* resources() const { return resources_.get(); }

  /// Commits the working values; what the commit has to say goes to `view`.
  void Commit(engine::EngineView* view);
  /// The record that a confirmed sheet would hand back.
  Bytes Record();
  /// Makes `record` what this kind of sheet keeps: the user's own working record, or the printer's saved one.
  void Keep(const Bytes& record);
  /// Writes the lists that the settings have brought with them back to the user's stores.
  void KeepLists();
  std::string PlaceOfRecord() const;

 private:
  using Resources = std::unique_ptr<ResourceContext, CloseContext>;

  Printer& printer_;
  std::string name_;
  SheetKind kind_;
  Resources resources_;
  DriverEnv env_;
  std::unique_ptr<engine::OpenedSettings> settings_;
};

}  // namespace heron::cli
