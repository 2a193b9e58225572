// Message boxes as windows: the text can be selected, and lines "setting => value" are aligned.
#pragma once

#include <QDialog>

#include "platform/api/message_box.h"

namespace heron::desk {

class MessageWindow final : public QDialog {
 public:
  /// `flags` as of MessageBoxW.
  MessageWindow(QWidget* owner, const QString& caption, const QString& text, platform::DWORD flags);

  /// The ID of the button that answered it. Esc is Cancel, or where there is none No, or OK.
  int Run();
  void reject() override { done(escape_); }

 private:
  int escape_;
};

/// Shows what MessageBoxW asks for.
class MessageWindows final : public platform::MessageDesk {
 public:
  int Show(platform::HWND owner, std::u16string_view text, std::u16string_view caption, platform::DWORD flags) override;
  bool MayShowSecrets() const override { return true; }
};

/// The text as HTML: lines with " => " as rows of a table, everything else unchanged.
QString ReportHtml(const QString& text);

}  // namespace heron::desk
