// The fonts that the device holds, in its order, and how a job selects each.
//
// Reader: font_map.cc. A font has two lines. The first: name, then the parts of its PCL selection (symbol set, spacing,
// typeface, "style/weight" in regular, bold, italic and bold italic, "-" for none), and the code and flag that go with
// its names. The second: its name of 16 characters in each variant, empty for none.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace heron {

struct PrinterFont {
  std::string_view name;
  std::string_view symbolSet;
  std::string_view spacing;
  std::string_view typeface;
  std::array<std::string_view, 4> variants;
  uint16_t code;  ///< number of the symbol set x 32 + place of its letter in the alphabet
  uint8_t flag;
  std::array<std::string_view, 4> names;
};

// clang-format off
inline constexpr auto kPrinterFonts = std::to_array<PrinterFont>({
    {"Albertus Extra Bold",    "19U",  "1", "4362",  {"0/4", "0/4", "0/4", "0/4"},   629, 0,
     {"Albertus      Xb", "Albertus      Xb", "Albertus      Xb", "Albertus      Xb"}},
    {"Albertus Medium",        "19U",  "1", "4362",  {"0/1", "0/1", "0/1", "0/1"},   629, 0,
     {"Albertus      Md", "Albertus      Md", "Albertus      Md", "Albertus      Md"}},
    {"Antique Olive",          "19U",  "1", "4168",  {"0/0", "0/3", "1/0", "0/0"},   629, 0,
     {"AntiqOlive      ", "AntiqOlive    Bd", "AntiqOlive    It", "AntiqOlive      "}},
    {"Arial",                  "19U",  "1", "16602", {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"Arial           ", "Arial         Bd", "Arial         It", "Arial       BdIt"}},
    {"CG Omega",               "19U",  "1", "4113",  {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"CG Omega        ", "CG Omega      Bd", "CG Omega      It", "CG Omega    BdIt"}},
    {"CG Times",               "19U",  "1", "4101",  {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"CG Times        ", "CG Times      Bd", "CG Times      It", "CG Times    BdIt"}},
    {"Clarendon Condensed",    "19U",  "1", "4140",  {"-"  , "4/3", "-"  , "-"  },   629, 0,
     {"Clarendon   CdBd", "Clarendon   CdBd", "Clarendon   CdBd", "Clarendon   CdBd"}},
    {"Courier",                "19U",  "0", "4099",  {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"Courier         ", "Courier       Bd", "Courier       It", "Courier     BdIt"}},
    {"CourierPS",              "19U",  "0", "4197",  {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"CourierPS       ", "CourierPS     Bd", "CourierPS     Ob", "CourierPS   BdOb"}},
    {"Helvetica",              "19U",  "1", "24580", {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"Helvetica       ", "Helvetica     Bd", "Helvetica     Ob", "Helvetica   BdOb"}},
    {"Helvetica Narrow",       "19U",  "1", "24580", {"4/0", "4/3", "5/0", "5/3"},   629, 0,
     {"Helvetica     Nr", "Helvetica   NrBd", "Helvetica   NrOb", "Helvetica NrBdOb"}},
    {"ITC Avant Garde Gothic", "19U",  "1", "24607", {"0/0", "0/2", "1/0", "1/2"},   629, 0,
     {"ITCAvantGard  Bk", "ITCAvantGard  Db", "ITCAvantGardBkOb", "ITCAvantGardDbOb"}},
    {"ITC Bookman",            "19U",  "1", "24623", {"0/0", "0/2", "1/0", "1/2"},   629, 0,
     {"ITCBookman    Lt", "ITCBookman    Db", "ITCBookman  LtIt", "ITCBookman  DbIt"}},
    {"ITC Zapf Chancery",      "19U",  "1", "45099", {"-"  , "1/0", "-"  , "-"  },   629, 0,
     {"", "", "ZapfChanceryMdIt", ""}},
    {"ITC Zapf Dingbats",      "14L",  "1", "45101", {"0/0", "0/0", "0/0", "0/0"},   460, 2,
     {"ZapfDingbats    ", "ZapfDingbats    ", "ZapfDingbats    ", "ZapfDingbats    "}},
    {"Letter Gothic",          "19U",  "0", "4102",  {"0/0", "0/3", "1/0", "0/0"},   629, 0,
     {"LetterGothic    ", "LetterGothic  Bd", "LetterGothic  It", ""}},
    {"Marigold",               "19U",  "1", "4297",  {"0/0", "-"  , "-"  , "-"  },   629, 0,
     {"Marigold        ", "Marigold        ", "Marigold        ", "Marigold        "}},
    {"New Century Schoolbook", "19U",  "1", "24703", {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"NwCentSchlbk Rmn", "NwCentSchlbk  Bd", "NwCentSchlbk  It", "NwCentSchlbkBdIt"}},
    {"Palatino",               "19U",  "1", "24591", {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"Palatino     Rmn", "Palatino      Bd", "Palatino      It", "Palatino    BdIt"}},
    {"Symbol",                 "19M",  "1", "16686", {"0/0", "0/0", "0/0", "0/0"},   621, 2,
     {"Symbol          ", "Symbol          ", "Symbol          ", "Symbol          "}},
    {"SymbolPS",               "",     "",  "",      {"-"  , "-"  , "-"  , "-"  },   621, 2,
     {"SymbolPS        ", "SymbolPS        ", "SymbolPS        ", "SymbolPS        "}},
    {"Times",                  "19U",  "1", "25093", {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"Times        Rmn", "Times         Bd", "Times         It", "Times       BdIt"}},
    {"Times New Roman",        "19U",  "1", "16901", {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"TimesNewRmn     ", "TimesNewRmn   Bd", "TimesNewRmn   It", "TimesNewRmn BdIt"}},
    {"Univers",                "19U",  "1", "4148",  {"0/0", "0/3", "1/0", "1/3"},   629, 0,
     {"Univers       Md", "Univers       Bd", "Univers     MdIt", "Univers     BdIt"}},
    {"Univers Condensed",      "19U",  "1", "4148",  {"4/0", "4/3", "5/0", "5/3"},   629, 0,
     {"Univers     CdMd", "Univers     CdBd", "Univers   CdMdIt", "Univers   CdBdIt"}},
    {"Wingdings",              "579L", "1", "31402", {"0/0", "0/0", "0/0", "0/0"}, 18540, 2,
     {"Wingdings       ", "Wingdings       ", "Wingdings       ", "Wingdings       "}},
});
// clang-format on
static_assert(kPrinterFonts.size() == 26);

}  // namespace heron
