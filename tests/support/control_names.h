// Dialogs and their controls by name, for tests: as resources/dialogs names them.
#pragma once

#include <concepts>
#include <map>
#include <string>

#include "platform/dialog/dialog_template.h"

namespace heron::test {

/// Every template under resources/dialogs by its number; one that can't be read is a failure of the test.
const std::map<uint16_t, platform::DialogTemplate>& Templates();

/// A dialog by what follows the number in its file's name, "binding-margin", or by its number.
class DialogName {
 public:
  DialogName(const char* name);
  DialogName(std::integral auto number) : number_(static_cast<uint16_t>(number)) {}
  operator uint16_t() const { return number_; }

 private:
  uint16_t number_;
};

/// A control by its key or alias, "Zoom", or by its number. An unknown name is a failure of the test.
class ControlName {
 public:
  ControlName(const char* name);
  ControlName(std::integral auto id) : id_(static_cast<platform::ControlId>(id)) {}
  operator platform::ControlId() const { return id_; }

 private:
  platform::ControlId id_;
};

/// The number of a control where a number is wanted: "Zoom"_id.
inline platform::ControlId operator""_id(const char* name, size_t) {
  return ControlName(name);
}

/// The key or alias of a control; its number if it has none, and "none" for 0.
std::string NameOfControl(platform::ControlId id);

}  // namespace heron::test
