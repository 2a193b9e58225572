// The job's identifier and who gets it.
#include "printpath/job_identity.h"

#include "platform/api/modules.h"
#include "settings/text_scramble.h"
#include "support/job_fixture.h"

namespace heron::test {
namespace {

using namespace platform;

constexpr char16_t kModule[] = u"/driver/ETVORPN.DLL";
std::string notified;

int Notify(const char* job_id, const char* printer_name) {
  notified = std::string(job_id) + '|' + printer_name;
  return 42;
}

class JobIdentityTest : public JobTest {
 protected:
  JobIdentityTest() {
    notified.clear();
    backend.functions[kModule]["BdcSetNotifyPrint"] = reinterpret_cast<void*>(&Notify);
  }
};

TEST_F(JobIdentityTest, DeviceAndNotificationGetTheSame) {
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(notified, "02005E10ABCD021C0D2D0701F4|P1");
  EXPECT_EQ(ReadTextAt(canvas.sent["EscSetJobId"], 0, 32), u"02005E10ABCD021C0D2D0701F4");
  EXPECT_EQ(GetModuleHandleW(kModule), nullptr);  // freed again
}

TEST_F(JobIdentityTest, WithoutAdapterTheMachinePartIsRandom) {
  backend.adapters.clear();
  const std::u16string id = MakeJobId();
  EXPECT_TRUE(id.starts_with(u"ACDE48"));
  EXPECT_EQ(id.size(), 26u);
  EXPECT_EQ(id.find_first_not_of(u"0123456789ABCDEF"), std::u16string::npos);
}

TEST_F(JobIdentityTest, AProgramWithTheNetworkLibraryIsLeftAlone) {
  backend.functions[u"netapi32.dll"] = {};
  const HMODULE held = LoadLibraryW(u"netapi32.dll");
  EXPECT_TRUE(MakeJobId().starts_with(u"ACDE48"));
  FreeLibrary(held);
  EXPECT_TRUE(MakeJobId().starts_with(u"02005E"));
}

TEST_F(JobIdentityTest, BytesEndBehindAWholeCharacter) {
  EXPECT_EQ(NotifyJob(printer.get(), std::u16string(30, u'i') + u"ä", u"P" + std::u16string(220, u'ü')), 42);
  EXPECT_EQ(notified.find('|'), 30u) << "31 bytes would split the last character";
  EXPECT_EQ(notified.size(), 30u + 1 + 439);
  EXPECT_EQ(notified.find("\xEF\xBF\xBD"), std::string::npos);
}

TEST_F(JobIdentityTest, WhatIsMissingIsNotNotified) {
  EXPECT_EQ(NotifyJob(printer.get(), u"id", u""), 0);
  EXPECT_EQ(NotifyJob(printer.get(), u"", u"P1"), 0);
  EXPECT_EQ(NotifyJob(printer.get(), u"id", u"P1"), 42);
  backend.clockFails = true;
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(notified, "id|P1");
  EXPECT_EQ(ReadTextAt(canvas.sent["EscSetJobId"], 0, 32), u"");
  backend.functions.clear();
  EXPECT_EQ(NotifyJob(printer.get(), u"id", u"P1"), 0);
}

TEST(TextScramble, IsItsOwnInverseWithinItsField) {
  const std::u16string text = u" !09AZaz~{|}";
  EXPECT_EQ(TextScramble(TextScramble(text, SecretKind::kUser), SecretKind::kUser), text);
  EXPECT_EQ(TextScramble(text, SecretKind::kSecurePrint).size(), 11u);
  EXPECT_EQ(TextScramble(text, SecretKind::kDepartment).size(), 8u);
  EXPECT_EQ(TextScramble(std::u16string_view(u"ab\0cd", 5), SecretKind::kUser).size(), 2u);
  EXPECT_EQ(TextScramble(u"", SecretKind::kUser), u"");
  EXPECT_EQ(TextScramble(u"A", SecretKind::kUser), u"\x5A1B");  // stored records depend on it
}

}  // namespace
}  // namespace heron::test
