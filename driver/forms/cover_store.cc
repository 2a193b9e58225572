#include "forms/cover_store.h"

#include <algorithm>
#include <array>

#include "catalog/strings.h"
#include "engine/setting.h"
#include "forms/cover_tables.h"
#include "generated/texts.h"
#include "platform/api/files.h"
#include "platform/api/handles.h"
#include "platform/api/text.h"

namespace heron {
namespace {

using namespace platform;

constexpr size_t kPathRoom = 259;
constexpr std::u16string_view kExtension = u".bmp";

/// The switches and radios of the sheet, by row of kParamRows.
constexpr std::array kCoverParams = {
    ParamNamed<u"FaxCover_Subject">(),
    ParamNamed<u"FaxCover_ReceiveName">(),
    ParamNamed<u"FaxCover_ReceiveCompany1">(),
    ParamNamed<u"FaxCover_ReceiveCompany2">(),
    ParamNamed<u"lpFaxCover_ReceiveSetup">(),
    ParamNamed<u"lpFaxCover_ReceivePersonal">(),
    ParamNamed<u"FaxCover_ReceiveFaxnum">(),
    ParamNamed<u"FaxCover_SenderName">(),
    ParamNamed<u"FaxCover_SenderCompany1">(),
    ParamNamed<u"FaxCover_SenderCompany2">(),
    ParamNamed<u"FaxCover_SenderTelnum">(),
    ParamNamed<u"FaxCover_SenderFaxnum">(),
    ParamNamed<u"FaxCover_SenderEmail">(),
    ParamNamed<u"FaxCover_Date">(),
    ParamNamed<u"FaxCover_Pagenum">(),
    ParamNamed<u"FaxCover_Image">(),
    ParamNamed<u"FaxCover_Zoom">(),
    ParamNamed<u"FaxCover_A4PFix">(),
};
static_assert(kCoverParams.size() == 18);

template <size_t N>
void Put(char16_t (&field)[N], std::u16string_view text) {
  std::ranges::fill(field, u'\0');
  text.substr(0, N - 1).copy(field, N - 1);
}

/// A part of a path for a message.
std::u16string Shortened(std::u16string_view part) {
  constexpr size_t kFrom = 32, kKept = 29;
  return part.size() < kFrom ? std::u16string(part) : std::u16string(part.substr(0, kKept)) + u"...";
}

bool EndsFolded(std::u16string_view path, std::u16string_view ending) {
  if (path.size() < ending.size()) return false;
  return std::ranges::equal(path.substr(path.size() - ending.size()), ending, {},
                            [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; });
}

}  // namespace

void ResetCoverStore(uint32_t mask, const UiState& ui) {
  FaxCoverStore* const store = ui.stores.faxCover.get();
  if (store == nullptr) return;
  if ((mask & kResetSubject) != 0) Put(store->subject, {});
  if ((mask & kResetText) != 0) {
    Put(store->text, {});
    store->lineNum = 0;
  }
  if ((mask & kResetPagenum) != 0) store->pagenum = 1;
  if ((mask & kResetStyle) != 0) store->style = 1;
  if ((mask & kResetFilename) != 0) Put(store->filename, {});
  if ((mask & kResetX) != 0) store->xPosition = 0;
  if ((mask & kResetY) != 0) store->yPosition = 0;
  if ((mask & kResetZoom) != 0) store->zoom = 100;
  if ((mask & kResetFixedform) != 0) Put(store->fixedform, GetUiString(text::kFaxGreeting));
  if ((mask & kResetPaper) != 0) store->fcsPaper = kDocumentPaper;
}

void ResetCoverFlags(const UiState& ui) {
  for (const uint16_t param : kCoverParams) {
    const ValueFields fields = FieldsOf(ui, param);
    *fields.value = *fields.defaultValue;
  }
}

void FollowCoverPaper(const UiState& ui) {
  if (ui.stores.faxCover != nullptr)
    engine::Setting<u"FaxCover_A4PFix">(ui) = ui.stores.faxCover->fcsPaper == kDocumentPaper ? 0 : 1;
}

bool CoverImageOpens(const std::u16string& path) {
  return CanOpenFile(path.c_str());
}

CoverImageFault ValidateCoverImage(std::u16string* path) {
  if (path->size() >= kPathRoom) return CoverImageFault::kTooLong;
  const size_t point = path->find(u'.');
  if (point == 0) return CoverImageFault::kNotOpened;
  if (point != std::u16string::npos) {
    const char16_t before = (*path)[point - 1];
    if (before == u'*' || before == u' ') return CoverImageFault::kNotOpened;
  } else {
    if (path->size() + kExtension.size() >= kPathRoom) return CoverImageFault::kTooLong;
    *path += kExtension;
  }
  if (path->find(kPathSeparator) == std::u16string::npos) {
    std::array<char16_t, kMaxPath> folder{};
    const DWORD length = GetSystemDirectoryW(folder.data(), kMaxPath);
    if (length == 0 || length >= kMaxPath) return CoverImageFault::kNotOpened;
    if (length + 1 + path->size() >= kPathRoom) return CoverImageFault::kTooLong;
    *path = std::u16string(folder.data(), length) + kPathSeparator + *path;
  }
  if (!CoverImageOpens(*path)) return CoverImageFault::kNotOpened;
  return EndsFolded(*path, kExtension) ? CoverImageFault::kNone : CoverImageFault::kNotBitmap;
}

std::u16string CoverImageText(std::u16string_view path, CoverImageFault fault) {
  const size_t separator = path.rfind(kPathSeparator);
  std::u16string shown;
  if (separator != std::u16string_view::npos) shown = Shortened(path.substr(0, separator)) + kPathSeparator;
  shown += Shortened(path.substr(separator + 1));
  const TextNumber text = fault == CoverImageFault::kNotBitmap   ? text::kCoverPictureNoBitmap
                          : fault == CoverImageFault::kNotOpened ? text::kCoverPictureNotOpened
                                                                 : text::kCoverPicturePathTooLong;
  return ExpandText(GetUiString(text), {std::u16string_view(shown)});
}

std::u16string StoredComment(std::u16string_view text) {
  std::u16string stored;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\n' && (i == 0 || text[i - 1] != u'\r')) stored += u'\r';
    stored += text[i];
  }
  return stored;
}

}  // namespace heron
