// Papers and styles of the fax cover sheet.
//
// Readers: cover_layout.cc, cover_sheets.cc and the dialog. A paper's row is its index in FaxCoverStore::fcsPaper, a
// style's is FaxCoverStore::style less 1.
#pragma once

#include <array>
#include <cstdint>

#include "generated/texts.h"

namespace heron {

/// A paper of the sheet's own; size in tenths of a millimetre.
struct CoverPaper {
  uint16_t paper;
  uint16_t width;
  uint16_t length;
  TextNumber name;
};
inline constexpr uint32_t kDocumentPaper = 5;  ///< the index of no paper of its own
inline constexpr uint8_t kSimplifiedChinese = 134, kAnsiCharacters = 0;
inline constexpr uint8_t kFixedRoman = 17, kVariableRoman = 16;  ///< pitch and family

struct CoverFont {
  const char16_t* face;
  uint16_t weight;
  uint8_t charSet;
  uint8_t pitchAndFamily;
};

struct CoverStyle {
  CoverFont head;
  CoverFont body;  ///< of recipient, sender, subject and comment
  TextNumber title;
  TextNumber to;
  TextNumber pages;
  TextNumber subject;
  TextNumber from;
  TextNumber telephone;
  TextNumber fax;
  TextNumber email;
};
/// The style whose order of names and date is the western one.
inline constexpr int kWesternStyle = 3;

namespace cover {
inline constexpr CoverFont kSongBold = {u"宋体", 700, kSimplifiedChinese, kFixedRoman};
inline constexpr CoverFont kSong = {u"宋体", 400, kSimplifiedChinese, kFixedRoman};
inline constexpr CoverFont kHeiBold = {u"黑体", 700, kSimplifiedChinese, kFixedRoman};
inline constexpr CoverFont kHei = {u"黑体", 400, kSimplifiedChinese, kFixedRoman};
inline constexpr CoverFont kArialBold = {u"Arial", 700, kAnsiCharacters, kVariableRoman};
}  // namespace cover

// clang-format off
inline constexpr std::array<CoverPaper, kDocumentPaper> kCoverPapers = {{
    { 9, 2100, 2970, text::kCoverPaperA4},
    {11, 1480, 2100, text::kCoverPaperA5},
    {12, 2570, 3640, text::kCoverPaperB4},
    {13, 1820, 2570, text::kCoverPaperB5},
    { 1, 2159, 2794, text::kCoverPaperLetter},
}};

inline constexpr std::array<CoverStyle, 4> kCoverStyles = {{
    {cover::kSongBold, cover::kSong, text::kCoverTitle1, text::kCoverTo, text::kCoverPages, text::kCoverSubject,
     text::kCoverFrom, text::kCoverTelephone, text::kCoverFax, text::kCoverEmail},
    {cover::kSongBold, cover::kSong, text::kCoverTitle2, text::kCoverTo, text::kCoverPages, text::kCoverSubject,
     text::kCoverFrom, text::kCoverTelephone, text::kCoverFax, text::kCoverEmail},
    {cover::kHeiBold, cover::kHei, text::kCoverTitle3, text::kCoverTo, text::kCoverPages, text::kCoverSubject,
     text::kCoverFrom, text::kCoverTelephone, text::kCoverFax, text::kCoverEmail},
    {cover::kArialBold, cover::kSong, text::kCoverTitle4, text::kCoverTo4, text::kCoverPages4, text::kCoverSubject4,
     text::kCoverFrom4, text::kCoverTelephone4, text::kCoverFax4, text::kCoverEmail4},
}};
// clang-format on

}  // namespace heron
