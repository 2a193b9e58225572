// Fills the blocks that are returned to the driver (blocks.h).

#include "renderdriver/blocks.h"

#include <algorithm>

#include "generated/values.h"
#include "renderdriver/bytes.h"

namespace heron::renderdriver {
namespace {

constexpr uint32_t kMostDots = 100000;
constexpr uint8_t kSecureOutput = 2;  ///< lpOutputMethod
constexpr uint8_t kBoxOutput = 3;
constexpr uint8_t kBoxAndPrintOutput = 4;
constexpr uint8_t kMonochrome = 2;  ///< colour mode
/// What a form takes of a watermark: its colour, or its shape alone.
constexpr uint8_t kColoredForm = 1, kMaskedForm = 2;

void WriteRect(std::span<uint8_t> block, size_t offset, const std::array<uint32_t, 4>& rect) {
  for (size_t i = 0; i < rect.size(); ++i) Write(block, offset + 4 * i, rect[i]);
}

void WriteSheet(std::span<uint8_t> state, size_t printable, size_t physical, const Sheet& sheet) {
  WriteRect(state, printable, {sheet.left, sheet.top, sheet.right, sheet.bottom});
  WriteRect(state, physical, {0, 0, sheet.width, sheet.height});
}

void WritePublicPart(std::span<uint8_t> state, size_t offset, const DriverEnv& record) {
  std::copy_n(record.bytes.begin(), kPublicSize, state.begin() + static_cast<ptrdiff_t>(offset));
}

bool PrintsInColor(const DriverEnv& record) {
  const uint8_t mode = Get<"lpColorMode">(record);
  return mode == value::lpColorMode::kColor || mode == value::lpColorMode::kTwoColor;
}

// The pages of this printing side are plain ones at full size, so both states report no layout and 100 percent.

std::vector<uint8_t> NewState556(const DriverEnv& record, const Sheet& sheet) {
  using S = PageState556;
  std::vector<uint8_t> state(S::kSize);
  WritePublicPart(state, S::kDevMode, record);
  WriteSheet(state, S::kPrintable, S::kPhysical, sheet);
  Write<uint16_t>(state, S::kDrawingOrder, Get<"lpWatermarkOrder">(record));
  Write<uint16_t>(state, S::kLayoutKind, 1);
  Write<int16_t>(state, S::kZoom, 100);
  Write<uint8_t>(state, S::kOverlayPrompt, Get<"OverlayPrompt">(record));
  if (Get<"lpOverlay">(record) == value::lpOverlay::kCreateForm)
    Write<uint8_t>(state, S::kFormMaking, PrintsInColor(record) ? kColoredForm : kMaskedForm);
  return state;
}

std::vector<uint8_t> NewState488(const DriverEnv& record, const Sheet& sheet) {
  using S = PageState488;
  std::vector<uint8_t> state(S::kSize);
  WritePublicPart(state, S::kDevMode, record);
  WriteSheet(state, S::kPrintable, S::kPhysical, sheet);
  const uint8_t color = Get<"lpColorMode">(record);
  // The driver draws in the mode of the state, so an invalid mode of a record must not get there.
  Write<uint8_t>(state, S::kColorMode, color >= 1 && color <= 3 ? color : kMonochrome);
  Write<uint8_t>(state, S::kDrawingOrder, Get<"lpWatermarkOrder">(record));
  Write<uint8_t>(state, S::kFirstPageOnly, Get<"FirstPageOnly">(record));
  Write<uint16_t>(state, S::kZoom, 100);
  Write<uint8_t>(state, S::kOverlayPrompt, Get<"OverlayPrompt">(record));
  return state;
}

void WriteRecipients(const Job& job, std::span<uint8_t> block) {
  using S = JobStateBlock;
  const uint32_t count = RecipientCount(job);
  Write(block, S::kRecipients, count);
  for (uint32_t i = 0; i < count; ++i) Write(block, S::kRecipient + i * S::kRecipientSize, job.addresses->rows[i]);
}

void WriteCoverFiles(const Job& job, std::span<uint8_t> block) {
  using S = JobStateBlock;
  Write(block, S::kCoverFiles, static_cast<uint32_t>(job.coverFiles.size()));
  WriteText(block, S::kCoverFolder, 260, job.coverFolder);
  WriteText(block, S::kLastCoverFile, 30, job.lastCoverFile);
  for (size_t i = 0; i < job.coverFiles.size(); ++i)
    WriteText(block, S::kCoverFile + i * S::kCoverFileSize, S::kCoverFileSize / 2, job.coverFiles[i]);
}

}  // namespace

std::optional<Sheet> SheetOf(const DriverEnv& record) {
  const Sheet sheet{
      .dpi = static_cast<uint16_t>(Get<"dmPrintQuality">(record)),
      .width = Get<"paperSizeDots">(record, 0),
      .height = Get<"paperSizeDots">(record, 1),
      .left = Get<"paperMarginsDots">(record, 0),
      .top = Get<"paperMarginsDots">(record, 1),
      .right = Get<"paperMarginsDots">(record, 2),
      .bottom = Get<"paperMarginsDots">(record, 3),
  };
  const bool sized = sheet.width > 0 && sheet.width <= kMostDots && sheet.height > 0 && sheet.height <= kMostDots;
  const bool inside = sheet.left < sheet.right && sheet.right <= sheet.width && sheet.top < sheet.bottom &&
                      sheet.bottom <= sheet.height;
  // The record is the caller's. Sizes of a page are allocated and drawn from it, so they are bounded here once.
  if (sheet.dpi < 72 || sheet.dpi > 2400 || !sized || !inside) return std::nullopt;
  if (OrientationOf(record) != 2) return sheet;
  // A turn to the left: the sheet's right edge becomes the page's top.
  return Sheet{.dpi = sheet.dpi,
               .width = sheet.height,
               .height = sheet.width,
               .left = sheet.top,
               .top = sheet.width - sheet.right,
               .right = sheet.bottom,
               .bottom = sheet.width - sheet.left};
}

int OrientationOf(const DriverEnv& record) {
  return Get<"dmOrientation">(record) == 2 ? 2 : 1;
}

void FillDevice(const DriverEnv& record, std::span<uint8_t, kDeviceSize> device) {
  using D = DeviceFields;
  constexpr size_t kRectangle = 16;
  Write<uint16_t>(device, D::kOrientation, static_cast<uint16_t>(OrientationOf(record)));
  std::memcpy(device.data() + D::kPrintableDots, FieldBytes<"outputMarginsDots">(record), kRectangle);
  std::memcpy(device.data() + D::kPrintable, FieldBytes<"outputMargins">(record), kRectangle);
  Write<uint16_t>(device, D::kPaper, static_cast<uint16_t>(Get<"dmPaperSize">(record)));
  Write<uint16_t>(device, D::kOutputPaperWidth, Get<"outputPaperWidth">(record));
  Write<uint16_t>(device, D::kOutputPaperLength, Get<"outputPaperLength">(record));
}

std::vector<uint8_t> NewPageState(const JobSetup& setup) {
  const Sheet sheet = *SheetOf(setup.record);  // OpenJob refused records without a sheet
  return setup.path == DrawPath::k488 ? NewState488(setup.record, sheet) : NewState556(setup.record, sheet);
}

void FillJobRecord(const Job& job, std::span<uint8_t> block) {
  using B = JobRecordBlock;
  const std::span<const uint8_t> record = job.setup.record.bytes;
  std::ranges::copy(job.device, block.begin());
  Write(block, B::kExtraOffset, static_cast<uint16_t>(B::kEnvBase + B::kEnvBaseSize));
  WriteText(block, B::kPrinterName, (B::kEnvBase - B::kPrinterName) / 2, job.setup.printer);
  std::ranges::copy(record.subspan(kPublicSize), block.subspan(B::kEnvBase).begin());
}

void FillJobState(const Job& job, std::span<uint8_t> block) {
  using S = JobStateBlock;
  const uint8_t method = Get<"lpOutputMethod">(job.setup.record);
  Write<uint32_t>(block, S::kPageListsSent, job.listsDone);
  Write<uint8_t>(block, S::kSpoolFileUsed, Has(job, kSpoolFile));
  WriteText(block, S::kSpoolFile, 260, job.spoolFile);
  Write<uint16_t>(block, S::kMaskPassword, job.setup.masksPassword);
  Write<uint32_t>(block, S::kConfirmSecure, method == kSecureOutput);
  Write<uint32_t>(block, S::kConfirmBox, method == kBoxOutput || method == kBoxAndPrintOutput);
  Write(block, S::kFaxTime, job.faxTime);
  WriteRecipients(job, block);
  WriteCoverFiles(job, block);
}

void FillFaxStatus(const Job& job, std::span<uint8_t> block) {
  using S = FaxStatus;
  const DriverEnv& record = job.setup.record;
  const bool fax = Has(job, kFaxJob);
  Write<uint8_t>(block, S::kFaxJob, fax);
  Write<uint8_t>(block, S::kCoverSheets, fax && Get<"CoverSheet">(record) == 1);
  Write(block, S::kRecipients, RecipientCount(job));
  Write<uint8_t>(block, S::kHour, Get<"bTimeH">(record));
  Write<uint8_t>(block, S::kMinute, Get<"bTimeM">(record));
  Write<uint8_t>(block, S::kTimeSet, fax && Get<"sendTimeFlag">(record) == 1);
  Write<uint32_t>(block, S::kPageDone, !Has(job, kFirstPage) || job.faxDropped);
}

uint32_t RecipientCount(const Job& job) {
  // The count is the driver's; the block has room for kRecipientCount.
  if (job.faxDropped || !job.addresses) return 0;
  return std::min<uint32_t>(job.addresses->count, kRecipientCount);
}

}  // namespace heron::renderdriver
