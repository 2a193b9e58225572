// What each escape does to the job, except for fax (answers.h).

#include "renderdriver/answers.h"

#include <algorithm>

#include "renderdriver/blocks.h"
#include "renderdriver/bytes.h"
#include "uistate/list_stores.h"

namespace heron::renderdriver {
namespace {

constexpr size_t kPathRoom = 260;
constexpr size_t kFontText = 32;  ///< bytes of each text of the font map

struct Stretch {
  size_t first, end;
};

/// What the driver may change in a page state; every other byte must come back as it went.
constexpr Stretch kChangeable556[] = {
    {PageState556::kFirstPageOnly, PageState556::kLayoutKind},
    {PageState556::kFirstPageOnlyToo, PageState556::kStampCenterY + 4},
    {PageState556::kOverlaySkipped, PageState556::kOverlaySkipped + 1},
};
constexpr Stretch kChangeable488[] = {
    {PageState488::kFirstPageOnly, PageState488::kFirstPageOnly + 1},
    {PageState488::kStampFlags, PageState488::kStampFlags + 3},
    {PageState488::kAppFlags, PageState488::kAppFlags + 2},
};

bool MayChange(DrawPath path, size_t offset) {
  const std::span<const Stretch> stretches =
      path == DrawPath::k488 ? std::span<const Stretch>(kChangeable488) : std::span<const Stretch>(kChangeable556);
  return std::ranges::any_of(stretches, [&](const Stretch& s) { return offset >= s.first && offset < s.end; });
}

bool TakeText(std::u16string& target, In in) {
  target = ReadText(in, 0, in.size() / 2);
  return true;
}

bool UsesForm(uint8_t mode) {
  return mode == 3 || mode == 4;
}

}  // namespace

bool GetJobRecord(Job& job, In, Out out) {
  FillJobRecord(job, out);
  return true;
}

bool GetJobState(Job& job, In, Out out) {
  FillJobState(job, out);
  return true;
}

bool GetFaxStatus(Job& job, In, Out out) {
  FillFaxStatus(job, out);
  return true;
}

bool GetDrawPath(Job& job, In, Out out) {
  Write<uint32_t>(out, 0, job.setup.path == DrawPath::k556);
  return true;
}

bool GetRecordSize(Job&, In, Out out) {
  Write(out, 0, kEnvSize);
  return true;
}

bool GetRecord(Job& job, In, Out out) {
  std::ranges::copy(job.setup.record.bytes, out.begin());
  return true;
}

bool GetPageState(Job& job, In, Out out) {
  std::ranges::copy(job.pageState, out.begin());
  return true;
}

bool SetPageState(Job& job, In in, Out) {
  // Byte by byte: an error of the driver in a field that isn't its own would otherwise change the device's page unseen.
  for (size_t i = 0; i < in.size(); ++i)
    if (in[i] != job.pageState[i] && !MayChange(job.setup.path, i)) return false;
  job.pageState.assign(in.begin(), in.end());
  return true;
}

bool RestoreDevice(Job& job, In in, Out) {
  std::ranges::copy(in, job.device.begin());
  return true;
}

bool SetUserName(Job& job, In in, Out) {
  return TakeText(job.user, in);
}

bool SetDocName(Job& job, In in, Out) {
  return TakeText(job.document, in);
}

bool SetJobId(Job& job, In in, Out) {
  return TakeText(job.id, in);
}

bool SetCancelFlag(Job& job, In in, Out) {
  if (in[0] > 1) return false;  // a flag: any other value is an error of the driver
  job.steps = in[0] == 1 ? job.steps | kMayCancel : job.steps & ~uint32_t{kMayCancel};
  return true;
}

bool SetUserPapers(Job& job, In in, Out) {
  std::ranges::copy(in, job.userPapers.begin());
  return true;
}

bool SetSpoolFile(Job& job, In in, Out) {
  return TakeText(job.spoolFile, in);
}

bool SpoolFileDone(Job& job, In, Out) {
  job.spoolFile.clear();
  return true;
}

bool SetPageListCount(Job& job, In in, Out) {
  const auto count = Read<uint32_t>(in);
  if (count < 1 || count > kMostPageListRows) return false;
  job.listRows = count;
  return true;
}

bool SetPageList(Job& job, In in, Out) {
  job.pageList.assign(in.begin(), in.end());
  return true;
}

bool PageListDone(Job& job, In, Out) {
  job.listsDone = true;
  return true;
}

bool SetTabCount(Job& job, In in, Out) {
  const auto count = Read<uint32_t>(in);
  if (count < 1 || count > kMostPageListRows) return false;
  job.tabCount = count;
  return true;
}

bool SetTabIndex(Job&, In in, Out) {
  const auto index = Read<uint32_t>(in);
  return index >= 1 && index <= kMostPageListRows;
}

bool TabsEnd(Job& job, In, Out) {
  job.tabsDone = true;
  return true;
}

bool TabsDone(Job& job, In, Out out) {
  Write<uint32_t>(out, 0, job.tabsDone);
  return true;
}

bool SetFormPath(Job& job, In in, Out) {
  const uint8_t mode = Get<"lpOverlay">(job.setup.record);
  std::u16string path = ReadText(in, 0, kPathRoom);
  if (mode < 2 || mode > 4 || path.empty()) return false;
  job.form = {mode, std::move(path)};
  return true;
}

bool SetFormBlock(Job& job, In in, Out) {
  const auto mode = Read<uint8_t>(in, FormBlock::kMode);
  std::u16string path = ReadText(in, FormBlock::kPath, kPathRoom);
  if (mode < 1 || mode > 4 || (mode > 1 && path.empty())) return false;
  if (UsesForm(mode) && Read<uint32_t>(in, FormBlock::kFileSize) == 0) return false;
  job.form = {mode, std::move(path)};
  return true;
}

std::optional<std::vector<FontMapRow>> FontMapRows(DrawPath path, In map) {
  const size_t index = path == DrawPath::k488 ? 24 : 20;
  const size_t count = map.size() / (index + 5 * kFontText);
  std::vector<FontMapRow> rows(count);
  for (size_t i = 0; i < count; ++i) {
    const auto text = [&](size_t n) -> std::optional<std::string> {
      const auto offset = Read<uint32_t>(map, i * index + 4 * n);
      if (offset == 0) return std::string();
      // Offsets are the driver's: they must point behind the index and leave room for a whole text.
      if (offset < count * index || offset > map.size() - kFontText) return std::nullopt;
      const In slot = map.subspan(offset, kFontText);
      return std::string(slot.begin(), std::ranges::find(slot, uint8_t{0}));
    };
    for (size_t n = 0; n < 5; ++n) {
      std::optional<std::string> found = text(n);
      if (!found) return std::nullopt;
      (n == 0 ? rows[i].trueType : rows[i].variants[n - 1]) = std::move(*found);
    }
  }
  return rows;
}

bool SetFontMap(Job& job, In in, Out) {
  // Kept as bytes and read again for the ticket; refused here if it can't be read.
  if (!FontMapRows(job.setup.path, in)) return false;
  job.fontMap.assign(in.begin(), in.end());
  return true;
}

bool StampColor(Job& job, In in, Out) {
  job.stampShade = in[0];
  return true;
}

bool StampNoColor(Job& job, In, Out) {
  job.masking = true;
  if (job.setup.path == DrawPath::k556) job.stampShade = Read<uint8_t>(job.pageState, PageState556::kStampIntensity);
  return true;
}

}  // namespace heron::renderdriver
