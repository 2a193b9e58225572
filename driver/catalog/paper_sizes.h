// The sizes of papers, as the catalogue's geometry knows them.
//
// Reader: paper_geometry.cc, at compile time. A row is: paper code, width and height in hundredths of a millimetre, and
//   twin      the rotated code (bit 0x800) has the same size
//   families  the code is in the families 0x1000, 0x2000 and 0x3000 too
//   edge      printable to its edges; other codes outside the families keep a margin
// Code 14 appears twice, as the device lists it; a search finds the first.
#pragma once

#include <string_view>

namespace heron::catalog {

// clang-format off
inline constexpr std::u16string_view kPaperSizeText = uR"(
  513  21000  21000
  514  21000  21000
  515  21000  21000
  516  21000  21000
  517  21000  21000
  518  21000  21000
  519  21000  21000
  520  21000  21000
  521  21000  21000
  256  21000  21000
    8  29700  42000  families
    9  21000  29700  twin families
   11  14800  21000  twin families
   70  10500  14800  families
   12  25700  36400  families
   13  18200  25700  twin families
   88  12800  18200  families
    1  21590  27940  twin families
    3  27940  43180  families
    5  21590  35560  families
    6  13970  21590  twin families
    7  18415  26670  twin families
   14  21590  33020  families
   14  21590  33020
  330  30480  45720  families
  340  20320  33020  families
  341  20955  33020  families
  342  20637  33655  families
  343  20320  33020  families
  320  22000  33000  families
  360  27000  39000  families
  361  19500  27000  twin families
   34  17600  25000  twin families
   28  16200  22900  twin families
   27  11000  22000  families
   37   9842  19050  families
   20  10477  24130  families
   43  10000  14800  families
  390  10160  15240  families
 1033  22250  29700  edge
 1025  22840  27940  edge
  370  12000  17600
   91  10500  23500
  372   9800  19000
   31  11400  16200
   19   9842  22542
   38   9207  16510
  333  17780  21590  twin
  334  10795  13970  twin
)";
// clang-format on

}  // namespace heron::catalog
