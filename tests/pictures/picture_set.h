// The pictures of a built resource module, by number.
#pragma once

#include <QByteArray>
#include <QLibrary>
#include <QString>
#include <map>
#include <stdexcept>

#include "platform/api/module_data.h"

namespace heron::test {

class PictureSet {
 public:
  /// Of the module at `path`, which stays loaded. Throws std::runtime_error if it isn't one.
  explicit PictureSet(const QString& path) {
    QLibrary module(path);
    const auto table = reinterpret_cast<HeronModuleDataFunction>(module.resolve(kHeronModuleDataName));
    if (table == nullptr) throw std::runtime_error(module.errorString().toStdString());
    constexpr uint32_t kPicture = 10;
    uint32_t count = 0;
    const HeronModuleData* const rows = table(&count);
    for (uint32_t n = 0; n < count; ++n) {
      if (rows[n].kind == kPicture)
        sources_[rows[n].id] = QByteArray(reinterpret_cast<const char*>(rows[n].data), rows[n].size);
    }
  }

  /// The SVG of a picture; empty if there is none.
  QByteArray Source(uint32_t number) const {
    const auto found = sources_.find(number);
    return found == sources_.end() ? QByteArray() : found->second;
  }
  const std::map<uint32_t, QByteArray>& All() const { return sources_; }

 private:
  std::map<uint32_t, QByteArray> sources_;
};

}  // namespace heron::test
