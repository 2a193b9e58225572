// Dialog 1100: the list of watermarks, and every part of the selected one, with a picture in which the stamp can be
// dragged.
//
// It works on a clone of the settings, so that Cancel takes everything back. OK makes the selected entry the current
// one. Entry 0 stands for no watermark: nothing of it can be changed.
#pragma once

#include <vector>

#include "pages/logic_base.h"
#include "pages/sheet_context.h"
#include "preview/watermark_picture.h"

namespace heron::pages {

class WatermarkDialog : public LogicBase {
 public:
  explicit WatermarkDialog(SheetContext& sheet) : sheet_(sheet) {}

 protected:
  void OnInitialise() override;
  void OnClicked(ControlId id) override;
  void OnRowSelected(ControlId id) override;
  void OnTextChanged(ControlId id) override;
  void OnPositionChanged(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  bool MayLeave(ControlId id, ControlId to) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;
  void OnPointer(ControlId id, const platform::PointerEvent& event) override;
  void OnHelp(ControlId id) override;

 private:
  UiState& ui() const { return *sheet_.engine().ui; }
  WatermarkStore& store() const { return *ui().stores.watermarks; }
  WatermarkEntry& entry() const { return store().entries[selected_]; }
  bool Edits() const { return selected_ > 0; }

  void FillList();
  void SelectEntry(int index);
  void Show(uint32_t mask);
  void ShowFont();
  void ShowCenter(uint32_t mask);
  void EnableEditing();
  void Repaint();

  void AddEntry();
  void DeleteEntry();
  void RestoreEntry();
  void Confirm();
  void TakeText();
  void TakeSize();
  void TakeAngle();
  void SetSize(int size);
  void SetAngle(int degrees);
  void SetCenter(platform::POINT center);
  void Rewrite(ControlId field, int number);
  bool CheckSize(ControlId to);
  bool CheckAngle(ControlId to);
  bool RefuseNumber(ControlId field, ControlId to, int number, const std::u16string& text);
  preview::PaperFrame Frame() const;

  SheetContext& sheet_;
  int selected_ = 0;
  bool closing_ = false;  ///< OK was pressed: leaving a field checks nothing
  std::vector<platform::FontFamily> families_;
};

}  // namespace heron::pages
