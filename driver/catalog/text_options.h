// Default texts of the list stores and of the settings library, which a text or a number is made from.
//
// Reader: tables.cc, at compile time. A row of the first table is: feature, mark | text. Without a mark the text is the
// default for every destination, with *U for destination 0xFF, with *W for 0xFF00 and 0x10000. A row of the second
// table is: feature | text | smallest and largest value, nothing for an unbounded one. Features ascend.
#pragma once

#include <string_view>

namespace heron::catalog {

// clang-format off
inline constexpr std::u16string_view kTextOptionText = uR"(
 500   |
 501   | 0
 502   | 1
 503   |
 504   | 4096
 505   | 6
 506   | 1
 507   | 1
 508   | 100
 509   | 100
 510   | 0
 511   | 100
 512   | 100
 513   | 100
 514   | 100
 515   | 100
 516   | 0
 517   |
 518   | 0
 519   | 1
 520   | 2
 521   | 2
 522   | 宋体
 523   | 1
 524   | 12
 525   | 2
 526   | 2
 527   | 宋体
 528   | 1
 529   | 12
 530*W | 1033
 530*U | 1025
 531   | 5
 532*W | 34
 532*U | 15
 533*W | 34
 533*U | 15
 534*W | 10
 534*U | 5
 535   | 0
 560   |
 561   |
 562   |
 563   |
 564   | 4132
 565   | 0
 566   |
 580   | 1
 581   |
 582   | 宋体
 583   | 1
 584   | 72
 585   | 0
 586   | 0
 587   | 126
 588   | 0
 589   | 0
 600   | 0
 601   | 0
 602   |
 603   |
 620   |
 621   |
 622   |
 623   |
 624   |
 625   |
 626   |
 627   |
 628   |
 629   |
 630   |
 631   |
 632   | 1
 633   | 1
 634   | 5
 635   |
 636   | 100
 637   | 0
 638   | 0
 639   |
 640   | 0
 641   |
 650   | 8267
 651   | 8267
 652   | 1
 653   |
 654   | 0
)";

inline constexpr std::u16string_view kBoundedTextOptionText = uR"(
 670 |      |
 671 | 0    | 0 12
 672 |      |
 673 |      |
 674 | 0    | 0 99
 675 |      |
 676 | 0    | 0 50
 677 | 0    | 0 50
 678 | 0    | 0 50
 679 | 0    |
 680 | 0    |
 681 |      |
 682 |      |
 683 |      |
 684 |      |
 685 | 0    |
 686 | 0    |
 687 | 0    |
 688 | 0    |
 689 |      |
 690 | 257  |
 691 | 0    |
 692 | 0    |
 693 | 1    | 1 10
 694 | 0    | 0 29
 695 | 1    | 0 1
 696 | 宋体   |
 697 |      |
 697 |      |
 697 |      |
 700 |      |
 701 |      |
 702 |      |
 703 |      |
)";
// clang-format on

}  // namespace heron::catalog
