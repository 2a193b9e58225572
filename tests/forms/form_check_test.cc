// What a form file says, and whether it fits.
#include "forms/form_check.h"

#include "support/driver_fixture.h"

namespace heron::test {
namespace {

constexpr char kGood[] = "Model=varnell 70/36mx-2 pcl;System=0;Destination=US;PDL=1;Color=1;Reserved=0;";

class FormTest : public DriverTest {
 protected:
  /// A form file with this comment, filled up to `size` bytes.
  void Store(const std::string& comment, size_t size = 400, std::string_view tail = "\xF8\x81\x47") {
    std::string bytes(10, ' ');
    bytes += "\xC8\xC1";
    bytes += static_cast<char>(comment.size() & 0xFF);
    bytes += static_cast<char>(comment.size() >> 8);
    bytes.append(comment).append(tail);
    bytes.resize(std::max(bytes.size(), size), ' ');
    StoreBytes(bytes);
  }
  void StoreBytes(const std::string& bytes) {
    backend.files.content[u"/a.vxf"] = std::make_shared<std::vector<uint8_t>>(bytes.begin(), bytes.end());
  }
  int Check(uint8_t pdl = 2, uint8_t color = 2) {
    DriverEnv record{};
    Set<"lpPDLType">(record, pdl);
    Set<"lpColorMode">(record, color);
    FormCheckTable table;
    FormExpectFromJob(table, record);
    return FormReadDescription(table, u"/a.vxf") ? static_cast<int>(FormCompare(table)) : -1;
  }
};

TEST_F(FormTest, FitsTheJobItWasMadeFor) {
  Store(kGood);
  EXPECT_EQ(Check(), 1);
  EXPECT_EQ(Check(1), 1);
  EXPECT_EQ(Check(0), 0);  // only a language above the job's doesn't fit
  Store(std::string(kGood) + "OS=77;Version=1;color= 2x;");
  EXPECT_EQ(Check(2, 2), 2);
  EXPECT_EQ(Check(2, 1), 1);
  EXPECT_EQ(Check(2, 3), 1);
  for (const char* wrong : {"Model=other;", "System=1;", "Destination=;", "Reserved;", "PDL=3;"}) {
    Store(std::string(kGood) + wrong);
    EXPECT_EQ(Check(), 0) << wrong;
  }
  Store(std::string(kGood) + "Model=other");  // a pair without its end is unused
  EXPECT_EQ(Check(), 1);
  Store(";=;;==" + std::string(kGood));
  EXPECT_EQ(Check(), 0);  // "==Model" is no row
}

TEST_F(FormTest, OnlyAWholeCommentIsRead) {
  Store(kGood, 400, "\xF8\x81\x48");
  EXPECT_EQ(Check(), -1);
  std::string bytes(200, ' ');
  bytes.replace(0, 2, "\xC8\xC1");  // the search starts behind the first byte
  StoreBytes(bytes);
  EXPECT_EQ(Check(), -1);
  bytes.replace(20, 4, std::string("\xC8\xC1\x05\x00", 4));  // a wrong tail, then the comment
  bytes.replace(40, 4, std::string("\xC8\xC1\x06\x00", 4)).replace(44, 9, "Model=\xF8\x81\x47");
  StoreBytes(bytes);
  EXPECT_EQ(Check(), 0);
  bytes.replace(30, 4, "\xC8\xC1\xFF\xFF");  // a length that doesn't fit ends the search
  StoreBytes(bytes);
  EXPECT_EQ(Check(), -1);
  for (size_t size = 190; size < 200; ++size) {
    bytes.assign(size, ' ');
    bytes.replace(188, std::string::npos, std::string("\xC8\xC1\x03\x00;;;\xF8\x81\x47", 10).substr(0, size - 188));
    StoreBytes(bytes);
    EXPECT_EQ(Check(), size < 198 ? -1 : 0) << size;
  }
}

TEST_F(FormTest, FilesThatAreNoForms) {
  EXPECT_EQ(Check(), -1);
  StoreBytes("");
  EXPECT_EQ(Check(), -1);
  Store(kGood, 0);
  auto& bytes = *backend.files.content[u"/a.vxf"];
  bytes.resize(163, ' ');
  EXPECT_EQ(Check(), -1);
  bytes.push_back(' ');
  EXPECT_EQ(Check(), 1);
  bytes.resize((64u << 20) + 1);
  EXPECT_EQ(Check(), -1);
}

TEST_F(FormTest, NamesAreShortenedForMessages) {
  const std::u16string folder = u"/" + std::u16string(30, u'f');
  EXPECT_EQ(ShortPath(folder + u"/a.vxf"), folder + u"/a.vxf");
  EXPECT_EQ(ShortPath(folder + u"x/" + std::u16string(32, u'n')),
            u"/" + std::u16string(27, u'f') + u".../" + std::u16string(28, u'n') + u"...");
  EXPECT_EQ(ShortPath(u"HR_DEFAULT"), u"HR_DEFAULT");
  const std::u16string pairs = std::u16string(27, u'n') + u"\U0001F600\U0001F600\U0001F600";
  EXPECT_EQ(ShortPath(pairs), std::u16string(27, u'n') + u"...");
}

}  // namespace
}  // namespace heron::test
