#include "settings/merge.h"

#include <array>
#include <cstdlib>
#include <optional>

#include "catalog/other_values.h"
#include "generated/features.h"
#include "settings/papers.h"
#include "settings/public_part.h"

namespace heron {
namespace {

using namespace platform;

struct Size {
  uint32_t width, height;
};

bool InList(uint16_t feature, int32_t value) {
  return CatalogIndexOf(feature, value) >= 0;
}

Size RowSize(const ResourceContext* resources, Selector selector, uint32_t row) {
  uint32_t size[2] = {};
  CatalogQuery(resources, feature::lpMediaSize, selector, size, row, sizeof size);
  return {size[0], size[1]};
}

bool SameEitherWay(const Size& a, const Size& b) {
  return (a.width == b.width && a.height == b.height) || (a.width == b.height && a.height == b.width);
}

/// Row of the paper whose catalogue size is `size` (tenths of a millimetre), first by its size, then by its dots. Rows
/// without geometry never match.
std::optional<uint32_t> FindPaperBySize(const ResourceContext* resources, const Size& size) {
  const uint32_t rows = CatalogQuery(resources, feature::lpMediaSize, kCount, nullptr, 0, 0);
  for (const Selector selector : {kSize, kDotSize}) {
    for (uint32_t row = 0; row < rows; ++row) {
      Size paper = RowSize(resources, selector, row);
      if (paper.width == 0) continue;
      if (selector == kSize)
        paper = {paper.width / 10, paper.height / 10};
      else
        paper = {paper.width * 254 / 300, paper.height * 254 / 300};
      if (SameEitherWay(paper, size)) return row;
    }
  }
  return std::nullopt;
}

/// Copies one public field if the source has it.
template <FieldName kName>
void CopyField(const ForeignEnv& source, DriverEnv& target) {
  if (source.Has<kName>()) Set<kName>(target, source.Public<kName>());
}

/// A size without a paper selects the paper of that size; one that no paper has is the user paper 256.
void SelectPaperBySize(const ResourceContext* resources, DriverEnv& target, const Size& wanted) {
  const std::optional<uint32_t> row = FindPaperBySize(resources, wanted);
  const uint32_t code =
      row ? CatalogQuery(resources, feature::lpMediaSize, kValue, nullptr, *row, 0) : uint32_t{kLastUserPaper};
  Set<"dmPaperSize">(target, code);
}

void MergePaper(const ResourceContext* resources, const ForeignEnv& source, DriverEnv& target, DWORD fields) {
  const bool named = (fields & DM_PAPERSIZE) != 0 && source.Has<"dmPaperSize">();
  const int row = named ? CatalogIndexOf(feature::lpMediaSize, source.Public<"dmPaperSize">()) : -1;
  if (row >= 0) CopyField<"dmPaperSize">(source, target);

  const bool sized =
      (fields & (DM_PAPERLENGTH | DM_PAPERWIDTH)) != 0 && source.Has<"dmPaperLength">() && source.Has<"dmPaperWidth">();
  if (sized) {
    CopyField<"dmPaperWidth">(source, target);
    CopyField<"dmPaperLength">(source, target);
    if (!named) {
      // The public numbers are signed; a negative one matches no paper.
      SelectPaperBySize(resources, target,
                        {static_cast<uint32_t>(source.Public<"dmPaperWidth">()),
                         static_cast<uint32_t>(source.Public<"dmPaperLength">())});
    }
  } else if (row >= 0) {
    const Size size = RowSize(resources, kSize, static_cast<uint32_t>(row));
    Set<"dmPaperWidth">(target, size.width / 10);
    Set<"dmPaperLength">(target, size.height / 10);
  }
}

void MergeCopies(const ResourceContext* resources, const ForeignEnv& source, DriverEnv& target) {
  Set<"dmCopies">(target, LegalCopies(resources, source.Public<"dmCopies">()));
}

}  // namespace

void MergePublic(const ResourceContext* resources, const ForeignEnv& source, DriverEnv& target) {
  if (!source || !source.Has<"dmFields">()) return;
  const DWORD fields = source.Public<"dmFields">();
  MergePaper(resources, source, target, fields);
  if ((fields & DM_PRINTQUALITY) != 0 && InList(feature::lpResolution, source.Public<"dmPrintQuality">())) {
    CopyField<"dmPrintQuality">(source, target);
    Set<"dmYResolution">(target, Get<"dmPrintQuality">(target));
  }
  if ((fields & DM_ORIENTATION) != 0 && InList(feature::lpOrientation, source.Public<"dmOrientation">())) {
    CopyField<"dmOrientation">(source, target);
  }
  if ((fields & DM_COPIES) != 0 && source.Has<"dmCopies">()) MergeCopies(resources, source, target);
  const int16_t duplex = source.Public<"dmDuplex">();
  if ((fields & DM_DUPLEX) != 0 && duplex >= value::dmDuplex::kOneSided && duplex <= value::dmDuplex::kShortEdge)
    CopyField<"dmDuplex">(source, target);
  if ((fields & DM_DEFAULTSOURCE) != 0 && InList(27, source.Public<"dmDefaultSource">())) {
    CopyField<"dmDefaultSource">(source, target);
  }
}

bool MergeWhole(const ResourceContext* resources, const ForeignEnv& source, DriverEnv& target) {
  if (!source) return false;
  MergePublic(resources, source, target);
  const uint32_t size = std::min(source.PrivateSize(), kPrivateSize);
  std::memcpy(target.bytes.data() + kPublicSize, source.data() + source.PublicSize(), size);
  return true;
}

void MergeRecord(const ResourceContext* resources, const ForeignEnv& source, DriverEnv& target) {
  if (!source) return;
  if (IsSameEnvFormat(source.data(), target.bytes.data())) {
    MergeWhole(resources, source, target);
  } else {
    MergePublic(resources, source, target);
  }
}

void CopyDeviceOptions(const DriverEnv& printer, DriverEnv& target) {
  for (const EnvField& field : kEnvFields) {
    if (!field.deviceOption) continue;
    std::memcpy(target.bytes.data() + field.offset, printer.bytes.data() + field.offset, field.Size());
  }
}

}  // namespace heron
