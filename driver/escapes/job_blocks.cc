#include "escapes/job_blocks.h"

#include <vector>

#include "platform/api/process.h"

namespace heron {
namespace {

/// A record may be longer than ours, but no driver makes one of this size.
constexpr uint32_t kLargestRecord = 0x10000;

}  // namespace

std::unique_ptr<JobRecord> FetchJobRecordBlock(platform::HDC hdc) {
  auto block = std::make_unique<JobRecord>();
  if (!AskEscape<"EscGetJobRecord">(hdc, block.get())) return nullptr;
  return block;
}

std::unique_ptr<DriverEnv> FetchJobRecord(platform::HDC hdc) {
  const std::unique_ptr<JobRecord> block = FetchJobRecordBlock(hdc);
  return block == nullptr ? nullptr : SettingsIn(*block);
}

std::unique_ptr<DriverEnv> SettingsIn(const JobRecord& block) {
  const size_t extra = ReadAt<uint16_t>(block, JobRecordBlock::kExtraOffset);
  if (extra + JobRecordBlock::kEnvExtraSize > block.size()) return nullptr;
  static_assert(JobRecordBlock::kEnvBaseSize == kEnvBaseSize && JobRecordBlock::kEnvExtraSize == kEnvExtraSize);
  auto env = std::make_unique<DriverEnv>();
  std::memcpy(env->bytes.data() + kPublicSize, block.data() + JobRecordBlock::kEnvBase, kEnvBaseSize);
  std::memcpy(env->bytes.data() + kPublicSize + kEnvBaseSize, block.data() + extra, kEnvExtraSize);
  static_assert(FieldOf<"publicMirror">().Size() == kPublicSize);
  std::memcpy(env->bytes.data(), FieldBytes<"publicMirror">(*env), kPublicSize);
  return env;
}

std::unique_ptr<DriverEnv> FetchRecord(platform::HDC hdc) {
  auto env = std::make_unique<DriverEnv>();
  uint32_t size = 0;
  AskEscape<"EscGetRecordSize">(hdc, &size);
  if (size == 0 || size > kLargestRecord) return env;
  std::vector<uint8_t> record(size);
  RunEscape(hdc, Escape("EscGetRecord"), {}, record);
  std::memcpy(env->bytes.data(), record.data(), std::min<size_t>(size, kEnvSize));
  return env;
}

std::unique_ptr<JobState> FetchJobState(platform::HDC hdc) {
  auto state = std::make_unique<JobState>();
  if (!AskEscape<"EscGetJobState">(hdc, state.get())) return nullptr;
  return state;
}

std::optional<FaxState> FetchFaxState(platform::HDC hdc) {
  std::array<uint8_t, FaxStatus::kSize> status;
  if (!AskEscape<"EscGetFaxStatus">(hdc, &status)) return std::nullopt;
  return FaxState{.fax = status[FaxStatus::kFaxJob] == 1,
                  .coverSheets = status[FaxStatus::kCoverSheets] == 1,
                  .recipients = ReadAt<uint32_t>(status, FaxStatus::kRecipients),
                  .hour = status[FaxStatus::kHour],
                  .minute = status[FaxStatus::kMinute],
                  .timeSet = status[FaxStatus::kTimeSet] == 1,
                  .pageDone = ReadAt<uint32_t>(status, FaxStatus::kPageDone) != 0};
}

std::array<char16_t, 255> LogonName() {
  std::array<char16_t, 257> name{};
  auto length = static_cast<platform::DWORD>(name.size());
  if (platform::GetUserNameW(name.data(), &length) == 0) return {};
  return WideText<255>(name.data());
}

}  // namespace heron
