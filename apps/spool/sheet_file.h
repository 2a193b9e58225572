// The pages.pdf of a job: one page for each side of a sheet, composed of pages of the document and drawings under and
// over them.
//
// A page of a PDF is placed as a form XObject: text stays text, lines stay lines, and fonts and pictures that pages
// share lie in the file once. What is drawn with a QPainter becomes a page of a scratch PDF and is placed in the same
// way. Only the plan of the sheets is kept until Finish, which writes the file in one go.
#pragma once

#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <qpdf/QPDF.hh>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "document.h"

namespace heron::spool {

/// A page of a document drawn into a rectangle of the sheet.
struct PlacedPage {
  DocumentPage page;
  QRectF box;      ///< in dots of the sheet; the page fills it, so its proportion is the caller's care
  int rotate = 0;  ///< 0, 90, 180 or 270 degrees clockwise, within `box`
};

class SheetFile {
 public:
  /// The file goes to `path`; beside it a nameless scratch file is used.
  SheetFile(std::string path, const PageSpace& space);
  ~SheetFile();
  SheetFile(const SheetFile&) = delete;
  SheetFile& operator=(const SheetFile&) = delete;

  /// Adds a sheet: `under`, then `pages`, then `over`, each in its order. The documents of the pages must live until
  /// Finish. `size`, in dots, is that of a sheet unlike the others. False if the scratch file couldn't be written;
  /// throws a QPDFExc if a page's PDF is damaged.
  bool AddSheet(std::span<const PlacedPage> pages, std::span<const Drawing> under, std::span<const Drawing> over,
                const std::optional<QSizeF>& size = std::nullopt);

  /// Writes the file; `progress` is called with the share that is done, in percent, and may throw to end it. False if
  /// the file couldn't be written; throws a QPDFExc if a document is damaged.
  bool Finish(const std::function<void(int)>& progress);

 private:
  /// Something on a sheet: a form of the file, or page `drawn` of the scratch file, which becomes a form at Finish.
  struct Placement {
    QPDFObjectHandle form;
    std::optional<size_t> drawn;
    QSizeF size;
    QRectF box;
    int rotate = 0;
  };
  struct Sheet {
    QSizeF size;
    std::vector<Placement> placements;
  };

  void AddLayer(Sheet& sheet, std::span<const Drawing> drawings);
  size_t Draw(const QSizeF& size, std::span<const Drawing> drawings);
  QPDFObjectHandle FormOf(QPDFObjectHandle page);
  void KeepLayers(QPDF& document);
  void LoadDrawn(QPDF& drawn);
  void AddPage(const Sheet& sheet);
  bool Write(const std::function<void(int)>& progress);

  std::string path_;
  PageSpace space_;
  QFile scratch_;
  std::unique_ptr<QPdfWriter> writer_;
  QPainter painter_;
  bool written_ = true;
  std::vector<QSizeF> drawn_sizes_;
  std::vector<QPDFObjectHandle> drawn_forms_;
  std::vector<Sheet> sheets_;
  std::set<QPDF*> documents_;
  std::map<std::pair<QPDF*, QPDFObjGen>, QPDFObjectHandle> placed_;  ///< pages that were placed before
  std::string version_ = "1.5";  ///< of the PDF's format; the newest of the documents'
  QPDF pdf_;
};

}  // namespace heron::spool
