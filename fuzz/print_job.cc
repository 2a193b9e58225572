// A whole job whose printing side replies anything: the events of a document, each escape answered out of the input.
// Files that the driver didn't make must outlive it.
#include <cstdlib>
#include <memory>

#include "catalog/catalog.h"
#include "catalog/strings.h"
#include "entry/document_event.h"
#include "platform/api/document_events.h"
#include "platform/api/handles.h"
#include "platform/api/message_box.h"
#include "platform/api/queues.h"
#include "platform/memory/memory_backend.h"
#include "settings/defaults.h"
#include "uistate/user_stores.h"

namespace heron {
namespace {

using namespace platform;

/// Takes bytes off the input; zeros behind its end.
class Input {
 public:
  explicit Input(std::span<const uint8_t> bytes) : bytes_(bytes) {}
  void Take(std::span<uint8_t> room) {
    const size_t size = std::min(room.size(), bytes_.size());
    std::copy_n(bytes_.begin(), size, room.begin());
    bytes_ = bytes_.subspan(size);
  }
  uint8_t Byte() {
    uint8_t byte = 0;
    Take({&byte, 1});
    return byte;
  }

 private:
  std::span<const uint8_t> bytes_;
};

/// Each escape takes a byte: what it returns, and whether its reply is zeros, a good record's, or the input's.
class FuzzedCanvas : public Canvas {
 public:
  FuzzedCanvas(Input& input, const DriverEnv& record) : hdc(OpenCanvas(this)), input_(input), record_(record) {}
  ~FuzzedCanvas() override { CloseCanvas(hdc); }

  int Escape(uint32_t, std::span<const uint8_t>, std::span<uint8_t> out) override {
    const uint8_t kind = input_.Byte();
    std::ranges::fill(out, uint8_t{0});
    if ((kind & 0x10) != 0) FillWithRecord(out);
    // A short overlay of the reply's front, back or some place inside reaches every field with few bytes.
    if ((kind & 0x20) != 0) input_.Take(out);
    for (int patches = kind >> 6; patches > 0; --patches) {
      const size_t at = input_.Byte() | size_t{input_.Byte()} << 8;
      if (at < out.size()) input_.Take(out.subspan(at, std::min<size_t>(out.size() - at, 8)));
    }
    return kind & 0xF;
  }
  int DeviceCap(platform::DeviceCap) override { return input_.Byte() * 5; }
  SIZE MeasureText(const LOGFONTW& font, std::u16string_view) override { return {1, font.lfHeight}; }
  std::vector<FontFamily> FontFamilies() override { return {{u"Serif", input_.Byte()}}; }
  void DrawLine(const TextDrawing& drawing, const std::optional<RECT>&) override {
    if (drawing.text.size() > 1024) std::abort();
  }
  void FillRect(const RECT&, COLORREF, const std::optional<RECT>&) override {}
  void DrawPicture(const RECT&, const Picture&, const std::optional<RECT>&) override {}
  bool StartPage() override { return true; }
  bool EndPage() override { return true; }

  const HDC hdc;

 private:
  /// A job record or a record, by the size that is asked for.
  void FillWithRecord(std::span<uint8_t> out) {
    if (out.size() == kEnvSize) std::ranges::copy(record_.bytes, out.begin());
    if (out.size() == sizeof(uint32_t)) WriteAt(out, 0, kEnvSize);
    if (out.size() != JobRecordBlock::kSize) return;
    WriteAt<uint16_t>(out, JobRecordBlock::kExtraOffset, JobRecordBlock::kEnvBase + JobRecordBlock::kEnvBaseSize);
    std::copy_n(record_.bytes.begin() + kPublicSize, kPrivateSize, out.begin() + JobRecordBlock::kEnvBase);
  }

  Input& input_;
  const DriverEnv& record_;
};

class FuzzedDesk : public MessageDesk {
 public:
  explicit FuzzedDesk(Input& input) : input_(input) { InstallMessageDesk(this); }
  ~FuzzedDesk() override { InstallMessageDesk(nullptr); }
  int Show(HWND, std::u16string_view, std::u16string_view, DWORD) override { return input_.Byte() % 8; }

 private:
  Input& input_;
};

constexpr const char16_t* kOthers[] = {u"/system/spool/PRINTERS/report.tmp", u"/home/anna/vfc1.tmp", u"/form.vxf"};

struct Stage {
  Stage() {
    Queue queue;
    queue.name = u"P1";
    queue.dataFile = u"/driver/varnell.dat";
    AddQueue(queue);
    printer = OpenPrinterFor(u"P1", PRINTER_ALL_ACCESS);
    RefreshDriverDirectory(printer.get());
    SeedStores(u"P1", kDriverVersion);
    const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(1));
    BuildDefaultEnv(resources.get(), &record, u"P1", printer.get());
    Set<"Watermark_Use">(record, 1);
    Set<"watermarkIndex">(record, 3);
    Set<"InterSheet_Check">(record, 1);
    for (const char16_t* path : kOthers) backend.files.content[path] = std::make_shared<std::vector<uint8_t>>(200);
  }

  MemoryBackend backend;
  UniquePrinter printer;
  DriverEnv record;
};

}  // namespace
}  // namespace heron

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace heron;
  static Stage stage;
  Input input({data, size});
  FuzzedDesk desk(input);
  FuzzedCanvas canvas(input, stage.record);
  const uint8_t settings = input.Byte();
  Set<"lpOverlay">(stage.record, 1 + settings % 4);
  Set<"lpOutputMethod">(stage.record, 1 + settings / 4 % 4);
  stage.backend.processFileName = settings >= 128 ? u"EXCEL.EXE" : u"writer";
  for (const int event : {1, 3, 5, 13, 6, 7, 6, 7, 8, 12, 9}) {
    if (canvas.hdc == nullptr) std::abort();
    const int result = HandleDocumentEvent({.printer = stage.printer.get(),
                                            .hdc = canvas.hdc,
                                            .event = event,
                                            .inSize = 0,
                                            .in = nullptr,
                                            .outSize = 0,
                                            .out = nullptr});
    if (result < -1 || result > 1) std::abort();
  }
  for (const char16_t* path : kOthers) {
    if (!stage.backend.files.content.contains(path)) std::abort();
  }
  std::erase_if(stage.backend.files.content, [](const auto& file) { return file.second->size() != 200; });
  return 0;
}
