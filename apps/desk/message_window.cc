// Message boxes as windows (message_window.h).

#include "message_window.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <algorithm>

#include "text.h"

namespace heron::desk {
namespace {

struct Answer {
  int id;
  QDialogButtonBox::StandardButton button;
};

struct Buttons {
  platform::DWORD flags;
  std::vector<Answer> answers;  ///< the first is the default; the last is what Esc does
};

const Buttons kButtons[] = {
    {platform::MB_OK, {{platform::IDOK, QDialogButtonBox::Ok}}},
    {platform::MB_OKCANCEL, {{platform::IDOK, QDialogButtonBox::Ok}, {platform::IDCANCEL, QDialogButtonBox::Cancel}}},
    {platform::MB_YESNO, {{platform::IDYES, QDialogButtonBox::Yes}, {platform::IDNO, QDialogButtonBox::No}}},
    {platform::MB_YESNOCANCEL,
     {{platform::IDYES, QDialogButtonBox::Yes},
      {platform::IDNO, QDialogButtonBox::No},
      {platform::IDCANCEL, QDialogButtonBox::Cancel}}},
};

const std::vector<Answer>& AnswersOf(platform::DWORD flags) {
  const auto found = std::ranges::find(kButtons, flags & platform::kButtonsMask, &Buttons::flags);
  return (found == std::end(kButtons) ? std::begin(kButtons) : found)->answers;
}

QStyle::StandardPixmap IconOf(platform::DWORD flags) {
  switch (flags & 0xf0) {
    case platform::MB_ICONSTOP:
      return QStyle::SP_MessageBoxCritical;
    case platform::MB_ICONQUESTION:
      return QStyle::SP_MessageBoxQuestion;
    case platform::MB_ICONEXCLAMATION:
      return QStyle::SP_MessageBoxWarning;
    default:
      return QStyle::SP_MessageBoxInformation;
  }
}

/// The text, with a scroll bar where it is higher than half of the screen.
QWidget* TextArea(QWidget* parent, const QString& text) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::RichText);
  label->setText(ReportHtml(text));
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  label->setAccessibleName(text);
  const QSize screen = parent->screen()->availableSize();
  const int width = std::min(72 * label->fontMetrics().averageCharWidth(), screen.width() / 2);
  label->setMinimumWidth(std::min(width, label->sizeHint().width()));  // on one line, if it isn't too long for it
  label->setWordWrap(true);
  const int height = label->heightForWidth(width);
  if (height <= screen.height() / 2) return label;
  auto* const area = new QScrollArea(parent);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidget(label);
  area->setMinimumSize(width + area->style()->pixelMetric(QStyle::PM_ScrollBarExtent), screen.height() / 2);
  return area;
}

}  // namespace

QString ReportHtml(const QString& text) {
  const QString arrow = QStringLiteral(" => ");
  QString html;
  bool in_table = false;
  for (const QString& line : text.split(u'\n')) {
    const qsizetype at = line.indexOf(arrow);
    const bool row = at > 0;
    if (row && !in_table) html += QStringLiteral("<table cellspacing=\"0\" cellpadding=\"1\">");
    if (!row && in_table) html += QStringLiteral("</table><p style=\"margin-top:%1px\">").arg(line.isEmpty() ? 0 : 10);
    if (!row && !in_table && !html.isEmpty()) html += QStringLiteral("<br>");
    in_table = row;
    if (row) {
      html += QStringLiteral("<tr><td>%1</td><td>&nbsp;=&gt;&nbsp;</td><td><b>%2</b></td></tr>")
                  .arg(line.first(at).trimmed().toHtmlEscaped(), line.sliced(at + arrow.size()).toHtmlEscaped());
    } else {
      html += line.toHtmlEscaped();
    }
  }
  return in_table ? html + QStringLiteral("</table>") : html;
}

MessageWindow::MessageWindow(QWidget* owner, const QString& caption, const QString& text, platform::DWORD flags)
    : QDialog(owner), escape_(AnswersOf(flags).back().id) {
  setWindowTitle(caption);
  setObjectName(QStringLiteral("message"));
  auto* const layout = new QGridLayout(this);
  layout->setHorizontalSpacing(2 * layout->horizontalSpacing());
  auto* const icon = new QLabel(this);
  const int extent = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
  icon->setPixmap(style()->standardIcon(IconOf(flags), nullptr, this).pixmap(extent));
  layout->addWidget(icon, 0, 0, Qt::AlignTop);
  layout->addWidget(TextArea(this, text), 0, 1);
  auto* const buttons = new QDialogButtonBox(this);
  const std::vector<Answer>& answers = AnswersOf(flags);
  const size_t chosen = (flags & platform::MB_DEFBUTTON2) != 0 && answers.size() > 1 ? 1 : 0;
  for (size_t at = 0; at < answers.size(); ++at) {
    QPushButton* const button = buttons->addButton(answers[at].button);
    connect(button, &QPushButton::clicked, this, [this, id = answers[at].id] { done(id); });
    button->setIcon({});
    button->setDefault(at == chosen);
    if (at == chosen) button->setFocus();
  }
  layout->addWidget(buttons, 1, 0, 1, 2);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

int MessageWindow::Run() {
  return exec();
}

int MessageWindows::Show(platform::HWND owner, std::u16string_view text, std::u16string_view caption,
                         platform::DWORD flags) {
  // A window that is gone must not be asked for anything.
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto found = std::ranges::find(windows, owner, [](QWidget* window) -> platform::HWND { return window; });
  QWidget* const parent = found == windows.end() ? QApplication::activeWindow() : *found;
  return MessageWindow(parent, ToQt(caption), ToQt(text), flags).Run();
}

}  // namespace heron::desk
