// The fax.tif of a job: what a fax server sends, TIFF Class F with one page after another.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace heron::spool {

/// Pixels of a line, and their number in an inch across.
inline constexpr int kFaxLine = 1728, kFaxAcross = 200;

/// The pages of a fax in the job's PDF: the cover sheets of all transmissions, then the pages of the document.
struct FaxPages {
  std::string pdf;          ///< path
  std::vector<int> covers;  ///< cover sheets of each transmission
  int pages;                ///< of the document, which every transmission has behind its cover sheets
  int resolution;           ///< lines in an inch, 200 to 600
};

/// Writes the file at `path`: for each transmission its cover sheets, then the document, in black and white with Group
/// 4 compression. A page keeps its size; one that is too wide is turned if it fits then, otherwise made smaller.
/// `progress` is called before each page with its number and their count, and may throw to end it. False if the PDF
/// can't be read or the file can't be written.
bool WriteFaxFile(const FaxPages& pages, const std::string& path, const std::function<void(int, int)>& progress);

}  // namespace heron::spool
