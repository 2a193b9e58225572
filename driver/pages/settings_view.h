// A page or dialog whose controls are views of settings: it shows them, tells which one the user changed, and stands in
// front of the engine.
//
// No setting is held here. A table (ShownControl) tells which controls are shown in which group; what kind each is, and
// which setting it shows, the engine's own table tells, or for a control that the engine doesn't know the row of the
// table. A change of kind list, check or radio ends in OnChanged (in OnStored if the engine doesn't know the control),
// a typed or spun number in OnNumber. To redisplay, a group's bit is set in the RefreshMask and the show step runs.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "engine/setting.h"
#include "engine/view.h"
#include "pages/logic_base.h"
#include "pages/sheet_context.h"

namespace heron::pages {

/// A control that shows a setting. Groups are shown in ascending order, the controls of one in the order of the table.
struct ShownControl {
  ControlId id = 0;
  uint8_t group = 0;   ///< bit of the RefreshMask, below 32
  ControlId spin = 0;  ///< of a number field
  /// The setting of a control that isn't in the engine's table, of kind list, radio, check or number, by its row of
  /// kParamRows: ParamNamed<u"EcmTab">().
  uint16_t param = kNoIndex;
  uint16_t value = 0;  ///< of such a setting, that this radio stands for
};

/// Keeps what a refusal or a No is to bring back, from before settings are changed outside of the resolve that follows.
class Action {
 public:
  explicit Action(engine::Resolver& resolver) : resolver_(resolver) { engine::BeginAction(resolver); }
  ~Action() { engine::EndAction(resolver_); }
  Action(const Action&) = delete;
  Action& operator=(const Action&) = delete;

 private:
  engine::Resolver& resolver_;
};

/// What a dialog needs only while it is open.
struct PageBlock {
  UiState* ui = nullptr;                      ///< the settings that it was opened on
  uint32_t RefreshMask = 0;                   ///< groups that the show step has still to show
  std::vector<std::vector<uint16_t>> values;  ///< of the rows of each list, by place in the table
};

class SettingsView : public LogicBase, public engine::EngineView {
 public:
  // EngineView
  uint16_t ReadControl(uint16_t id) override;
  bool Show(const engine::Report& report) override;
  void RedisplayControl(uint16_t id, uint16_t value) override;
  void RefreshList(uint16_t id) override;
  void RefreshPerPageList() override {}
  void RepaintPictures() override {}
  void EnableControl(uint16_t id, bool available) override;
  void FocusControl(uint16_t id) override;
  bool PerPageRowSelected() const override { return false; }

 protected:
  /// `controls` outlives the view.
  SettingsView(SheetContext& sheet, uint16_t number, std::span<const ShownControl> controls)
      : sheet_(sheet), number_(number), controls_(controls) {}

  void OnInitialise() override;
  void OnDestroy() override { block_.reset(); }
  void OnClicked(ControlId id) override;
  void OnRowSelected(ControlId id) override;
  void OnTextChanged(ControlId id) override;
  void OnPositionChanged(ControlId id) override;

  /// The user changed a list, check or radio; its setting still holds the old value, ReadControl tells the new one. A
  /// value that was chosen again from a list is resolved again, and what it opens is opened again.
  virtual void OnChanged(ControlId id) = 0;
  /// The user typed or spun a number; the setting holds the old one.
  virtual void OnNumber(ControlId, uint16_t) {}
  /// The setting of a list, check or radio bound by parameter has just taken what the control shows.
  virtual void OnStored(ControlId) {}
  /// A click on what isn't in the table.
  virtual void OnButton(ControlId) {}
  /// Whether a list shows the item (by its place), whose status was just computed.
  virtual bool Offers(ControlId list, size_t item);
  virtual std::u16string RowText(ControlId list, const ListItem& item);
  /// Number of the small picture before an item (by its place), 0 for none.
  virtual uint32_t RowPicture(ControlId, size_t) { return 0; }
  /// What is shown with a group besides its controls.
  virtual void OnGroupShown(uint8_t) {}

  SheetContext& sheet() const { return sheet_; }
  engine::Engine& engine() const { return sheet_.engine(); }
  UiState& ui() const { return *block_->ui; }
  uint16_t number() const { return number_; }
  bool Editable() const { return ui().head().uiEditable != 0; }

  void SetActiveDialog(uint16_t dialog) { ui().head().activeDialogId = dialog; }
  /// The setting of the control takes what the control shows.
  void Store(ControlId id);
  void ShowAll();
  void ShowGroup(uint8_t group);
  /// Recomputes what is available and enables the controls of the dialog that owns them now.
  void EvaluateAndApply();
  /// Shows everything again, from the settings and the rules.
  void Rebuild();
  void DisableAll() const;

  /// Runs another dialog, which owns the controls meanwhile; its result.
  int RunOwned(uint16_t dialog, DialogLogic& logic);
  /// The same on a copy of the settings, which takes their place after OK. 0 if no copy could be made.
  int RunOnClone(uint16_t dialog, DialogLogic& logic);

  /// What ReadControl tells of a control whatever it shows, for one change.
  class Pending {
   public:
    Pending(SettingsView& view, ControlId id, uint16_t value) : view_(view) { view.pending_ = {{id, value}}; }
    ~Pending() { view_.pending_.reset(); }
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;

   private:
    SettingsView& view_;
  };

 private:
  const ShownControl* Find(ControlId id) const;
  /// Nothing for a control that neither the engine nor the table knows.
  std::optional<engine::ControlType> TypeOf(const ShownControl& control) const;
  uint16_t ValueOf(const ShownControl& control) const;
  uint16_t RadioValueOf(const ShownControl& control) const;
  ListBlock* BlockOf(const ShownControl& control) const;
  void Changed(const ShownControl& control);
  void RunShowStep();
  void ShowControl(const ShownControl& control);
  void FillList(const ShownControl& control);

  SheetContext& sheet_;
  uint16_t number_;
  std::span<const ShownControl> controls_;
  std::unique_ptr<PageBlock> block_;
  std::optional<std::pair<ControlId, uint16_t>> pending_;
};

/// The digits at the start of a text as a number, at most 65535; 0 without any.
uint16_t ParseNumber(std::u16string_view text);
/// The number at the start of a text, with a - or without; bounded to 32 bits. Nothing without a digit.
std::optional<int32_t> ParseSigned(std::u16string_view text);
std::u16string NumberText(int64_t number);

}  // namespace heron::pages
