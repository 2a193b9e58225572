// File questions and help as windows (questions.h).

#include "questions.h"

#include <QDir>
#include <QFileDialog>
#include <QMenu>

#include "message_window.h"
#include "text.h"

namespace heron::desk {

uint16_t RunMenu(QWidget* button, std::span<const platform::MenuItem> items, const Resources& resources) {
  QMenu menu(button);
  menu.setAttribute(Qt::WA_NoMouseReplay);
  for (const platform::MenuItem& item : items) {
    if (item.command == 0) {
      menu.addSeparator();
      continue;
    }
    QAction* const action = menu.addAction(ToQt(item.text).replace(u'&', QStringLiteral("&&")));
    action->setEnabled(item.enabled);
    action->setData(item.command);
    if (item.picture != 0) action->setIcon(resources.Picture(item.picture, button->devicePixelRatioF()));
  }
  const QPoint middle = button->mapToGlobal(QPoint(button->width() / 2, button->height()));
  const QAction* const chosen = menu.exec(middle - QPoint(menu.sizeHint().width() / 2, 0));
  return chosen == nullptr ? uint16_t{0} : static_cast<uint16_t>(chosen->data().toUInt());
}

namespace {

/// "text|pattern|text|pattern|", whose last character separates, as the toolkit wants it. Patterns end at a ;.
QString Filters(std::u16string_view filter) {
  if (filter.empty()) return {};
  const QStringList parts = ToQt(filter.substr(0, filter.size() - 1)).split(QChar(filter.back()));
  QStringList filters;
  for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
    const QString pattern = QString(parts[at + 1]).replace(u';', u' ');
    const QString text = parts[at].section(QStringLiteral(" ("), 0, 0);
    filters += QStringLiteral("%1 (%2)").arg(text, pattern);
  }
  return filters.join(QStringLiteral(";;"));
}

}  // namespace

std::optional<std::u16string> RunFileQuestion(QWidget* window, const platform::FileQuestion& question) {
  const QString start = QDir(ToQt(question.folder)).filePath(ToQt(question.name));
  const QString title = ToQt(question.title);
  const QString filters = Filters(question.filter);
  const QString name = question.saves ? QFileDialog::getSaveFileName(window, title, start, filters, nullptr,
                                                                     QFileDialog::DontConfirmOverwrite)
                                      : QFileDialog::getOpenFileName(window, title, start, filters);
  return name.isEmpty() ? std::nullopt : std::optional(FromQt(name));
}

std::optional<std::u16string> RunFolderQuestion(QWidget* window, std::u16string_view title,
                                                std::u16string_view folder) {
  const QString name = QFileDialog::getExistingDirectory(window, ToQt(title), ToQt(folder));
  return name.isEmpty() ? std::nullopt : std::optional(FromQt(name));
}

void TellHelp(QWidget* window, const DialogHelp* help, uint32_t topic) {
  QString text = help != nullptr ? help->topic : QStringLiteral("There is no help here yet (topic %1).").arg(topic);
  if (help != nullptr && !help->entries.empty()) {
    text += QStringLiteral(
        "\n\nPress F1 on a setting to read about it, or Shift+F1 and click on one, also on one that can't be changed "
        "now.");
  }
  MessageWindow(window, QStringLiteral("%1 - Help").arg(window->windowTitle()), text,
                platform::MB_OK | platform::MB_ICONINFORMATION)
      .Run();
}

}  // namespace heron::desk
