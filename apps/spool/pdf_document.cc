// A PDF, page by page, as it is: a page is handed on as an object of the file and its data are copied when the job is
// written. What a viewer draws over the pages (filled forms, notes that are printed) becomes part of them.

#include <algorithm>
#include <cmath>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFAcroFormDocumentHelper.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include "common/command.h"
#include "document.h"
#include "interrupt.h"

namespace heron::spool {
namespace {

constexpr size_t kLargestContent = size_t{256} * 1024 * 1024;

/// Takes a page's content for nothing but the errors on the way. A small file may hold a page of gigabytes, which would
/// be read into memory when it is placed.
class Check : public Pipeline {
 public:
  Check() : Pipeline("check", nullptr) {}
  void write(const unsigned char*, size_t size) override {
    EndIfInterrupted();
    room_ -= std::min(room_, size);
    if (room_ == 0) throw std::length_error("the content is too large");
  }
  void finish() override {}
  bool isTooLarge() const { return room_ == 0; }

 private:
  size_t room_ = kLargestContent;
};

class PdfDocument : public Document {
 public:
  PdfDocument(const QByteArray& bytes, std::string name, const PageSpace& space)
      : bytes_(bytes), name_(std::move(name)), space_(space) {
    // What the library would write to stderr says less than our own sentence.
    pdf_.setSuppressWarnings(true);
    pdf_.processMemoryFile("document", bytes_.constData(), static_cast<size_t>(bytes_.size()));
    // Form fields are annotations, too: first they get their looks, then all that is marked for print joins its page.
    QPDFAcroFormDocumentHelper(pdf_).generateAppearancesIfNeeded();
    QPDFPageDocumentHelper pages(pdf_);
    pages.flattenAnnotations(an_print, an_hidden);
    for (QPDFPageObjectHelper& page : pages.getAllPages()) pages_.push_back(page.getObjectHandle());
  }
  int PageCount() const override { return static_cast<int>(pages_.size()); }
  DocumentPage Page(int number) const override {
    try {
      const QPDFObjectHandle& page = pages_[static_cast<size_t>(number)];
      const QSizeF size = PageSizeOf(page, space_.dpi);
      if (size.isEmpty() || !std::isfinite(size.width()) || !std::isfinite(size.height())) Fail(number);
      CheckContent(number);
      return {size, nullptr, page};
    } catch (const QPDFExc&) {
      Fail(number);
    } catch (const std::logic_error&) {  // a box that isn't one
      Fail(number);
    }
  }

 private:
  /// Reports damage now and with the page's number, not when the file is written.
  void CheckContent(int number) const {
    Check check;
    for (QPDFObjectHandle& part : QPDFPageObjectHelper(pages_[static_cast<size_t>(number)]).getPageContents()) {
      bool decoded = false;
      if (part.pipeStreamData(&check, &decoded, 0, qpdf_dl_specialized, true)) continue;
      EndIfInterrupted();  // the library takes whatever the check throws for damage
      Fail(number, check.isTooLarge() ? "is too large: its drawing takes more than 256 MiB" : "is damaged");
    }
  }
  [[noreturn]] void Fail(int number, const std::string& why = "is damaged") const {
    FailDocument(name_, "its page " + std::to_string(number + 1) + ' ' + why);
  }

  QByteArray bytes_;  ///< pdf_ reads from them as long as it lives
  std::string name_;
  PageSpace space_;
  QPDF pdf_;
  std::vector<QPDFObjectHandle> pages_;
};

std::unique_ptr<Document> Load(const QByteArray& bytes, const std::string& name, const PageSpace& space) {
  try {
    return std::make_unique<PdfDocument>(bytes, name, space);
  } catch (const QPDFExc& error) {
    FailDocument(name, error.getErrorCode() == qpdf_e_password ? "the PDF wants a password" : "the PDF is damaged");
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    FailDocument(name, "the PDF is damaged");
  }
}

}  // namespace

std::unique_ptr<Document> LoadPdf(const QByteArray& bytes, const std::string& name, const PageSpace& space) {
  std::unique_ptr<Document> pdf = Load(bytes, name, space);
  if (pdf->PageCount() < 1) FailDocument(name, "the PDF has no pages");
  return pdf;
}

}  // namespace heron::spool
