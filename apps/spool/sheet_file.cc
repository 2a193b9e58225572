// Writes pages.pdf: sheets, placed pages, drawings (sheet_file.h).

#include "sheet_file.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QPageLayout>
#include <QPageSize>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFSystemError.hh>
#include <qpdf/QPDFWriter.hh>
#include <qpdf/QUtil.hh>

namespace heron::spool {
namespace {

constexpr double kPointsPerInch = 72;
constexpr int kMatrixDigits = 6;

QRectF RectOf(QPDFObjectHandle box) {
  const QPDFObjectHandle::Rectangle r = box.getArrayAsRectangle();
  return QRectF(QPointF(std::min(r.llx, r.urx), std::min(r.lly, r.ury)),
                QPointF(std::max(r.llx, r.urx), std::max(r.lly, r.ury)));
}

/// What of a page is printed: its crop box, and nothing beyond its sheet.
QRectF PrintedBox(QPDFPageObjectHelper page) {
  const QRectF media = RectOf(page.getMediaBox());
  const QRectF crop = RectOf(page.getCropBox()) & media;  // a damaged crop box may lie beside the sheet
  return crop.isEmpty() ? media : crop;
}

QPDFObjectHandle BoxArray(const QRectF& box) {
  return QPDFObjectHandle::newFromRectangle({box.left(), box.top(), box.right(), box.bottom()});
}

/// The form's box as its own matrix turns it.
QRectF ReadBox(QPDFObjectHandle form) {
  const QRectF box = RectOf(form.getDict().getKey("/BBox"));
  if (!form.getDict().getKey("/Matrix").isMatrix()) return box;
  const QPDFObjectHandle::Matrix m = form.getDict().getKey("/Matrix").getArrayAsMatrix();
  return QTransform(m.a, m.b, m.c, m.d, m.e, m.f).mapRect(box);
}

/// Takes `from` to `to`, turned clockwise; both are rectangles in points whose y grows upwards.
QTransform Placing(const QRectF& from, const QRectF& to, int rotate) {
  const bool lies = rotate % 180 != 0;
  QTransform placing;
  placing.translate(to.center().x(), to.center().y());
  placing.rotate(-rotate);
  placing.scale((lies ? to.height() : to.width()) / from.width(), (lies ? to.width() : to.height()) / from.height());
  placing.translate(-from.center().x(), -from.center().y());
  return placing;
}

std::string Number(double value) {
  return QUtil::double_to_string(value, kMatrixDigits);
}

/// The drawing operators that place form `name`.
std::string DrawForm(const std::string& name, const QTransform& placing) {
  std::string text = "q ";
  for (const double number : {placing.m11(), placing.m12(), placing.m21(), placing.m22(), placing.dx(), placing.dy()}) {
    text += Number(number) + ' ';
  }
  return text + "cm " + name + " Do Q\n";
}

/// The same for pages of one scratch file that look the same: size, resources and drawing are equal.
QByteArray Fingerprint(QPDFPageObjectHelper page) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  QPDFObjectHandle object = page.getObjectHandle();
  const auto add = [&hash](const std::string& text) {
    hash.addData(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
  };
  add(page.getMediaBox().unparseResolved());
  add(page.getAttribute("/Resources", false).unparseResolved());
  const std::shared_ptr<Buffer> drawing = object.getKey("/Contents").getRawStreamData();
  hash.addData(QByteArrayView(drawing->getBuffer(), static_cast<qsizetype>(drawing->getSize())));
  return hash.result();
}

/// A file without a name in the folder of `path`; -1 if it can't be made.
int OpenScratch(const std::string& path) {
  std::string name = path + ".XXXXXX";
  const int file = mkostemp(name.data(), O_CLOEXEC);
  if (file >= 0) unlink(name.c_str());  // gone with the program, however that ends
  return file;
}

}  // namespace

QSizeF PageSizeOf(const QPDFObjectHandle& page, double dpi) {
  QPDFPageObjectHelper helper(page);
  QPDFObjectHandle turn = helper.getAttribute("/Rotate", false);
  QPDFObjectHandle unit = helper.getAttribute("/UserUnit", false);
  const double scale = (unit.isNumber() ? unit.getNumericValue() : 1) * dpi / kPointsPerInch;
  const QSizeF size = PrintedBox(helper).size() * scale;
  return turn.isInteger() && turn.getIntValue() % 180 != 0 ? size.transposed() : size;
}

SheetFile::SheetFile(std::string path, const PageSpace& space) : path_(std::move(path)), space_(space) {
  pdf_.emptyPDF();
}

SheetFile::~SheetFile() {
  // Before the writer that it draws on.
  if (painter_.isActive()) painter_.end();
}

bool SheetFile::AddSheet(std::span<const PlacedPage> pages, std::span<const Drawing> under,
                         std::span<const Drawing> over, const std::optional<QSizeF>& size) {
  Sheet sheet{size.value_or(space_.sheet.size()), {}};
  AddLayer(sheet, under);
  for (const PlacedPage& placed : pages) {
    Placement placement{{}, std::nullopt, placed.page.size, placed.box, placed.rotate};
    if (placed.page.draw) {
      placement.drawn = Draw(placed.page.size, {&placed.page.draw, 1});
    } else {
      placement.form = FormOf(placed.page.pdf);
    }
    sheet.placements.push_back(std::move(placement));
  }
  AddLayer(sheet, over);
  sheets_.push_back(std::move(sheet));
  return written_;
}

void SheetFile::AddLayer(Sheet& sheet, std::span<const Drawing> drawings) {
  if (drawings.empty()) return;
  Placement& layer = sheet.placements.emplace_back();
  layer.drawn = Draw(sheet.size, drawings);
  layer.size = sheet.size;
  layer.box = QRectF(QPointF(), sheet.size);
}

/// The number of the scratch file's page that holds the drawings.
size_t SheetFile::Draw(const QSizeF& size, std::span<const Drawing> drawings) {
  const QPageSize page(size / space_.dpi, QPageSize::Inch, QString(), QPageSize::ExactMatch);
  const QPageLayout layout(page, QPageLayout::Portrait, QMarginsF());
  if (writer_ == nullptr) {
    const int file = OpenScratch(path_);
    written_ = file >= 0 && scratch_.open(file, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle);
    writer_ = std::make_unique<QPdfWriter>(&scratch_);
    writer_->setResolution(static_cast<int>(space_.dpi));
    writer_->setPageLayout(layout);
    written_ = written_ && painter_.begin(writer_.get());
  } else {
    writer_->setPageLayout(layout);
    written_ = writer_->newPage() && written_;
  }
  for (const Drawing& drawing : drawings) {
    painter_.save();
    drawing(painter_);
    painter_.restore();
  }
  drawn_sizes_.push_back(size);
  return drawn_sizes_.size() - 1;
}

/// The page as a form of the file. Its data are read when the file is written.
QPDFObjectHandle SheetFile::FormOf(QPDFObjectHandle page) {
  QPDF& document = page.getQPDF();
  if (documents_.insert(&document).second) KeepLayers(document);
  // An overlay form lies under every page and is in the file once.
  QPDFObjectHandle& known = placed_[{&document, page.getObjGen()}];
  if (known.isInitialized() && page.isIndirect()) return known;
  QPDFPageObjectHelper helper(page);
  QPDFObjectHandle form = helper.getFormXObjectForPage();
  // Without it the form would be cut to the trim box.
  form.getDict().replaceKey("/BBox", BoxArray(PrintedBox(helper)));
  return known = pdf_.copyForeignObject(form);
}

/// The document's catalogue says which layers are visible: without it, hidden ones would print.
void SheetFile::KeepLayers(QPDF& document) {
  const std::string version = document.getPDFVersion();
  // A text comparison, valid for versions of equal length such as 1.4 and 1.7.
  if (version.size() == version_.size()) version_ = std::max(version_, version);
  QPDFObjectHandle layers = document.getRoot().getKey("/OCProperties");
  if (!layers.isDictionary()) return;
  if (!layers.isIndirect()) layers = document.makeIndirectObject(layers);
  pdf_.getRoot().replaceKey("/OCProperties", pdf_.copyForeignObject(layers));
}

/// Makes forms of what was drawn. Stamps are alike on most pages: such pages share their form.
void SheetFile::LoadDrawn(QPDF& drawn) {
  FILE* const file = fdopen(dup(scratch_.handle()), "rb");
  drawn.processFile("drawings", file, true);
  std::map<QByteArray, QPDFObjectHandle> known;
  size_t number = 0;
  for (QPDFPageObjectHelper& page : QPDFPageDocumentHelper(drawn).getAllPages()) {
    QPDFObjectHandle& shared = known[Fingerprint(page)];
    if (shared.isInitialized()) {
      drawn_forms_.push_back(shared);
      ++number;
      continue;
    }
    QPDFObjectHandle form = page.getFormXObjectForPage();
    // Qt rounds a sheet to whole points; what was drawn hangs from the upper edge.
    const QRectF media = RectOf(page.getMediaBox());
    const QSizeF size = drawn_sizes_[number++] * (kPointsPerInch / space_.dpi);
    form.getDict().replaceKey("/BBox", BoxArray({QPointF(0, media.bottom() - size.height()), size}));
    shared = pdf_.copyForeignObject(form);
    drawn_forms_.push_back(shared);
  }
}

void SheetFile::AddPage(const Sheet& sheet) {
  const double points = kPointsPerInch / space_.dpi;
  const QRectF media(QPointF(), sheet.size * points);
  QPDFObjectHandle forms = QPDFObjectHandle::newDictionary();
  std::string drawing;
  for (const Placement& placement : sheet.placements) {
    QPDFObjectHandle form = placement.drawn ? drawn_forms_[*placement.drawn] : placement.form;
    const std::string name = "/F" + std::to_string(forms.getKeys().size());
    forms.replaceKey(name, form);
    const QRectF& box = placement.box;
    const QRectF place(QPointF(box.left() * points, media.height() - box.bottom() * points), box.size() * points);
    drawing += DrawForm(name, Placing(ReadBox(form), place, placement.rotate));
  }
  QPDFObjectHandle page = QPDFObjectHandle::newDictionary();
  page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
  page.replaceKey("/MediaBox", BoxArray(media));
  page.replaceKey("/Resources", QPDFObjectHandle::newDictionary({{"/XObject", forms}}));
  page.replaceKey("/Contents", QPDFObjectHandle::newStream(&pdf_, drawing));
  QPDFPageDocumentHelper(pdf_).addPage(QPDFPageObjectHelper(pdf_.makeIndirectObject(page)), false);
}

bool SheetFile::Write(const std::function<void(int)>& progress) {
  const std::unique_ptr<FILE, int (*)(FILE*)> file(fopen(path_.c_str(), "wbe"), fclose);
  if (file == nullptr) return false;
  pdf_.getTrailer().replaceKey("/Info", QPDFObjectHandle::parse("<< /Creator (Heron) >>"));
  QPDFWriter writer(pdf_);
  writer.setOutputFile("pages.pdf", file.get(), false);
  writer.setObjectStreamMode(qpdf_o_generate);
  writer.setMinimumPDFVersion(version_);
  writer.registerProgressReporter(std::make_shared<QPDFWriter::FunctionProgressReporter>(progress));
  writer.write();
  // The library doesn't notice that the last bytes found no room.
  return fflush(file.get()) == 0 && ferror(file.get()) == 0;
}

bool SheetFile::Finish(const std::function<void(int)>& progress) {
  QPDF drawn;
  if (writer_ != nullptr) {
    written_ = painter_.end() && scratch_.flush() && scratch_.error() == QFileDevice::NoError && written_;
    if (!written_) return false;
    LoadDrawn(drawn);
  }
  for (const Sheet& sheet : sheets_) AddPage(sheet);
  try {
    return Write(progress);
  } catch (const QPDFSystemError&) {
    return false;
  }
}

}  // namespace heron::spool
