// A printer's settings opened as a sheet opens them, without a window: the record, the working store, the engine.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "catalog/strings.h"
#include "command.h"
#include "engine/engine.h"
#include "engine/resolve.h"
#include "record_file.h"
#include "uistate/ui_state.h"

namespace heron::cli {

enum class SheetKind {
  kDocument,  ///< an application's record: a file's, or the user's own working record of the printer
  kDevice,    ///< the printer's saved record
};

class Sheet {
 public:
  /// Opens the record of file `in`, or without one the user's own (`fresh`: the printer's valid default instead).
  Sheet(Printer& printer, const std::string& name, const std::string& in, SheetKind kind, bool fresh = false);
  ~Sheet();
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  /// Runs the opening steps, and the opening pass of the rules if `corrects`.
  void Open(bool corrects);

  const UiState& ui() const { return *ui_; }
  engine::Engine& engine() { return *engine_; }
  engine::Resolver& resolver() { return *resolver_; }

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
  std::optional<StringsInUse> strings_;  ///< once the driver directory is known
  DriverEnv env_;
  UiStatePtr ui_;
  std::unique_ptr<engine::Engine> engine_;
  std::unique_ptr<engine::Resolver> resolver_;
};

}  // namespace heron::cli
