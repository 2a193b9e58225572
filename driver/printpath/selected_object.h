// What is changed on an application's device context comes back when the drawing is done, however it ends.
#pragma once

#include "platform/api/device_context.h"

namespace heron {

/// Everything that is set and selected, the clip included.
class KeptState {
 public:
  explicit KeptState(platform::HDC hdc) : hdc_(hdc), saved_(platform::SaveDC(hdc)) {}
  ~KeptState() {
    if (saved_ != 0) platform::RestoreDC(hdc_, saved_);
  }
  KeptState(const KeptState&) = delete;
  KeptState& operator=(const KeptState&) = delete;

 private:
  const platform::HDC hdc_;
  const int saved_;
};

/// A new font, pen or brush, selected and owned; null selects nothing.
class SelectedObject {
 public:
  SelectedObject(platform::HDC hdc, platform::HGDIOBJ object)
      : hdc_(hdc), object_(object), before_(object == nullptr ? nullptr : platform::SelectObject(hdc, object)) {}
  ~SelectedObject() {
    if (before_ != nullptr) platform::SelectObject(hdc_, before_);
    if (object_ != nullptr) platform::DeleteObject(object_);
  }
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;

 private:
  const platform::HDC hdc_;
  const platform::HGDIOBJ object_;
  const platform::HGDIOBJ before_;
};

}  // namespace heron
