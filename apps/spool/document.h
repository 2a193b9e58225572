// A document that can be printed: UTF-8 text, a PNG or JPEG picture, a PDF. The type is detected from the contents.
#pragma once

#include <QByteArray>
#include <QPainter>
#include <QRectF>
#include <functional>
#include <memory>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>

#include "progress.h"

namespace heron::spool {

/// The sheet of every page, in dots.
struct PageSpace {
  double dpi;
  QRectF sheet;      ///< from (0, 0)
  QRectF printable;  ///< the sheet less its margins
};

/// Draws in dots, from the upper left corner.
using Drawing = std::function<void(QPainter&)>;

/// A page of a document by itself. Either `draw` is set, or `pdf` is a page of a PDF, whose text and lines are kept.
struct DocumentPage {
  QSizeF size;  ///< in dots, as one reads it
  Drawing draw;
  QPDFObjectHandle pdf;
};

class Document {
 public:
  virtual ~Document() = default;
  virtual int PageCount() const = 0;
  /// Page `number`, from 0; it refers to the document. Throws a Failure if it turns out that it can't be read.
  virtual DocumentPage Page(int number) const = 0;
};

/// The size of a PDF's page in dots, as one reads it: its crop box, turned. Not valid if the page is damaged.
QSizeF PageSizeOf(const QPDFObjectHandle& page, double dpi);

/// The document in file `path` ("-": standard input), laid out for `space`. Throws a Failure if it can't be read or the
/// job was interrupted.
std::unique_ptr<Document> LoadDocument(const std::string& path, const PageSpace& space, Progress& progress);

/// How a document is named in a Failure's sentence.
std::string DocumentName(const std::string& path);

/// Each reads one kind; `bytes` is the whole file, `name` is for the Failure's sentence.
std::unique_ptr<Document> LoadText(const QByteArray& bytes, const std::string& name, const PageSpace& space);
std::unique_ptr<Document> LoadPicture(const QByteArray& bytes, const char* format, const std::string& name,
                                      const PageSpace& space);
std::unique_ptr<Document> LoadPdf(const QByteArray& bytes, const std::string& name, const PageSpace& space);

/// Throws the Failure of a document that can't be read.
[[noreturn]] void FailDocument(const std::string& name, const std::string& why);

}  // namespace heron::spool
