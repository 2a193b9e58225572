// Passes message boxes to the installed desk (message_box.h).

#include "platform/api/message_box.h"

#include <atomic>

namespace heron::platform {
namespace {

std::atomic<MessageDesk*> installed_desk = nullptr;

std::u16string_view View(const char16_t* text) {
  return text == nullptr ? std::u16string_view() : text;
}

}  // namespace

void InstallMessageDesk(MessageDesk* desk) {
  installed_desk = desk;
}

bool MessagesMayShowSecrets() {
  const MessageDesk* const desk = installed_desk;
  return desk != nullptr && desk->MayShowSecrets();
}

extern "C" int MessageBoxW(HWND owner, const char16_t* text, const char16_t* caption, DWORD flags) {
  MessageDesk* const desk = installed_desk;
  return desk == nullptr ? 0 : desk->Show(owner, View(text), View(caption), flags);
}

}  // namespace heron::platform
