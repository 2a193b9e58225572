// Records of any content against the resolving exports. The oracle: the call succeeds, the result is one of ours with
// equal mirrors, the input is untouched, and resolving settles. The sanitizers watch every read.
#include <random>

#include "entry/exports.h"
#include "settings/defaults.h"
#include "settings/public_part.h"
#include "support/driver_fixture.h"
#include "support/records.h"

namespace heron::test {
namespace {

using namespace platform;

class HostileRecordTest : public DriverTest {
 protected:
  HostileRecordTest() {
    BuildDefaultEnv(resources.get(), &base, u"P1", printer.get());
    Check(base.bytes);  // the first call saves the queue's record
  }

  bool Resolve(const uint8_t* input, DriverEnv& result) {
    return DrvDocumentProperties(nullptr, printer.get(), name, reinterpret_cast<DEVMODEW*>(result.bytes.data()),
                                 reinterpret_cast<DEVMODEW*>(const_cast<uint8_t*>(input)), DM_COPY) == 1;
  }

  /// Resolves `bytes`, given at exactly the size they declare, four times over and checks each result.
  void Check(std::span<const uint8_t> bytes) {
    const uint32_t declared = ForeignEnv(bytes.data()).Size();
    std::vector<uint8_t> input(std::max<size_t>(declared, 72));
    std::copy_n(bytes.begin(), std::min(bytes.size(), input.size()), input.begin());
    const std::vector<uint8_t> before = input;
    DriverEnv results[4];
    for (int i = 0; i < 4; ++i) {
      const uint8_t* from = i == 0 ? input.data() : results[i - 1].bytes.data();
      ASSERT_TRUE(Resolve(from, results[i]));
      ASSERT_TRUE(IsOwnEnv(results[i].bytes.data()));
      ASSERT_EQ(std::memcmp(results[i].bytes.data(), results[i].bytes.data() + kPublicSize, kPublicSize), 0);
    }
    ASSERT_EQ(input, before);
    ASSERT_EQ(Differences(results[2], results[3]), "");
  }

  DriverEnv base;
  char16_t name[3] = u"P1";
};

TEST_F(HostileRecordTest, EveryPositionAtEveryEdge) {
  DriverEnv valid;
  ASSERT_TRUE(Resolve(base.bytes.data(), valid));
  for (uint32_t at = 0; at + 1 < kEnvSize; at += 2) {
    for (const uint16_t value : std::initializer_list<uint16_t>{0, 1, 0x7FFF, 0x8000, 0xFFFF}) {
      DriverEnv record = valid;
      std::memcpy(record.bytes.data() + at, &value, sizeof value);
      ASSERT_NO_FATAL_FAILURE(Check(record.bytes)) << "byte " << at << " value " << value;
    }
  }
}

TEST_F(HostileRecordTest, Truncations) {
  for (uint32_t size = 0; size <= kEnvSize; size += size < 300 ? 1 : 37) {
    CallerRecord record(base);
    record.Set<"dmSize">(static_cast<uint16_t>(std::min(size, kPublicSize)));
    record.Set<"dmDriverExtra">(static_cast<uint16_t>(size - std::min(size, kPublicSize)));
    ASSERT_NO_FATAL_FAILURE(Check(record.bytes())) << size;
  }
}

TEST_F(HostileRecordTest, RandomRecordsWithAGoodTag) {
  std::mt19937 random(20251122);
  for (int i = 0; i < 20000; ++i) {
    DriverEnv record;
    for (size_t at = 0; at < kEnvSize; at += 4) {
      const auto word = static_cast<uint32_t>(random());
      std::memcpy(record.bytes.data() + at, &word, sizeof word);
    }
    InitPublicPart(&record, nullptr);
    Set<"dmFields">(record, static_cast<uint32_t>(random()));
    ASSERT_NO_FATAL_FAILURE(Check(record.bytes)) << "record " << i;
  }
}

}  // namespace
}  // namespace heron::test
