#include "form_page.h"

#include <cerrno>
#include <cstring>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include "common/command.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "platform/sqlite/store.h"
#include "renderdriver/form_file.h"

namespace heron::spool {
namespace {

namespace overlay = value::lpOverlay;
using cli::Failure;
using Bytes = std::vector<uint8_t>;

[[noreturn]] void Fail(const std::string& doing, const std::string& path, int error) {
  const int code = error == ENOENT                                       ? cli::kNotFound
                   : error == EACCES || error == EPERM || error == EROFS ? cli::kNotPermitted
                                                                         : cli::kFailed;
  throw Failure(code, "can't " + doing + " the form \"" + cli::Printable(path) + "\": " + std::strerror(error));
}

/// A PDF of the first page alone, with what that page needs.
Bytes FirstPageOf(const std::string& pages) {
  QPDF whole;
  whole.processFile(pages.c_str());
  QPDF single;
  single.emptyPDF();
  QPDFPageDocumentHelper(single).addPage(QPDFPageDocumentHelper(whole).getAllPages().at(0), false);
  QPDFWriter writer(single);
  writer.setOutputMemory();
  writer.write();
  const std::shared_ptr<Buffer> bytes = writer.getBufferSharedPointer();
  return {bytes->getBuffer(), bytes->getBuffer() + bytes->getSize()};
}

}  // namespace

void WriteForm(const renderdriver::Job& job, const std::string& pages) {
  const std::string path = platform::ToUtf8(job.form.path);
  // The path comes with the record, which may be a stranger's: nothing but a form's file is replaced.
  if (!path.starts_with('/') || !path.ends_with(".vxf"))
    throw Failure(cli::kFailed, "a form is made in a file with a full path that ends in .vxf, not in \"" +
                                    cli::Printable(path) + '"');
  const Bytes form = renderdriver::MakeForm(job.setup.record, FirstPageOf(pages));
  if (form.size() > renderdriver::kLargestForm)
    throw Failure(cli::kFailed, "the first page is too large for a form: it takes more than 64 MiB");
  if (const int failed = store::ReplaceFileBytes(path, form); failed != 0) Fail("write", path, failed);
}

void FormPage::Load(const renderdriver::Job& job, const PageSpace& space) {
  const bool uses = job.form.mode != overlay::kNoOverlay && job.form.mode != overlay::kCreateForm;
  if (loaded_ || !uses) return;
  loaded_ = true;
  const std::string path = platform::ToUtf8(job.form.path);
  Bytes form;
  if (const int failed = store::ReadFileBytes(path, renderdriver::kLargestForm, &form); failed != 0)
    Fail("read", path, failed);
  if (!renderdriver::FormSuits(form, job.setup.record))
    throw Failure(cli::kRefused, "the form \"" + cli::Printable(path) +
                                     "\" doesn't suit the job: it is for another model or page language, or made in "
                                     "color for a monochrome job; nothing was printed");
  const auto page = renderdriver::PageOfForm(form);
  if (!page) return;
  const QByteArray pdf(reinterpret_cast<const char*>(page->data()), static_cast<qsizetype>(page->size()));
  document_ = LoadPdf(pdf, DocumentName(path), space);
}

bool FormPage::IsUnder(const renderdriver::Job& job, int number) const {
  const bool first_only = Get<"OverlayOrder_Check">(job.setup.record) == value::OverlayOrder_Check::kOn;
  return isMerged() && (number == 1 || !first_only);
}

}  // namespace heron::spool
