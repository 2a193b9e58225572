// Text between the driver and Qt; both are UTF-16.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace heron::desk {

inline QString ToQt(std::u16string_view text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline std::u16string FromQt(const QString& text) {
  return text.toStdU16String();
}

/// A label without its mnemonic, as assistive tools say it.
inline QString Spoken(const QString& label) {
  QString spoken;
  for (qsizetype at = 0; at < label.size(); ++at) {
    if (label[at] == u'&' && at + 1 < label.size()) ++at;
    spoken += label[at];
  }
  if (spoken.endsWith(u':')) spoken.chop(1);
  return spoken;
}

}  // namespace heron::desk
