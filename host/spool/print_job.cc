#include "spool/print_job.h"

#include <csignal>
#include <filesystem>
#include <memory>

#include "entry/exports.h"
#include "platform/canvas.h"
#include "platform/document_events.h"
#include "platform/text.h"
#include "renderdriver/ticket.h"
#include "settings/driver_env.h"
#include "spool/document.h"
#include "spool/job_canvas.h"
#include "spool/job_folder.h"
#include "store/store.h"

namespace heron::spool {
namespace {

using cli::Bytes;
using cli::Failure;
using platform::DWORD;
using platform::LONG;
using renderdriver::Job;

constexpr char kPagesFile[] = "pages.pdf";
constexpr char kTicketFile[] = "job.json";
constexpr char kOverlayFile[] = "overlay.vxf";
constexpr size_t kLargestForm = size_t{64} * 1024 * 1024;
constexpr uint8_t kMakeForm = 2;  ///< lpOverlay
constexpr LONG kJobNumber = 1;    ///< the spooler's own; the driver only hands it on

volatile std::sig_atomic_t interrupted = 0;

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
    throw Failure(cli::kFailed, "the driver gave up at CREATEDCPRE");
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
  if (Get<"lpOverlay">(job->setup.record) == kMakeForm)
    throw Failure(cli::kFailed, "lpOverlay=2 makes a form, which isn't built; print without it");
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
    if (interrupted != 0) throw Failure(cli::kFailed, "interrupted; nothing was printed");
    if (desk_.wantedConsent())
      throw Failure(cli::kConsent,
                    "nobody could be asked; agree with --yes, or run on a terminal; nothing was printed");
    if (renderdriver::IsCancelled(job_)) throw Failure(cli::kConsent, "the job was cancelled; nothing was printed");
    if (result != 1) throw Failure(cli::kFailed, "the driver gave up at " + std::string(name));
  }
  void Abort() { DrvDocumentEvent(printer_.handle(), hdc_, platform::DOCUMENTEVENT_ABORTDOC, 0, nullptr, 0, nullptr); }

 private:
  cli::Printer& printer_;
  Job& job_;
  const TerminalDesk& desk_;
  platform::HDC hdc_;
};

void PrintPages(Events& events, JobCanvas& canvas, const Document& document) {
  for (int page = 0; page < document.PageCount(); ++page) {
    events.Send(platform::DOCUMENTEVENT_STARTPAGE, "STARTPAGE");
    const bool started = canvas.StartPage();
    canvas.SetContent([&document, page](QPainter& painter) { document.PaintPage(page, painter); });
    events.Send(platform::DOCUMENTEVENT_ENDPAGE, "ENDPAGE");
    if (!started || !canvas.EndPage()) throw Failure(cli::kFailed, "a page couldn't be written; check the disk");
  }
}

void RunDocument(Events& events, JobCanvas& canvas, const Document& document, const std::u16string& title) {
  const platform::DOCINFOW info{sizeof info, title.c_str(), nullptr, nullptr, 0};
  const platform::DOCINFOW* start = &info;
  LONG number = kJobNumber;
  try {
    events.Send(platform::DOCUMENTEVENT_STARTDOC, "STARTDOC", &start, sizeof start);
    events.Send(platform::DOCUMENTEVENT_STARTDOCPOST, "STARTDOCPOST", &number, sizeof number);
    PrintPages(events, canvas, document);
    events.Send(platform::DOCUMENTEVENT_ENDDOC, "ENDDOC");
    if (!canvas.Finish()) throw Failure(cli::kFailed, "the pages couldn't be written; check the disk");
    events.Send(platform::DOCUMENTEVENT_ENDDOCPOST, "ENDDOCPOST");
  } catch (...) {
    events.Abort();
    throw;
  }
}

/// Copies the form that the job names into the folder. The name of the copy, empty if there is none.
std::string KeepOverlay(const Job& job, const JobFolder& folder) {
  if (job.form.mode == 1) return {};
  std::vector<uint8_t> form;
  if (store::ReadFileBytes(platform::ToUtf8(job.form.path), kLargestForm, &form) != 0) return {};
  folder.Write(kOverlayFile, form);
  return kOverlayFile;
}

}  // namespace

void Interrupt() {
  interrupted = 1;
}

PrintedJob Print(const PrintRequest& request, const TerminalDesk& desk) {
  JobFolder folder(request.folder);
  cli::Printer printer(request.printer);
  Bytes record = Resolved(printer, request.record);
  AnnounceContext(printer, record);
  Job job = OpenRenderJob(request, record);
  JobCanvas canvas(job, folder.Path(kPagesFile));
  const std::unique_ptr<Document> document = LoadDocument(request.document, canvas.space());
  const std::u16string title =
      request.document == "-" ? u"-" : std::filesystem::path(request.document).filename().u16string();
  job.document = title;
  {
    Events events(printer, canvas, job, desk);
    RunDocument(events, canvas, *document, title);
  }
  PrintedJob printed{job.pages, job.refused, platform::ToUtf8(job.id), KeepOverlay(job, folder)};
  const std::string ticket = renderdriver::Ticket(job, kPagesFile, printed.overlay);
  folder.Write(kTicketFile, {reinterpret_cast<const uint8_t*>(ticket.data()), ticket.size()});
  folder.Keep();
  return printed;
}

}  // namespace heron::spool
