// Templates, help and pictures out of the resource module (resources.h).

#include "resources.h"

#include <QPainter>
#include <QSvgRenderer>
#include <array>

#include "platform/api/modules.h"
#include "text.h"

namespace heron::desk {

using platform::DialogTemplate;

Resources::Resources(const std::u16string& path) : module_(platform::LoadLibraryW(path.c_str())), pictures_(module_) {}

Resources::~Resources() {
  if (module_ != nullptr) platform::FreeLibrary(module_);
}

const DialogTemplate* Resources::Template(uint16_t dialog) {
  if (const auto known = templates_.find(dialog); known != templates_.end()) return &known->second;
  const std::span<const uint8_t> source = platform::FindModuleData(module_, platform::RT_DIALOG, dialog);
  std::string error;
  auto read = platform::ParseDialogTemplate({reinterpret_cast<const char*>(source.data()), source.size()}, &error);
  if (!read || read->number != dialog) return nullptr;
  return &templates_.emplace(dialog, std::move(*read)).first->second;
}

const DialogHelp* Resources::Help(uint16_t dialog) {
  if (const auto known = help_.find(dialog); known != help_.end()) return &known->second;
  const std::span<const uint8_t> source = platform::FindModuleData(module_, platform::RT_HELP, dialog);
  QString error;
  auto read = ParseHelp({reinterpret_cast<const char*>(source.data()), source.size()}, &error);
  return read ? &help_.emplace(dialog, std::move(*read)).first->second : nullptr;
}

QString Resources::Text(uint32_t number) const {
  std::array<char16_t, 1000> text{};
  const int length = platform::LoadStringW(module_, number, text.data(), static_cast<int>(text.size()));
  return ToQt({text.data(), static_cast<size_t>(length)});
}

QPixmap Resources::Picture(uint32_t number, qreal ratio) const {
  const std::span<const uint8_t> source = platform::FindModuleData(module_, platform::RT_RCDATA, number);
  if (source.empty()) return {};
  QSvgRenderer renderer(
      QByteArray::fromRawData(reinterpret_cast<const char*>(source.data()), static_cast<qsizetype>(source.size())));
  if (!renderer.isValid()) return {};
  QPixmap picture(renderer.defaultSize() * ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  renderer.render(&painter);
  picture.setDevicePixelRatio(ratio);
  return picture;
}

}  // namespace heron::desk
