// Answers to an application's questions about the printer.
//
// Most capabilities are one fixed number. The others run against a fresh record: the queue's saved one with the
// caller's merged over it, neither validated nor given the device options. Lists go to the caller's output element by
// element, as many as the same question announces without an output; the output of a list need not be aligned.
#include "settings/capabilities.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "catalog/catalog.h"
#include "catalog/paper_codes.h"
#include "generated/features.h"
#include "settings/merge.h"
#include "settings/papers.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

enum Capability : uint16_t {
  kFields = 1,
  kPapers = 2,
  kPaperSize = 3,
  kMinExtent = 4,
  kMaxExtent = 5,
  kBins = 6,
  kDuplex = 7,
  kSizeOfPublic = 8,
  kSizeOfPrivate = 9,
  kRecordVersion = 10,
  kVersionOfDriver = 11,
  kBinNames = 12,
  kEnumResolutions = 13,
  kFileDependencies = 14,
  kTrueType = 15,
  kPaperNames = 16,
  kLandscapeAngle = 17,
  kCopies = 18,
  kEmfCompliant = 20,
  kPersonality = 25,
  kPrintRateUnit = 27,
  kStaple = 30,
  kColorDevice = 32,
  kPagesPerSheet = 33,
};

constexpr int32_t kNotAnswered = -1;

constexpr uint32_t kMaxPapers = 256;       ///< a longer list isn't answered
constexpr uint32_t kPaperNameLength = 64;  ///< characters from one name to the next
constexpr uint32_t kBinNameLength = 24;
constexpr uint32_t kPersonalityLength = 32;
constexpr size_t kUserNameLength = 31;

/// Width and height.
using Extent = std::array<uint32_t, 2>;

/// What the capabilities with a record look at.
struct Query {
  platform::HANDLE printer;
  std::u16string_view printerName;
  const ResourceContext* resources;
  DriverEnv env;
};

/// Elements written one behind the other at the caller's address; nothing at all if that is null.
class Output {
 public:
  explicit Output(void* address) : next_(static_cast<uint8_t*>(address)) {}
  explicit operator bool() const { return next_ != nullptr; }

  template <typename Element>
  void Append(const Element& element) {
    if (next_ == nullptr) return;
    std::memcpy(next_, &element, sizeof element);
    next_ += sizeof element;
  }

  void Append(const uint8_t* bytes, size_t size) {
    std::memcpy(next_, bytes, size);
    next_ += size;
  }
  /// Bytes written since `start`.
  size_t Behind(const uint8_t* start) const { return static_cast<size_t>(next_ - start); }

 private:
  uint8_t* next_;
};

/// A paper of the catalogue that an application may choose.
struct ListedPaper {
  uint32_t row;
  int16_t code;
};

bool IsListed(int16_t code) {
  return !IsRotatedCode(code) && code != kCustomEntry && code != paper::kPrintPosition &&
         (code & paper::kHidden) == 0 && !IsSubstitutedPaper(code);
}

std::vector<ListedPaper> CapabilityPaperList(const ResourceContext* resources) {
  std::vector<ListedPaper> papers;
  const uint32_t count = CatalogQuery(resources, feature::lpMediaSize, kCount, nullptr, 0, 0);
  if (count > kMaxPapers) return papers;
  std::array<int16_t, kMaxPapers> codes{};
  CatalogQuery(resources, feature::lpMediaSize, kAllValues, codes.data(), 0, sizeof(int16_t));
  papers.reserve(count);
  for (uint32_t row = 0; row < count; ++row) {
    if (IsListed(codes[row])) papers.push_back({row, codes[row]});
  }
  return papers;
}

Extent UserPaperExtent(platform::HANDLE printer, int16_t code) {
  Extent thou;
  ReadUserPaperSize(code, &thou[0], &thou[1], printer);
  const auto to_tenths = [](uint32_t value) { return static_cast<uint32_t>((uint64_t{value} * 254 + 500) / 1000); };
  return {to_tenths(thou[0]), to_tenths(thou[1])};
}

Extent CatalogExtent(const ResourceContext* resources, uint32_t row) {
  Extent size{};
  CatalogQuery(resources, feature::lpMediaSize, kSize, size.data(), row, 0);
  return {size[0] / 10, size[1] / 10};
}

/// The catalogue's label of the row; for a user paper its stored name, once it is stored.
std::array<char16_t, kPaperNameLength> PaperName(const Query& query, const ListedPaper& paper) {
  std::array<char16_t, kPaperNameLength> name{};
  CustomPaperEntry entry;
  if (IsCustomPaper(paper.code) && ReadStoredUserPaper(query.printer, CustomPaperNumber(paper.code), &entry)) {
    std::copy(entry.name, std::find(entry.name, entry.name + kUserNameLength, u'\0'), name.begin());
  } else {
    CatalogQuery(query.resources, feature::lpMediaSize, kLabel, name.data(), paper.row, kPaperNameLength);
  }
  return name;
}

int32_t AnswerPapers(const Query& query, uint16_t capability, Output output) {
  const std::vector<ListedPaper> papers = CapabilityPaperList(query.resources);
  if (!output) return static_cast<int32_t>(papers.size());
  // Names and sizes of user papers are read and may fail for want of memory: the caller's output waits for the whole
  // list.
  std::vector<uint8_t> answer(papers.size() * kPaperNameLength * sizeof(char16_t));
  Output list(answer.data());
  for (const ListedPaper& paper : papers) {
    if (capability == kPapers) {
      list.Append(paper.code);
    } else if (capability == kPaperNames) {
      list.Append(PaperName(query, paper));
    } else {
      list.Append(IsCustomPaper(paper.code) ? UserPaperExtent(query.printer, paper.code)
                                            : CatalogExtent(query.resources, paper.row));
    }
  }
  output.Append(answer.data(), list.Behind(answer.data()));
  return static_cast<int32_t>(papers.size());
}

/// Smallest or largest width and height of all rows, each on its own; rows without a size don't count.
int32_t AnswerExtent(const Query& query, bool largest, Output output) {
  const uint32_t count = CatalogQuery(query.resources, feature::lpMediaSize, kCount, nullptr, 0, 0);
  std::vector<Extent> sizes(count);
  CatalogQuery(query.resources, feature::lpMediaSize, kSizes, sizes.data(), 0, 0);
  std::erase(sizes, Extent{});
  Extent extent = sizes.empty() ? Extent{} : sizes.front();
  for (const Extent& size : sizes) {
    for (size_t i = 0; i < extent.size(); ++i) {
      extent[i] = largest ? std::max(extent[i], size[i]) : std::min(extent[i], size[i]);
    }
  }
  output.Append(Extent{extent[0] / 10, extent[1] / 10});
  return static_cast<int32_t>(count);
}

int32_t AnswerBins(const Query& query, bool names, void* output) {
  const uint16_t source_unit = Get<"lpSourceUnit">(query.env);
  const uint32_t count =
      CatalogQueryFiltered(query.resources, feature::lpMediaSource, kCount, nullptr, 0, 0, source_unit);
  if (output != nullptr && names) {
    CatalogQueryFiltered(query.resources, feature::lpMediaSource, kAllLabels, output, 0, kBinNameLength, source_unit);
  } else if (output != nullptr) {
    CatalogQueryFiltered(query.resources, feature::lpMediaSource, kAllValues, output, 0, sizeof(uint16_t), source_unit);
  }
  return static_cast<int32_t>(count);
}

int32_t AnswerResolutions(const Query& query, Output output) {
  if (InExcel() && BookModeStatus(query.printerName) != 0) return kNotAnswered;
  const uint32_t count = CatalogQuery(query.resources, feature::lpResolution, kCount, nullptr, 0, 0);
  for (uint32_t row = 0; row < count; ++row) {
    const uint32_t dpi = CatalogQuery(query.resources, feature::lpResolution, kValue, nullptr, row, 0);
    output.Append(std::array{dpi, dpi});
  }
  return static_cast<int32_t>(count);
}

/// Whether the spreadsheet program prints a fax: it then sees a printer of single sheets and copies.
bool IsExcelFax(const Query& query) {
  return InExcel() && BookModeStatus(query.printerName) == kBookModeFax;
}

bool NeedsRecord(uint16_t capability) {
  return (capability >= kFields && capability <= kDuplex) || capability == kBinNames ||
         capability == kEnumResolutions || capability == kTrueType || capability == kPaperNames ||
         capability == kCopies;
}

int32_t AnswerFromRecord(const Query& query, uint16_t capability, void* output) {
  switch (capability) {
    case kFields:
      return static_cast<int32_t>(Get<"dmFields">(query.env));
    case kPapers:
    case kPaperSize:
    case kPaperNames:
      return AnswerPapers(query, capability, Output(output));
    case kMinExtent:
    case kMaxExtent:
      return AnswerExtent(query, capability == kMaxExtent, Output(output));
    case kBins:
    case kBinNames:
      return AnswerBins(query, capability == kBinNames, output);
    case kDuplex:
      return IsExcelFax(query) ? 0 : 1;
    case kEnumResolutions:
      return AnswerResolutions(query, Output(output));
    case kTrueType:
      return Get<"dmTTOption">(query.env);
    case kCopies:
      return IsExcelFax(query) ? 1 : Get<"maxCopies">(query.env);
    default:
      return kNotAnswered;
  }
}

int32_t AnswerPersonality(Output output) {
  output.Append(std::array<char16_t, kPersonalityLength>{u'P', u'C', u'L'});
  return 1;
}

int32_t AnswerPagesPerSheet(Output output) {
  constexpr std::array<uint32_t, 6> kPages{1, 2, 4, 6, 9, 16};
  output.Append(kPages);
  return static_cast<int32_t>(kPages.size());
}

int32_t AnswerConstant(uint16_t capability, void* output) {
  switch (capability) {
    case kSizeOfPublic:
      return kPublicSize;
    case kSizeOfPrivate:
      return kPrivateSize;
    case kRecordVersion:
      return kSpecVersion;
    case kVersionOfDriver:
      return kDriverVersion;
    case kLandscapeAngle:
      return 90;
    case kEmfCompliant:
    case kPrintRateUnit:
      return 1;
    case kFileDependencies:
    case kStaple:
    case kColorDevice:
      return 0;
    case kPersonality:
      return AnswerPersonality(Output(output));
    case kPagesPerSheet:
      return AnswerPagesPerSheet(Output(output));
    default:
      return kNotAnswered;
  }
}

}  // namespace

int32_t DeviceCapability(platform::HANDLE printer, const char16_t* device_name, uint16_t capability, void* output,
                         const void* devmode) {
  if (!NeedsRecord(capability)) return AnswerConstant(capability, output);
  const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(ReadLocaleCountry()));
  if (resources == nullptr) return kNotAnswered;
  const std::u16string name = device_name != nullptr ? std::u16string(device_name) : PrinterName(printer);
  Query query{printer, name, resources.get(), {}};
  LoadPrinterEnv(printer, &query.env, name.c_str(), resources.get());
  MergeRecord(resources.get(), ForeignEnv(devmode), query.env);
  return AnswerFromRecord(query, capability, output);
}

}  // namespace heron
