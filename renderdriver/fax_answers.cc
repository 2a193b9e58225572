// The escapes of a fax (answers.h). A cover sheet's opaque data is handed back as it was given.

#include <algorithm>

#include "platform/api/text.h"
#include "renderdriver/answers.h"
#include "renderdriver/blocks.h"
#include "renderdriver/bytes.h"

namespace heron::renderdriver {
namespace {

constexpr uint32_t kMostCovers = JobStateBlock::kMaxRecipients;
constexpr size_t kCoverName = 30;
constexpr size_t kCoverPath = 260;

/// Data of another sheet are rejected. They are asked for before the sheet's number is set, so that what was given
/// counts, not the number.
void FillCoverData(const Job& job, Out data) {
  Write(data, 0, job.coverData);
}

std::u16string CoverPath(const Job& job) {
  return job.coverIndex < job.coverFiles.size() ? job.coverFolder + job.coverFiles[job.coverIndex] : std::u16string();
}

bool IsTime(const FaxTime& time) {
  return time.month >= 1 && time.month <= 12 && time.day >= 1 && time.day <= 31 && time.hour <= 23 && time.minute <= 59;
}

}  // namespace

std::u16string RecipientText(const char (&field)[44]) {
  const char* const end = std::find(std::begin(field), std::end(field), '\0');
  char16_t wide[44];
  const int length = platform::MultiByteToWideChar(platform::CP_ACP, field, static_cast<int>(end - field), wide, 44);
  return {wide, static_cast<size_t>(end == field ? 0 : length)};
}

bool GetAddressFile(Job& job, In, Out out) {
  // 0 once the recipients were sent: a job has one list of them.
  const bool waits = Has(job, kFaxJob) && !Has(job, kAddressed);
  Write<uint32_t>(out, 0, waits ? Get<"faxAddressFileId">(job.setup.record) : 0);
  return true;
}

bool SetAddressData(Job& job, In in, Out) {
  const auto block = Read<AddressBlock>(in);
  if (block.count > kRecipientCount) return false;  // rows beyond the block don't exist
  job.addresses = block;
  return true;
}

bool FaxRangeFirst(Job& job, In in, Out) {
  const auto first = Read<uint32_t>(in);
  if (first > RecipientCount(job)) return false;
  job.rangeFirst = first;
  return true;
}

bool FaxRangeEnd(Job& job, In in, Out) {
  const auto end = Read<uint32_t>(in);
  if (end < job.rangeFirst || end > std::max<uint32_t>(RecipientCount(job), 1)) return false;
  job.rangeEnd = end;
  return true;
}

bool SetFaxTime(Job& job, In in, Out) {
  const auto time = Read<FaxTime>(in);
  if (!IsTime(time)) return false;
  job.faxTime = time;
  return true;
}

bool GetFaxTime(Job& job, In, Out out) {
  Write(out, 0, job.faxTime);
  return true;
}

bool GetFaxRecipient(Job& job, In, Out out) {
  if (RecipientCount(job) == 0) return false;
  const AddressRow& first = job.addresses->rows[0];
  const std::u16string name = RecipientText(first.name);
  WriteText(out, 0, out.size() / 2, name.empty() ? RecipientText(first.number) : name);
  return true;
}

bool FaxCancel(Job& job, In, Out) {
  job.faxDropped = true;
  return true;
}

bool FaxCoverCount(Job&, In in, Out) {
  const auto count = Read<uint32_t>(in);
  return count >= 1 && count <= kMostCovers;
}

bool FaxCoverTotal(Job& job, In in, Out) {
  const auto total = Read<uint32_t>(in);
  if (total > kMostCovers) return false;
  job.coverTotal = total;
  job.coverFiles.assign(total, {});  // bounded by kMostCovers above: the count is the driver's
  return true;
}

bool FaxCoverIndex(Job& job, In in, Out) {
  const auto index = Read<uint32_t>(in);
  if (index >= std::max<uint32_t>(job.coverTotal, 1)) return false;
  job.coverIndex = index;
  return true;
}

bool FaxCoverBegin(Job& job, In, Out) {
  job.covered.push_back({job.rangeFirst, job.rangeEnd, 0});
  return true;
}

bool FaxCoverStage(Job&, In in, Out) {
  return in[0] == 1 || in[0] == 2;
}

bool GetFaxCoverPath(Job& job, In, Out out) {
  WriteText(out, 0, kCoverPath, CoverPath(job));
  return true;
}

bool FaxCoverPath(Job& job, In in, Out) {
  return ReadText(in, 0, kCoverPath) == CoverPath(job).substr(0, kCoverPath - 1);
}

bool SetCoverFolder(Job& job, In in, Out) {
  job.coverFolder = ReadText(in, 0, kCoverPath);
  return true;
}

bool SetCoverFile(Job& job, In in, Out) {
  const auto number = Read<uint32_t>(in);
  if (number >= job.coverFiles.size()) return false;
  job.coverFiles[number] = ReadText(in, 4, kCoverName);
  return true;
}

bool SetLastCoverFile(Job& job, In in, Out) {
  job.lastCoverFile = ReadText(in, 0, kCoverName);
  return true;
}

bool FaxCoverDeleted(Job& job, In in, Out) {
  const auto number = Read<uint16_t>(in);
  if (number >= job.coverFiles.size()) return false;
  job.coverFiles[number].clear();
  return true;
}

bool FaxCoverFileDeleted(Job& job, In, Out) {
  job.lastCoverFile.clear();
  job.coverFiles.clear();
  return true;
}

bool GetCoverData(Job& job, In, Out out) {
  ++job.coverData;
  FillCoverData(job, out);
  return true;
}

bool SetCoverData(Job& job, In in, Out) {
  std::array<uint8_t, 48> given{};
  FillCoverData(job, given);
  return std::ranges::equal(in, given);
}

bool IsZero(Job&, In in, Out) {
  return in[0] == 0;
}

}  // namespace heron::renderdriver
