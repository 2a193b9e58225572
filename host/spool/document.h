// A document that can be printed: UTF-8 text, a PNG or JPEG picture, a PDF. What a file is, its contents tell.
#pragma once

#include <QByteArray>
#include <QPainter>
#include <QRectF>
#include <memory>
#include <string>

namespace heron::spool {

/// The sheet of every page, in dots.
struct PageSpace {
  double dpi;
  QRectF sheet;      ///< from (0, 0)
  QRectF printable;  ///< the sheet less its margins
};

class Document {
 public:
  virtual ~Document() = default;
  virtual int PageCount() const = 0;
  /// Paints page `page`, from 0. Throws a Failure if it turns out that it can't be read.
  virtual void PaintPage(int page, QPainter& painter) const = 0;
};

/// The document in file `path` ("-": standard input), laid out for `space`. Throws a Failure if it can't be read.
std::unique_ptr<Document> LoadDocument(const std::string& path, const PageSpace& space);

/// Each reads one kind; `bytes` is the whole file, `name` is for the Failure's sentence.
std::unique_ptr<Document> LoadText(const QByteArray& bytes, const std::string& name, const PageSpace& space);
std::unique_ptr<Document> LoadPicture(const QByteArray& bytes, const char* format, const std::string& name,
                                      const PageSpace& space);
std::unique_ptr<Document> LoadPdf(const QByteArray& bytes, const std::string& name, const PageSpace& space);

/// Throws the Failure of a document that can't be read.
[[noreturn]] void FailDocument(const std::string& name, const std::string& why);

}  // namespace heron::spool
