#include "entry/document_sheets.h"

#include <array>
#include <memory>

#include "catalog/strings.h"
#include "entry/sheet_reasons.h"
#include "generated/values.h"
#include "settings/convert.h"
#include "settings/printer_data.h"
#include "settings/resolve.h"

namespace heron {
namespace {

using namespace platform;

constexpr int32_t kFailed = -1;
constexpr DWORD kReturnsRecord = DM_UPDATE | DM_COPY;
constexpr DWORD kPromptedCopy = DM_COPY | DM_PROMPT | DM_MODIFY;
constexpr DWORD kJobFields = DM_COPIES | DM_DUPLEX;
constexpr DWORD kQualityFields = DM_PRINTQUALITY | DM_YRESOLUTION;

/// A header without a printer name has the queue's for the length of a call.
class NameForCall {
 public:
  explicit NameForCall(DOCUMENTPROPERTYHEADER* header) : header_(header) {
    if (header->pszPrinterName != nullptr) return;
    const std::u16string name = PrinterName(header->hPrinter);
    std::copy_n(name.begin(), std::min(name.size(), name_.size() - 1), name_.begin());
    header->pszPrinterName = name_.data();
  }
  ~NameForCall() {
    if (header_->pszPrinterName == name_.data()) header_->pszPrinterName = nullptr;
  }
  NameForCall(const NameForCall&) = delete;
  NameForCall& operator=(const NameForCall&) = delete;

 private:
  DOCUMENTPROPERTYHEADER* header_;
  std::array<char16_t, 32> name_{};
};

/// Resolves the header's request into `result`.
bool Resolve(const DOCUMENTPROPERTYHEADER& header, DriverEnv* result) {
  JobRequest request{.hPrinter = header.hPrinter,
                     .printerName = header.pszPrinterName,
                     .inputEnv = header.pdmIn,
                     .mode = header.fMode,
                     .resultBuffer = result};
  const bool resolved = ResolveJobEnv(&request);
  CloseResourceContext(request.resources);
  return resolved;
}

/// The spreadsheet program hands foreign records in; one of our own takes its place for the length of a call.
class InputForCall {
 public:
  explicit InputForCall(DOCUMENTPROPERTYHEADER* header) : header_(header), given_(header->pdmIn) {}
  ~InputForCall() { header_->pdmIn = given_; }
  InputForCall(const InputForCall&) = delete;
  InputForCall& operator=(const InputForCall&) = delete;

  bool Repair() {
    if ((header_->fMode & kReturnsRecord) == 0 || given_ == nullptr || !InExcel() || IsOwnEnv(given_)) return true;
    repaired_ = std::make_unique<DriverEnv>();
    if (!Resolve(*header_, repaired_.get())) return false;
    header_->pdmIn = reinterpret_cast<DEVMODEW*>(repaired_->bytes.data());
    return true;
  }

 private:
  DOCUMENTPROPERTYHEADER* header_;
  DEVMODEW* given_;
  std::unique_ptr<DriverEnv> repaired_;
};

/// Writes a public field of a caller's record, and its mirror if the record is ours; nothing beyond its declared size.
template <FieldName kName>
void SetPublic(uint8_t* record, FieldValue<kName> value, bool mirrored) {
  constexpr uint32_t kOffset = FieldOf<kName>().offset;
  if (ForeignEnv(record).Has<kName>()) std::memcpy(record + kOffset, &value, sizeof value);
  if (mirrored) std::memcpy(record + FieldOf<"publicMirror">().offset + kOffset, &value, sizeof value);
}

void SetQuality(uint8_t* record, uint32_t resolution, uint8_t output, bool own) {
  const auto quality = static_cast<int16_t>(resolution);
  SetPublic<"dmPrintQuality">(record, quality, own);
  SetPublic<"dmYResolution">(record, quality, own);
  if (own) record[FieldOf<"lpOutput">().offset] = output;
}

/// What the adjustment of a record's fields depends on. Read before anything is written, since reading may fail.
struct FieldPolicy {
  bool excel = false;
  uint32_t status = 0;      ///< BookMode of the user and queue
  uint32_t resolution = 0;  ///< only if the status has a choice
};

FieldPolicy ReadFieldPolicy(const char16_t* printer_name) {
  FieldPolicy policy{.excel = InExcel()};
  if (policy.excel) policy.status = BookModeStatus(printer_name);
  if (policy.status != 0) policy.resolution = BookModeResolution(printer_name);
  return policy;
}

/// What a caller may believe of the record's fields. The spreadsheet program overwrites copies, duplex and quality
/// unless the driver says that it doesn't take them.
void AdjustFields(const FieldPolicy& policy, uint8_t* record) {
  DWORD fields = ForeignEnv(record).Public<"dmFields">();
  const bool own = IsOwnEnv(record);
  if (!policy.excel) {
    fields |= kJobFields | kQualityFields;
  } else if (policy.status == 1) {
    SetQuality(record, policy.resolution, 1, own);
    SetPublic<"dmCopies">(record, 1, own);
    SetPublic<"dmDuplex">(record, 1, own);
    fields &= ~(kJobFields | kQualityFields);
  } else if (policy.status == 2) {
    SetQuality(record, policy.resolution, 2, own);
    fields = (fields & ~kQualityFields) | kJobFields;
  } else {
    fields |= kJobFields;
  }
  SetPublic<"dmFields">(record, fields, false);
}

int32_t WithoutSheet(DOCUMENTPROPERTYHEADER* header) {
  header->cbOut = kEnvSize;
  if (header->fMode == 0 || header->pdmOut == nullptr) return static_cast<int32_t>(kEnvSize);
  const auto work = std::make_unique<DriverEnv>();
  if (!Resolve(*header, work.get())) return kFailed;
  if ((header->fMode & kReturnsRecord) == 0) return 1;

  const ForeignEnv input(header->pdmIn);
  const bool foreign = input && !IsSameEnvFormat(input.data(), work->bytes.data());
  auto* output = reinterpret_cast<uint8_t*>(header->pdmOut);
  if (!ConvertEnvOut(*work, input, output)) return kFailed;
  if (foreign) SetPublic<"dmColor">(output, Get<"dmColor">(*work), false);
  return 1;
}

/// An application that showed the sheet for its own job: the resolution that was chosen is remembered.
void RememberResolution(const DOCUMENTPROPERTYHEADER& header) {
  constexpr uint32_t kPrintResolution = value::lpQuality::kDpi600;
  const auto* record = reinterpret_cast<const uint8_t*>(header.pdmOut);
  if (!IsOwnEnv(record)) return;
  const bool fax = record[FieldOf<"lpOutput">().offset] == value::lpOutput::kFax;
  FieldValue<"lpQuality"> quality;
  std::memcpy(&quality, record + FieldOf<"lpQuality">().offset, sizeof quality);
  SetBookModeResolution(header.pszPrinterName, fax ? static_cast<uint32_t>(quality) : kPrintResolution);
}

}  // namespace

int32_t DocumentPropertySheets(PROPSHEETUI_INFO* info, DOCUMENTPROPERTYHEADER* header, LPARAM lParam) {
  if (header == nullptr) return kFailed;
  EnsureRenderDriverValue(header->hPrinter);
  RefreshDriverDirectory(header->hPrinter);
  const NameForCall name(header);
  const bool confirmed = info == nullptr || IsConfirmed(*info, lParam);
  const bool adjusts = confirmed && (header->fMode & DM_COPY) != 0;
  const FieldPolicy policy = adjusts ? ReadFieldPolicy(header->pszPrinterName) : FieldPolicy();
  int32_t result = kFailed;
  if (info != nullptr) {
    result = DocumentSheetReason(*info, *header, lParam);
  } else {
    InputForCall input(header);
    if (!input.Repair()) return kFailed;
    result = WithoutSheet(header);
  }
  if (result != 1 || !confirmed || header->pdmOut == nullptr) return result;
  auto* const output = reinterpret_cast<uint8_t*>(header->pdmOut);
  if (info != nullptr && header->fMode == kPromptedCopy) RememberResolution(*header);
  if (adjusts) AdjustFields(policy, output);
  return result;
}

}  // namespace heron
