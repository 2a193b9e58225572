// The country code of a locale's territory (countries.h).

#include "platform/sqlite/countries.h"

#include <algorithm>
#include <array>

namespace heron::store {
namespace {

// Code: territories (ISO 3166-1 alpha-2) in any order. Read by CountryOfLocale alone. The codes are those of the
// international telephone network, less the few that the driver's destinations know otherwise: 981 is Iran, and
// Liechtenstein, Monaco and Vatican City count as their neighbours.
// clang-format off
constexpr std::string_view kTerritories =
    "1 US CA AG AI AS BB BM BS DM DO GD GU JM KN KY LC MP MS PR SX TC TT UM VC VG VI\n"
    "7 RU KZ\n20 EG\n27 ZA\n30 GR\n31 NL\n32 BE\n33 FR MC\n34 ES\n36 HU\n39 IT VA\n40 RO\n41 CH LI\n43 AT\n44 GB GG IM JE\n45 DK\n46 SE\n"
    "47 NO SJ BV\n48 PL\n49 DE\n51 PE\n52 MX\n53 CU\n54 AR\n55 BR\n56 CL\n57 CO\n58 VE\n60 MY\n61 AU CX CC\n62 ID\n63 PH\n64 NZ PN\n"
    "65 SG\n66 TH\n81 JP\n82 KR\n84 VN\n86 CN\n90 TR\n91 IN\n92 PK\n93 AF\n94 LK\n95 MM\n211 SS\n212 MA EH\n213 DZ\n216 TN\n218 LY\n"
    "220 GM\n221 SN\n222 MR\n223 ML\n224 GN\n225 CI\n226 BF\n227 NE\n228 TG\n229 BJ\n230 MU\n231 LR\n232 SL\n233 GH\n234 NG\n235 TD\n"
    "236 CF\n237 CM\n238 CV\n239 ST\n240 GQ\n241 GA\n242 CG\n243 CD\n244 AO\n245 GW\n246 IO\n248 SC\n249 SD\n250 RW\n251 ET\n252 SO\n"
    "253 DJ\n254 KE\n255 TZ\n256 UG\n257 BI\n258 MZ\n260 ZM\n261 MG\n262 RE YT TF\n263 ZW\n264 NA\n265 MW\n266 LS\n267 BW\n268 SZ\n"
    "269 KM\n290 SH\n291 ER\n297 AW\n298 FO\n299 GL\n350 GI\n351 PT\n352 LU\n353 IE\n354 IS\n355 AL\n356 MT\n357 CY\n358 FI AX\n359 BG\n"
    "370 LT\n371 LV\n372 EE\n373 MD\n374 AM\n375 BY\n376 AD\n378 SM\n380 UA\n381 RS\n382 ME\n383 XK\n385 HR\n386 SI\n387 BA\n389 MK\n"
    "420 CZ\n421 SK\n500 FK GS\n501 BZ\n502 GT\n503 SV\n504 HN\n505 NI\n506 CR\n507 PA\n508 PM\n509 HT\n590 GP BL MF\n591 BO\n592 GY\n"
    "593 EC\n594 GF\n595 PY\n596 MQ\n597 SR\n598 UY\n599 CW BQ\n670 TL\n672 NF AQ HM\n673 BN\n674 NR\n675 PG\n676 TO\n677 SB\n678 VU\n"
    "679 FJ\n680 PW\n681 WF\n682 CK\n683 NU\n685 WS\n686 KI\n687 NC\n688 TV\n689 PF\n690 TK\n691 FM\n692 MH\n850 KP\n852 HK\n853 MO\n"
    "855 KH\n856 LA\n880 BD\n886 TW\n960 MV\n961 LB\n962 JO\n963 SY\n964 IQ\n965 KW\n966 SA\n967 YE\n968 OM\n970 PS\n971 AE\n972 IL\n"
    "973 BH\n974 QA\n975 BT\n976 MN\n977 NP\n981 IR\n992 TJ\n993 TM\n994 AZ\n995 GE\n996 KG\n998 UZ\n";
// clang-format on

constexpr bool IsCapital(char c) {
  return c >= 'A' && c <= 'Z';
}
constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

struct Territory {
  std::array<char, 2> name{};
  uint32_t country = 0;
};

constexpr size_t kCount = static_cast<size_t>(std::ranges::count_if(kTerritories, IsCapital)) / 2;

constexpr auto ParseTerritories() {
  std::array<Territory, kCount> rows{};
  uint32_t country = 0;
  size_t next = 0;
  for (size_t i = 0; i < kTerritories.size(); ++i) {
    const char c = kTerritories[i];
    if (c == '\n') country = 0;
    if (IsDigit(c)) country = country * 10 + static_cast<uint32_t>(c - '0');
    if (!IsCapital(c)) continue;
    rows.at(next++) = {{c, kTerritories[++i]}, country};
  }
  return rows;
}

constexpr auto kRows = ParseTerritories();

}  // namespace

uint32_t CountryOfLocale(std::string_view locale) {
  const size_t start = locale.find('_');
  if (start == std::string_view::npos) return 0;
  const std::string_view name = locale.substr(start + 1, locale.find_first_of(".@", start) - start - 1);
  const auto row = std::ranges::find_if(
      kRows, [name](const Territory& territory) { return name == std::string_view(territory.name.data(), 2); });
  return row == kRows.end() ? 0 : row->country;
}

}  // namespace heron::store
