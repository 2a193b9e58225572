// Runs one job through its document events (print_job.h).

#include "print_job.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <qpdf/QPDFExc.hh>

#include "common/address_file.h"
#include "document.h"
#include "entry/exports.h"
#include "fax_file.h"
#include "form_page.h"
#include "generated/values.h"
#include "interrupt.h"
#include "job_canvas.h"
#include "job_folder.h"
#include "platform/api/canvas.h"
#include "platform/api/document_events.h"
#include "platform/api/text.h"
#include "platform/sqlite/store.h"
#include "renderdriver/form_file.h"
#include "renderdriver/ticket.h"
#include "settings/driver_env.h"

namespace heron::spool {
namespace {

namespace overlay = value::lpOverlay;  // of the modes of a form too

using cli::Bytes;
using cli::Failure;
using platform::DWORD;
using platform::LONG;
using renderdriver::Job;

constexpr char kPagesFile[] = "pages.pdf";
constexpr char kTicketFile[] = "job.json";
constexpr char kOverlayFile[] = "overlay.vxf";
constexpr char kFaxFile[] = "fax.tif";
constexpr LONG kJobNumber = 1;  ///< the spooler's own; the driver only hands it on

platform::DEVMODEW* AsDevMode(Bytes& bytes) {
  return reinterpret_cast<platform::DEVMODEW*>(bytes.data());
}

/// The record as the driver makes it of what the application hands in.
Bytes Resolved(cli::Printer& printer, Bytes record) {
  Bytes resolved(kEnvSize);
  if (DrvDocumentProperties(nullptr, printer.handle(), printer.name(), AsDevMode(resolved), AsDevMode(record),
                            platform::DM_COPY | platform::DM_MODIFY) != 1) {
    throw Failure(cli::kFailed, "the driver couldn't build a record for this printer");
  }
  return resolved;
}

/// The driver may put a record of its own in place of the application's when the device context is made.
void AnnounceContext(cli::Printer& printer, Bytes& record) {
  char16_t driver[] = u"heron";
  platform::DOCEVENT_CREATEDCPRE context{driver, printer.name(), AsDevMode(record), 0};
  platform::DEVMODEW* replaced = nullptr;
  if (DrvDocumentEvent(printer.handle(), nullptr, platform::DOCUMENTEVENT_CREATEDCPRE, sizeof context, &context,
                       sizeof replaced, &replaced) != 1) {
    throw Failure(cli::kFailed, "the driver failed at CREATEDCPRE");
  }
  if (replaced == nullptr) return;
  const auto* const bytes = reinterpret_cast<const uint8_t*>(replaced);
  if (ForeignEnv(bytes).Size() == kEnvSize) record.assign(bytes, bytes + kEnvSize);
}

Job OpenRenderJob(const PrintRequest& request, const Bytes& record) {
  renderdriver::JobSetup setup;
  std::copy_n(record.begin(), kEnvSize, setup.record.bytes.begin());
  setup.printer = platform::FromUtf8(request.printer);
  setup.path = request.path;
  std::optional<Job> job = renderdriver::OpenJob(std::move(setup));
  if (!job) throw Failure(cli::kFailed, "the record has no sheet to print on: its paper size can't be used");
  return std::move(*job);
}

/// The document events of one device context.
class Events {
 public:
  Events(cli::Printer& printer, JobCanvas& canvas, Job& job, const TerminalDesk& desk)
      : printer_(printer), job_(job), desk_(desk), hdc_(platform::OpenCanvas(&canvas)) {}
  ~Events() { platform::CloseCanvas(hdc_); }
  Events(const Events&) = delete;
  Events& operator=(const Events&) = delete;

  /// Throws what ends the job: a driver that gives up, a cancel, an interrupt.
  void Send(int event, const char* name, void* in = nullptr, DWORD in_size = 0) {
    job_.event = name;
    const int result = DrvDocumentEvent(printer_.handle(), hdc_, event, in_size, in, 0, nullptr);
    job_.event.clear();
    EndIfInterrupted();
    if (desk_.wantedConsent())
      throw Failure(cli::kConsent,
                    "a question couldn't be asked without a terminal; agree with --yes, or run on a terminal; nothing "
                    "was printed");
    if (renderdriver::IsCancelled(job_)) throw Failure(cli::kConsent, "the job was cancelled; nothing was printed");
    if (result != 1) throw Failure(cli::kFailed, "the driver failed at " + std::string(name));
  }
  void Abort() { DrvDocumentEvent(printer_.handle(), hdc_, platform::DOCUMENTEVENT_ABORTDOC, 0, nullptr, 0, nullptr); }

 private:
  cli::Printer& printer_;
  Job& job_;
  const TerminalDesk& desk_;
  platform::HDC hdc_;
};

/// The page at its own size in the middle of the sheet, made smaller only if it doesn't fit.
PlacedPage InTheMiddle(DocumentPage page, const PageSpace& space) {
  const QSizeF sheet = space.sheet.size();
  const double shrink = std::min({1.0, sheet.width() / page.size.width(), sheet.height() / page.size.height()});
  QRectF box(QPointF(), page.size * shrink);
  box.moveCenter(space.sheet.center());
  return {std::move(page), box};
}

/// What prints a document and shows how far it is.
struct Run {
  Events& events;
  Job& job;
  JobCanvas& canvas;
  const Document& document;
  FormPage& form;
  const JobFolder& folder;
  Progress& progress;
  std::function<void()> written;  ///< once the pages are there
};

/// What lies on a page of the job, the lowest first. The form comes first: what is printed on it must stay readable.
std::vector<PlacedPage> ContentOf(const Run& run, int page) {
  std::vector<PlacedPage> content;
  run.form.Load(run.job, run.canvas.space());
  if (run.form.IsUnder(run.job, page + 1)) content.push_back(InTheMiddle(run.form.Page(), run.canvas.space()));
  content.push_back(InTheMiddle(run.document.Page(page), run.canvas.space()));
  return content;
}

void PrintPages(const Run& run) {
  const int count = run.document.PageCount();
  for (int page = 0; page < count; ++page) {
    run.progress.Show("Printing page " + std::to_string(page + 1) + " of " + std::to_string(count));
    run.events.Send(platform::DOCUMENTEVENT_STARTPAGE, "STARTPAGE");
    const bool started = run.canvas.StartPage();
    // Between the page's events, where an application draws: the driver may already have drawn under the content.
    run.canvas.SetContent(ContentOf(run, page));
    run.events.Send(platform::DOCUMENTEVENT_ENDPAGE, "ENDPAGE");
    if (!started || !run.canvas.EndPage()) throw Failure(cli::kFailed, "a page couldn't be written; check the disk");
  }
}

void WritePages(const Run& run) {
  const auto progress = [&](int percent) {
    EndIfInterrupted();
    run.progress.Show("Writing the pages: " + std::to_string(percent) + " %");
  };
  if (!run.canvas.Finish(progress)) throw Failure(cli::kFailed, "the pages couldn't be written; check the disk");
  if (run.job.form.mode != overlay::kCreateForm) return;
  // Instead of printing: the job has no pages, its first one is the form.
  WriteForm(run.job, run.folder.Path(kPagesFile));
  run.folder.Remove(kPagesFile);
}

void RunDocument(const Run& run, const std::u16string& title) {
  const platform::DOCINFOW info{sizeof info, title.c_str(), nullptr, nullptr, 0};
  const platform::DOCINFOW* start = &info;
  LONG number = kJobNumber;
  try {
    run.events.Send(platform::DOCUMENTEVENT_STARTDOC, "STARTDOC", &start, sizeof start);
    run.events.Send(platform::DOCUMENTEVENT_STARTDOCPOST, "STARTDOCPOST", &number, sizeof number);
    PrintPages(run);
    run.events.Send(platform::DOCUMENTEVENT_ENDDOC, "ENDDOC");
    WritePages(run);
    run.written();  // before ENDDOCPOST: a job that can't be written still ends with ABORTDOC
    run.events.Send(platform::DOCUMENTEVENT_ENDDOCPOST, "ENDDOCPOST");
  } catch (...) {
    // Whatever went wrong, the driver must learn that the document ended.
    run.events.Abort();
    throw;
  }
}

/// Copies the form that the job names into the folder. The name of the copy, empty if there is none.
std::string KeepOverlay(const Job& job, const JobFolder& folder) {
  if (job.form.mode == 1) return {};
  std::vector<uint8_t> form;
  if (store::ReadFileBytes(platform::ToUtf8(job.form.path), renderdriver::kLargestForm, &form) != 0) return {};
  folder.Write(kOverlayFile, form);
  return kOverlayFile;
}

/// The recipients of one job in a file of its own, which the driver takes; gone with the job, however it ends.
class JobRecipients {
 public:
  JobRecipients(const PrintRequest& request, Bytes& record) {
    if (!request.recipients || record.size() != kEnvSize) return;
    const auto* const bytes = reinterpret_cast<const uint8_t*>(&*request.recipients);
    id_ = cli::MakeAddressCopy({bytes, sizeof *request.recipients});
    if (id_ == 0) cli::FailStore("store the recipients of the job");
    DriverEnv env;
    std::ranges::copy(record, env.bytes.begin());
    Set<"faxAddressFileId">(env, id_);
    Set<"faxAddressCount">(env, static_cast<uint16_t>(request.recipients->count));
    std::ranges::copy(env.bytes, record.begin());
  }
  ~JobRecipients() { cli::DeleteAddressCopy(id_); }
  JobRecipients(const JobRecipients&) = delete;
  JobRecipients& operator=(const JobRecipients&) = delete;

 private:
  uint32_t id_ = 0;
};

/// What a fax server takes. Its name, empty for a job that isn't a fax.
std::string KeepFax(const Job& job, const JobFolder& folder, Progress& progress) {
  const std::vector<renderdriver::Transmission> sent = renderdriver::TransmissionsOf(job);
  if (sent.empty()) return {};
  std::vector<int> covers;
  for (const renderdriver::Transmission& transmission : sent) covers.push_back(transmission.covers);
  const FaxPages pages{folder.Path(kPagesFile), covers, job.pages, Get<"lpQuality">(job.setup.record)};
  const bool written = WriteFaxFile(pages, folder.Path(kFaxFile), [&](int page, int of) {
    EndIfInterrupted();
    progress.Show("Writing the fax: page " + std::to_string(page) + " of " + std::to_string(of));
  });
  if (!written) throw Failure(cli::kFailed, "the fax couldn't be written; check the disk");
  return kFaxFile;
}

}  // namespace

PrintedJob Print(const PrintRequest& request, const TerminalDesk& desk, Progress& progress) {
  JobFolder folder(request.folder);
  cli::Printer printer(request.printer);
  Bytes given = request.record;
  const JobRecipients recipients(request, given);
  Bytes record = Resolved(printer, std::move(given));
  AnnounceContext(printer, record);
  Job job = OpenRenderJob(request, record);
  JobCanvas canvas(job, folder.Path(kPagesFile));
  const std::unique_ptr<Document> document = LoadDocument(request.document, canvas.space(), progress);
  const std::u16string title =
      request.document == "-" ? u"-" : std::filesystem::path(request.document).filename().u16string();
  job.document = title;
  FormPage form;
  std::string fax;
  try {
    Events events(printer, canvas, job, desk);
    RunDocument({events, job, canvas, *document, form, folder, progress, [&] { fax = KeepFax(job, folder, progress); }},
                title);
  } catch (const QPDFExc&) {
    FailDocument(DocumentName(request.document), "the PDF is damaged");
  }
  const bool made = job.form.mode == overlay::kCreateForm;
  const bool wants_form = Get<"lpOverlay">(job.setup.record) != overlay::kNoOverlay;
  PrintedJob printed{.pages = job.pages,
                     .refused = job.refused,
                     .id = platform::ToUtf8(job.id),
                     .overlay = KeepOverlay(job, folder),
                     .fax = fax,
                     .merged = form.isMerged(),
                     .lacksForm = wants_form && job.form.mode == overlay::kNoOverlay && !desk.declined(),
                     .form = made ? platform::ToUtf8(job.form.path) : std::string()};
  const std::string ticket = renderdriver::Ticket(
      job, {.pages = made ? "" : kPagesFile, .overlay = printed.overlay, .fax = fax, .isMerged = printed.merged});
  folder.Write(kTicketFile, {reinterpret_cast<const uint8_t*>(ticket.data()), ticket.size()});
  folder.Keep();  // last: from here on the job is visible
  return printed;
}

}  // namespace heron::spool
