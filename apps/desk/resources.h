// Templates, texts, help and small pictures from the driver's resource module.
#pragma once

#include <QPixmap>
#include <map>
#include <string>

#include "help.h"
#include "picture_cache.h"

namespace heron::desk {

class Resources {
 public:
  /// Of the module at the full path `path`; without it, all resources are missing.
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
  /// The pictures as a canvas draws them.
  PictureCache& Pictures() { return pictures_; }

 private:
  platform::HMODULE module_;
  PictureCache pictures_;
  std::map<uint16_t, platform::DialogTemplate> templates_;
  std::map<uint16_t, DialogHelp> help_;
};

}  // namespace heron::desk
