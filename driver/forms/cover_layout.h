// The fax cover sheet as it is drawn: one layout for the previews and the printed page.
//
// Lengths are pixels of the device; `...Hmm` are hundredths of a millimetre. Numbers of a store are clamped by the code
// that fills the layout (ClampCover). The strings are in use.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/api/types.h"
#include "uistate/list_stores.h"
#include "uistate/recipients.h"

namespace heron {

/// The eighteen settings of a cover sheet, each as the record holds it.
struct CoverFlags {
  uint8_t subject, receiveName, receiveFaxnum, receiveCompany1, receiveCompany2;
  uint8_t receiveSetup;     ///< 0 template text, 1 details of the recipients
  uint8_t receivePersonal;  ///< 0 all recipients on one sheet, 1 a sheet each, 2 a typed one
  uint8_t senderName, senderCompany1, senderCompany2, senderTelnum, senderFaxnum, senderEmail;
  uint8_t date, pagenum, image, zoom;
  uint8_t a4pFix;  ///< 1: the sheet has a paper of its own
};

struct CoverLayout {
  platform::HDC dc = nullptr;
  CoverFlags flags{};
  int32_t resolution = 0;  ///< dots per inch
  int32_t percent = 0;     ///< scale of the whole sheet
  int32_t boxWidthHmm = 0, boxLengthHmm = 0;
  int32_t originX = 0, originY = 0;
  int32_t marginXHmm = 0, marginYHmm = 0;
  int32_t zoom = 0;  ///< percent, of the picture
  int32_t imageXHmm = 0, imageYHmm = 0;
  std::u16string imagePath;
  int32_t style = 0;  ///< row of kCoverStyles
  std::span<const RecipientRow> rows;
  uint32_t firstRow = 0, endRow = 0;  ///< recipients on this sheet
  const FaxCoverStore* store = nullptr;
  int32_t imageScale = 0;  ///< percent of 200 dpi
  bool fixedDate = false;  ///< the date below instead of today's
  uint16_t year = 0, month = 0, day = 0;
};

/// Draws the sheet. What can't be drawn, a picture that can't be read say, is left out.
void LayoutCover(const CoverLayout& layout);

/// Brings the numbers of a store into their ranges: what a registry or a file may hold is anything.
void ClampCover(FaxCoverStore& store);
inline constexpr uint32_t kMostCoverPages = 999, kMinCoverZoom = 50, kMaxCoverZoom = 800;
inline constexpr uint32_t kCoverPositions = 10000;  ///< hundredths of a percent
inline constexpr uint32_t kCoverStyleCount = 4;

/// The number of line feeds in a comment; after each the next character isn't looked at.
uint32_t CountCommentLines(std::u16string_view text);

/// Text of a store's field, up to its terminator.
template <size_t N>
std::u16string_view CoverText(const char16_t (&field)[N]) {
  const std::u16string_view whole(field, N);
  return whole.substr(0, whole.find(u'\0'));
}

}  // namespace heron
