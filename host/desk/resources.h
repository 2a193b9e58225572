// What the desk shows out of the driver's resource module: templates, texts, help, small pictures.
#pragma once

#include <QPixmap>
#include <map>
#include <string>

#include "help.h"

namespace heron::desk {

class Resources {
 public:
  /// Of the module at the full path `path`; whatever a module that can't be loaded should hold is missing.
  explicit Resources(const std::u16string& path);
  ~Resources();
  Resources(const Resources&) = delete;
  Resources& operator=(const Resources&) = delete;

  /// The template of a dialog, or null; stays where it is.
  const platform::DialogTemplate* Template(uint16_t dialog);
  /// The help of a dialog, or null; stays where it is.
  const DialogHelp* Help(uint16_t dialog);
  QString Text(uint32_t number) const;
  /// Picture `number` at its normal scale, sharp on a screen of `ratio` pixels a point; null if there is none.
  QPixmap Picture(uint32_t number, qreal ratio) const;

 private:
  platform::HMODULE module_;
  std::map<uint16_t, platform::DialogTemplate> templates_;
  std::map<uint16_t, DialogHelp> help_;
};

}  // namespace heron::desk
