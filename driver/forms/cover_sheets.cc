// From the job's recipients and record to cover pages (cover_sheets.h).
//
// Numbers of the blocks are the printing side's, those of the record the application's: divisors are checked and
// products taken in 64 bits.
#include "forms/cover_sheets.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "catalog/strings.h"
#include "escapes/job_blocks.h"
#include "forms/cover_tables.h"
#include "forms/temp_files.h"
#include "generated/values.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

using namespace platform;
using DeviceBlock = std::array<uint8_t, DeviceFields::kSize>;
using FaxMoment = std::array<uint16_t, 5>;  ///< year, month, day, hour, minute

constexpr size_t kPathLength = 260;
constexpr size_t kFileNameLength = 30;
constexpr uint32_t kRowsOnSheet = 100;
constexpr int64_t kUnprintable = 424;  ///< hundredths of a millimetre at each edge

/// A cover file as EscSetCoverFile takes it.
struct CoverFileBlock {
  uint32_t number;
  std::array<char16_t, kFileNameLength> name;
};
static_assert(sizeof(CoverFileBlock) == 64);

/// Everything that the sheets of one job have in common.
struct CoverJob {
  std::u16string_view printerName;
  HDC hdc;
  std::unique_ptr<JobRecord> block;
  std::unique_ptr<DriverEnv> record;
  std::vector<RecipientRow> rows;
  FaxMoment time{};
  uint32_t recipients = 0;  ///< at least 1
  uint32_t sheets = 0;
};

struct RowRange {
  uint32_t first, end;
};

bool FetchJob(CoverJob& job) {
  job.block = FetchJobRecordBlock(job.hdc);
  if (job.block == nullptr) return false;
  job.record = SettingsIn(*job.block);
  const std::unique_ptr<JobState> state = FetchJobState(job.hdc);
  if (job.record == nullptr || state == nullptr) return false;
  using S = JobStateBlock;
  job.rows.resize(std::min<uint32_t>(ReadAt<uint32_t>(*state, S::kRecipients), S::kMaxRecipients));
  for (size_t i = 0; i < job.rows.size(); ++i) {
    AddressRow row;
    static_assert(sizeof row == S::kRecipientSize);
    std::memcpy(&row, state->data() + S::kRecipient + i * S::kRecipientSize, sizeof row);
    DecodeRow(row, &job.rows[i]);
  }
  for (size_t i = 0; i < job.time.size(); ++i) job.time[i] = ReadAt<uint16_t>(*state, S::kFaxTime + 2 * i);
  job.recipients = std::max<uint32_t>(static_cast<uint32_t>(job.rows.size()), 1);
  job.sheets = CoverSheetCount(CoverFlagsOf(*job.record), job.recipients);
  return true;
}

RowRange RangeOf(const CoverJob& job, uint32_t sheet) {
  namespace personal = value::lpFaxCover_ReceivePersonal;
  const CoverFlags flags = CoverFlagsOf(*job.record);
  const bool detailed = flags.receiveSetup == value::lpFaxCover_ReceiveSetup::kDetailed;
  if (detailed && flags.receivePersonal == personal::kAllOnOneSheet)
    return {sheet * kRowsOnSheet, std::min((sheet + 1) * kRowsOnSheet, job.recipients)};
  if (detailed && flags.receivePersonal == personal::kSheetEach) return {sheet, std::min(sheet + 1, job.recipients)};
  return {0, job.recipients};
}

/// Makes the temporary files, records them and names them to the printing side. Files that couldn't be recorded go
/// again; recorded ones are deleted at the job's end or by the next job.
bool MakeFiles(const CoverJob& job) {
  std::vector<std::u16string> paths;
  for (uint32_t i = 0; i < job.sheets; ++i) paths.push_back(MakeTempFile(kCoverPrefix));
  paths.push_back(MakeTempFile(kLastCoverPrefix));
  const bool made = std::ranges::none_of(paths, &std::u16string::empty);
  if (!made || !RecordTempFiles(job.printerName, paths)) {
    for (const std::u16string& path : paths) DeleteTempFile(path);
    return false;
  }
  const size_t folder = SpoolFolder().size();
  for (uint32_t i = 0; i < job.sheets; ++i) {
    const CoverFileBlock file{i, WideText<kFileNameLength>(std::u16string_view(paths[i]).substr(folder))};
    if (!SendEscape<"EscSetCoverFile">(job.hdc, file)) return false;
  }
  return SendEscape<"EscSetLastCoverFile">(job.hdc,
                                           WideText<kFileNameLength>(std::u16string_view(paths.back()).substr(folder)));
}

// -- one sheet

/// The user's cover sheet as the last confirmed sheet has stored it; null if it can't be read.
std::unique_ptr<FaxCoverStore> ReadCover(std::u16string_view printer_name) {
  ListStoreSet set;
  set.faxCover = std::make_unique<FaxCoverStore>();
  set.faxCover->fcsPaper = kDocumentPaper;  // what a store without a paper means
  if (!WalkStore(set, ListStoreId::kFaxCover, printer_name, WalkOp::kRead)) return nullptr;
  ClampCover(*set.faxCover);
  return std::move(set.faxCover);
}

bool HasOwnPaper(const DriverEnv& record, const FaxCoverStore& store) {
  return Get<"FaxCover_A4PFix">(record) == 1 && store.fcsPaper != kDocumentPaper;
}

/// Share of `part` in `whole`, rounded, times `factor`; 0 for no whole.
int64_t Share(int64_t part, int64_t factor, int64_t whole) {
  return whole == 0 ? 0 : (part * factor + whole / 2) / whole;
}

/// The scale of a sheet that the device brings onto a paper of its own.
int32_t OwnPaperPercent(const DriverEnv& record, bool upright) {
  constexpr int64_t kWhole = 100000, kHalf = 50000;
  constexpr int64_t kA4Width = 2100, kA4Length = 2970;
  const int64_t p = upright ? kWhole : kHalf;
  const int64_t width = Get<"outputPaperWidth">(record), length = Get<"outputPaperLength">(record);
  const int64_t smaller =
      std::min(Share(Get<"dmPaperWidth">(record), p, width), Share(Get<"dmPaperLength">(record), p, length));
  const int64_t m = std::min(Share(smaller, width, kA4Width), Share(smaller, length, kA4Length));
  return static_cast<int32_t>(std::min<int64_t>((m + 500) / 1000, INT16_MAX));
}

/// The scale of a sheet on the document's own paper, whose printable rectangle it fits.
int32_t DocumentPaperPercent(const DriverEnv& record, bool across, int32_t box_width, int32_t box_length) {
  const auto side = [&](size_t i) {
    return int64_t{Get<"paperMargins">(record, i + 2)} - int64_t{Get<"paperMargins">(record, i)};
  };
  const int64_t width = across ? side(1) : side(0), length = across ? side(0) : side(1);
  const int64_t percent = std::min(Share(width, 100, box_width), Share(length, 100, box_length));
  return static_cast<int32_t>(std::clamp<int64_t>(percent, 0, INT16_MAX));
}

/// Percent that a pixel of 200 dpi takes at the resolution, over the width of a sheet.
int32_t ImageScale(int64_t box_width, int64_t resolution) {
  constexpr int64_t kUsual = 200;
  const auto pixels = [box_width](int64_t dpi) { return (((box_width * 100 + 127) / 254) * dpi + 500) / 1000; };
  return static_cast<int32_t>(Share(pixels(resolution), 100, pixels(kUsual)));
}

CoverLayout LayoutOf(const CoverJob& job, const FaxCoverStore& store, const DeviceBlock& sent, RowRange range) {
  constexpr int32_t kBoxWidth = 20152, kBoxLength = 28852;
  const DriverEnv& record = *job.record;
  CoverLayout layout;
  layout.dc = job.hdc;
  layout.flags = CoverFlagsOf(record);
  layout.flags.a4pFix = HasOwnPaper(record, store) ? 1 : 0;
  layout.resolution = Get<"dmYResolution">(record);
  const bool across = Get<"dmOrientation">(record) == value::lpOrientation::kLandscape;
  layout.boxWidthHmm = layout.flags.a4pFix == 0 && across ? kBoxLength : kBoxWidth;
  layout.boxLengthHmm = layout.flags.a4pFix == 0 && across ? kBoxWidth : kBoxLength;
  layout.percent = layout.flags.a4pFix == 1
                       ? OwnPaperPercent(record, ReadAt<uint8_t>(sent, DeviceFields::kOwnOrientation) == 1)
                       : DocumentPaperPercent(record, across, layout.boxWidthHmm, layout.boxLengthHmm);
  layout.zoom = static_cast<int32_t>(store.zoom);
  const auto place = [](int64_t box, uint32_t position) {
    return static_cast<int32_t>((box * position + 5000) / 10000);
  };
  layout.imageXHmm = place(layout.boxWidthHmm, store.xPosition);
  layout.imageYHmm = place(layout.boxLengthHmm, store.yPosition);
  layout.imagePath = CoverText(store.filename);
  layout.style = static_cast<int32_t>(store.style) - 1;
  layout.rows = job.rows;
  layout.firstRow = range.first;
  layout.endRow = range.end;
  layout.store = &store;
  layout.imageScale = ImageScale(layout.boxWidthHmm, layout.resolution);
  layout.fixedDate =
      Get<"sendTimeFlag">(record) == 1 && std::ranges::any_of(job.time, [](uint16_t part) { return part != 0; });
  layout.year = job.time[0];
  layout.month = job.time[1];
  layout.day = job.time[2];
  return layout;
}

/// Sends the changed device fields for a scope; those of before come back in any case.
class CoverDevice {
 public:
  CoverDevice(HDC hdc, const DeviceBlock& before) : hdc_(hdc), before_(before) {}
  ~CoverDevice() { SendEscape<"EscRestoreDevice">(hdc_, before_); }
  CoverDevice(const CoverDevice&) = delete;
  CoverDevice& operator=(const CoverDevice&) = delete;

 private:
  HDC hdc_;
  const DeviceBlock& before_;
};

/// One sheet as a page of the job. False if it couldn't be drawn; the device fields are those of before all the same.
bool DrawCoverPage(const CoverJob& job, RowRange range) {
  DeviceBlock before;
  std::copy_n(job.block->begin(), before.size(), before.begin());
  const CoverDevice device(job.hdc, before);
  const std::unique_ptr<FaxCoverStore> store = ReadCover(job.printerName);
  if (store == nullptr) return false;
  DeviceBlock changed = before;
  const uint32_t paper = HasOwnPaper(*job.record, *store) ? store->fcsPaper : kDocumentPaper;
  if (!ChangeDeviceForCover(*job.record, paper, changed)) return false;
  if (!SendEscape<"EscRestoreDevice">(job.hdc, changed)) return false;
  const CoverLayout layout = LayoutOf(job, *store, changed, range);
  if (StartPage(job.hdc) <= 0) return false;
  const int mode = SetMapMode(job.hdc, MM_TEXT);
  {
    const StringsInUse texts;
    LayoutCover(layout);
  }
  SetMapMode(job.hdc, mode);
  return EndPage(job.hdc) > 0;
}

/// Draws sheet `sheet` between the escapes that tell of it. False if one of them fails.
bool BuildSheet(const CoverJob& job, uint32_t sheet) {
  std::array<uint8_t, 48> data;
  std::array<char16_t, kPathLength> path;
  const RowRange range = RangeOf(job, sheet);
  const bool begun = AskEscape<"EscGetCoverData">(job.hdc, &data) && SendEscape<"EscFaxCoverIndex">(job.hdc, sheet) &&
                     SendEscape<"EscFaxRangeFirst">(job.hdc, range.first) &&
                     SendEscape<"EscFaxRangeEnd">(job.hdc, range.end) &&
                     SendEscape<"EscFaxCoverStage">(job.hdc, uint8_t{1}) && SendEscape<"EscFaxCoverBegin">(job.hdc) &&
                     AskEscape<"EscGetFaxCoverPath">(job.hdc, &path) && SendEscape<"EscFaxCoverPath">(job.hdc, path);
  if (!begun) return false;
  DrawCoverPage(job, range);  // a sheet that can't be drawn is passed over
  return SendEscape<"EscFaxCoverStage">(job.hdc, uint8_t{1}) && SendEscape<"EscSetCoverData">(job.hdc, data);
}

}  // namespace

CoverFlags CoverFlagsOf(const DriverEnv& record) {
  return {.subject = Get<"FaxCover_Subject">(record),
          .receiveName = Get<"FaxCover_ReceiveName">(record),
          .receiveFaxnum = Get<"FaxCover_ReceiveFaxnum">(record),
          .receiveCompany1 = Get<"FaxCover_ReceiveCompany1">(record),
          .receiveCompany2 = Get<"FaxCover_ReceiveCompany2">(record),
          .receiveSetup = Get<"lpFaxCover_ReceiveSetup">(record),
          .receivePersonal = Get<"lpFaxCover_ReceivePersonal">(record),
          .senderName = Get<"FaxCover_SenderName">(record),
          .senderCompany1 = Get<"FaxCover_SenderCompany1">(record),
          .senderCompany2 = Get<"FaxCover_SenderCompany2">(record),
          .senderTelnum = Get<"FaxCover_SenderTelnum">(record),
          .senderFaxnum = Get<"FaxCover_SenderFaxnum">(record),
          .senderEmail = Get<"FaxCover_SenderEmail">(record),
          .date = Get<"FaxCover_Date">(record),
          .pagenum = Get<"FaxCover_Pagenum">(record),
          .image = Get<"FaxCover_Image">(record),
          .zoom = Get<"FaxCover_Zoom">(record),
          .a4pFix = Get<"FaxCover_A4PFix">(record)};
}

uint32_t CoverSheetCount(const CoverFlags& flags, uint32_t recipients) {
  namespace personal = value::lpFaxCover_ReceivePersonal;
  if (flags.receiveSetup != value::lpFaxCover_ReceiveSetup::kDetailed) return 1;
  if (flags.receivePersonal == personal::kAllOnOneSheet) return (recipients + kRowsOnSheet - 1) / kRowsOnSheet;
  return flags.receivePersonal == personal::kSheetEach ? recipients : 1;
}

bool ChangeDeviceForCover(const DriverEnv& record, uint32_t paper, std::span<uint8_t, DeviceFields::kSize> device) {
  using D = DeviceFields;
  const bool own = paper < kCoverPapers.size();
  const CoverPaper& row = kCoverPapers[own ? paper : 0];
  const int resolution = Get<"dmYResolution">(record);
  const int64_t document_width = Get<"dmPaperWidth">(record);
  if ((resolution != 200 && resolution != 400 && resolution != 600) || document_width <= 0) return false;
  const auto dots = [resolution](int64_t v) {
    const int64_t at_300 = (v * 30 + 127) / 254;
    return resolution == 600 ? at_300 * 2 : resolution == 400 ? (at_300 * 8 + 3) / 6 : (at_300 * 4 + 3) / 6;
  };
  const std::array<int64_t, 4> printable = {kUnprintable, kUnprintable, row.width * 10 - kUnprintable,
                                            row.length * 10 - kUnprintable};
  WriteAt<uint32_t>(device, 8, 0);
  WriteAt<uint16_t>(device, 12, 0);
  WriteAt<uint8_t>(device, 24, 1);
  WriteAt<uint32_t>(device, 32, 10000);
  WriteAt<uint32_t>(device, 104, 1);
  for (size_t i = 0; i < printable.size(); ++i) {
    WriteAt(device, D::kPrintableDots + 4 * i, static_cast<uint32_t>(dots(printable[i])));
    WriteAt(device, D::kPrintable + 4 * i, static_cast<uint32_t>(printable[i]));
  }
  if (own) {
    WriteAt<uint8_t>(device, D::kPaperKind, 3);
    WriteAt<uint16_t>(device, D::kPaperFlags, 1);
    WriteAt<uint16_t>(device, D::kPaperFlags + 2, 1);
    WriteAt(device, D::kOwnOrientation, ReadAt<uint8_t>(device, D::kOrientation));
    WriteAt<uint16_t>(device, D::kOrientation, 1);
    WriteAt(device, D::kPaper, row.paper);
    WriteAt(device, D::kOutputPaperWidth, row.width);
    WriteAt(device, D::kOutputPaperLength, row.length);
  } else {
    WriteAt<uint8_t>(device, 234, 0);
    WriteAt<uint8_t>(device, 235, 1);
  }
  WriteAt<uint8_t>(device, 242, own ? 0 : 1);
  const bool doubled = own && ReadAt<uint8_t>(device, D::kOwnOrientation) != 1;
  const int64_t z = Share(ReadAt<uint16_t>(device, D::kOutputPaperWidth), doubled ? 20000 : 10000, document_width);
  constexpr std::array<uint8_t, 4> kLayoutOff = {1, 0, 0, 1};
  std::ranges::copy(kLayoutOff, device.begin() + 236);
  WriteAt(device, D::kZoom, static_cast<uint8_t>((z + 50) / 100));
  std::fill(device.begin() + 243, device.begin() + 250, uint8_t{0});
  device[243] = 1;
  std::fill(device.begin() + 256, device.end(), uint8_t{0});
  return true;
}

bool BuildCoverSheets(std::u16string_view printer_name, HDC hdc) {
  CoverJob job;
  job.printerName = printer_name;
  job.hdc = hdc;
  if (!FetchJob(job)) return false;
  const bool told = SendEscape<"EscFaxCoverCount">(hdc, job.recipients) &&
                    SendEscape<"EscFaxCoverTotal">(hdc, job.sheets) &&
                    SendEscape<"EscFaxCoverIndex">(hdc, uint32_t{0}) &&
                    SendEscape<"EscSetCoverFolder">(hdc, WideText<kPathLength>(SpoolFolder()));
  if (!told || !MakeFiles(job)) return false;
  for (uint32_t sheet = 0; sheet < job.sheets; ++sheet)
    if (!BuildSheet(job, sheet)) return false;
  return SendEscape<"EscFaxCoverStage">(hdc, uint8_t{2}) && SendEscape<"EscFaxCoverEnd">(hdc, uint8_t{0});
}

}  // namespace heron
