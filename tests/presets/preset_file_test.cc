// Settings files: their bytes, what comes back from them, and what a damaged one does.
#include <set>

#include "preset_fixture.h"

namespace heron::test {
namespace {

std::vector<std::string> SectionsOf(const std::string& bytes) {
  std::vector<std::string> sections;
  for (size_t at = 0; at < bytes.size(); at = bytes.find('\n', at) + 1) {
    if (bytes[at] == '[') sections.push_back(bytes.substr(at, bytes.find('\r', at) - at));
  }
  return sections;
}

std::string Line(const std::string& bytes, const std::string& section, const std::string& key) {
  const size_t from = bytes.find("[" + section + "]\r\n");
  const size_t end = bytes.find("\r\n[", from);
  const size_t at = bytes.find("\r\n" + key + "=", from);
  return from == std::string::npos || at >= end ? "none" : bytes.substr(at + 2, bytes.find("\r\n", at + 2) - at - 2);
}

TEST_F(LibraryTest, ANewFileHoldsItsSectionsAndKeysInOrder) {
  platform::Profile file;
  WriteLibraryName(file, u" Two staples");
  WriteLibraryComment(file, u"first\r\nsec\tond\n");
  WriteDriverIdentity(file, {});
  ASSERT_TRUE(LibraryWriteSettings(*ui, file));
  const std::string bytes = file.Bytes();
  EXPECT_TRUE(
      bytes.starts_with("[IP_SETTING LIBRARY NAME]\r\nname=* Two staples*\r\n"
                        "[IP_SETTING LIBRARY COMMENT]\r\n0=*first*\r\n1=*sec ond*\r\n2=**\r\ncommentX=3\r\n"
                        "[IP_SETTING LIBRARY DRIVERINFO]\r\nmanufacture=Varnell\r\n"
                        "product=Varnell PCL6 Driver\r\nsystem=MS Windows NT4.0\r\n"
                        "model=Varnell 70/36MX-2 PCL\r\nversion=02.00.00.00\r\nversionnum=33554432\r\n"
                        "usetversion=1\r\nDrvLanguage=CHS\r\nDrvMachineDestination=US\r\nreserved0=0\r\n"
                        "reserved1=0\r\nreserved2=0\r\nreserved3=0\r\nreserved4=0\r\n"
                        "[IP_SETTING LIBRARY UIPARAM]\r\nlpOrientation=1\r\nlpMediaSize="))
      << bytes.substr(0, 900);
  const std::string plain_end = "lpAuthUserMode=" + std::to_string(SlotAs<u"lpAuthUserMode", RadioBlock>(*ui).value) +
                                "\r\npagenumStr=\r\n[Faxcoversheet Subject]\r\n0=\r\n";
  EXPECT_NE(bytes.find(plain_end), std::string::npos);
  EXPECT_NE(bytes.find("[Faxcoversheet Comment]\r\n999=0\r\n0=*\r\n[User Defined Name]\r\n1=*"), std::string::npos);
  EXPECT_NE(bytes.find("[ISListData 10]\r\nISListNum=0\r\nMixplex="), std::string::npos);
  EXPECT_NE(bytes.find("[MEDIATYPELISTDATA]\r\nMax_Cnt=0\r\nindex=0\r\nMEDIATYPEITEMDATA00_MediaSource="),
            std::string::npos);
  EXPECT_NE(bytes.rfind("MEDIATYPEITEMDATA09_PaperPunch_Check=0\r\n"), std::string::npos);

  const std::vector<std::string> sections = SectionsOf(bytes);
  EXPECT_EQ(std::set<std::string>(sections.begin(), sections.end()).size(), sections.size());
  const std::vector<std::string> last(sections.end() - 6, sections.end());
  EXPECT_EQ(last, (std::vector<std::string>{"[Watermark Center(Y)]", "[Simple Data]", "[Text Data]", "[Photo Data]",
                                            "[Graph Data]", "[MEDIATYPELISTDATA]"}));
  for (size_t at = bytes.find('\n'); at != std::string::npos; at = bytes.find('\n', at + 1)) {
    ASSERT_EQ(bytes[at - 1], '\r') << at;
  }
}

TEST_F(LibraryTest, EveryKeyComesBackAndASecondWriteGivesTheSameBytes) {
  for (const int items : {0, 1, 7, 1000}) {
    Randomize(*ui, static_cast<uint32_t>(items), items);
    const std::string bytes = Written(*ui);
    SetBytes(bytes);
    const UiStatePtr other = Create();
    ASSERT_TRUE(LibraryReadSettings(*other, kFile, resources.get()));
    const auto wanted = Values(*ui);
    const auto found = Values(*other);
    ASSERT_EQ(wanted.size(), found.size());
    for (const auto& [name, value] : wanted) EXPECT_EQ(found.at(name), value) << items << ' ' << name;
    EXPECT_EQ(Written(*other), bytes);
    // An existing file is rewritten in place.
    ASSERT_TRUE(LibraryWriteSettings(*other, kFile));
    EXPECT_EQ(Bytes(), bytes);
  }
}

TEST_F(LibraryTest, ARewriteKeepsWhatIsNotOursAndPutsNewKeysAtTheEndOfTheirSection) {
  SetBytes(
      "; by hand\r\n[Mine]\r\nx=1\r\n[IP_SETTING LIBRARY UIPARAM]\r\nCopies=7\r\nunknown=2\r\nCopies=8\r\n\r\n"
      "[Faxcoversheet Comment]\r\n0=*a\r\n1=*b\r\n2=*c\r\n");
  SlotAs<u"Copies", NumericBlock>(*ui).value = 12;
  Put(ui->stores.faxCover->text, u"one\r\ntwo");
  ASSERT_TRUE(LibraryWriteSettings(*ui, kFile));
  const std::string bytes = Bytes();
  EXPECT_TRUE(
      bytes.starts_with("; by hand\r\n[Mine]\r\nx=1\r\n[IP_SETTING LIBRARY UIPARAM]\r\nCopies=12\r\nunknown=2\r\n"
                        "Copies=8\r\nlpOrientation=1\r\n"));
  EXPECT_NE(bytes.find("pagenumStr=\r\n\r\n[Faxcoversheet Comment]\r\n0=*one\r\n1=*two\r\n999=0\r\n"
                       "[Faxcoversheet Subject]\r\n"),
            std::string::npos);
  ASSERT_TRUE(LibraryReadSettings(*ui, kFile, resources.get()));
  EXPECT_EQ((SlotAs<u"Copies", NumericBlock>(*ui).value), 12);
  EXPECT_EQ(std::u16string_view(ui->stores.faxCover->text), u"one\r\ntwo");
}

TEST_F(LibraryTest, AFileOfThreeKeysLeavesTheRestAtItsDefaults) {
  const auto before = Values(*ui);
  ASSERT_TRUE(Read("[IP_SETTING LIBRARY UIPARAM]\r\n  Copies=3\r\nlpStaple=2\r\n[Watermark]\r\nWMarkListNum=0\r\n"));
  EXPECT_EQ((SlotAs<u"Copies", NumericBlock>(*ui).value), 3);
  EXPECT_EQ((SlotAs<u"Copies", NumericBlock>(*ui).committed), 1) << "committed values are the pages' to set";
  std::string changed;
  for (const auto& [name, value] : Values(*ui)) {
    const bool may = name.find("Copies") != std::string::npos || name.starts_with("User") || name.starts_with("IS") ||
                     name.starts_with("Tab") || name.starts_with("Fax") || name.starts_with("Watermark");
    if (!may && before.contains(name) && before.at(name) != value) changed += name + ' ';
  }
  // A setting without a feature has a stored default, and one that the catalogue hasn't got is repaired.
  const std::string plain = "IP_SETTING LIBRARY UIPARAM/";
  EXPECT_EQ(changed, plain + "InterSheetListData_Mixplex#5 " + plain + "TabTextFontName#5 " + plain +
                         "lpInterSheetListMediaType#5 " + plain + "lpStaple#1 ");
  EXPECT_EQ(ui->stores.watermarks->wMarkListNum, 0);
  EXPECT_EQ(ui->stores.faxCover->zoom, 100u) << "the stored default";
}

TEST_F(LibraryTest, CountsBoundListsAndListsWithoutACountAreCounted) {
  struct Case {
    const char* count;
    int wanted;
  };
  const std::string pages = "Page0=1\r\nPage1=2\r\nPage2=3\r\nPage4=5\r\nTray0=1\r\n";
  for (const Case& c : {Case{"ISListNum=2\r\n", 2}, Case{"ISListNum=0\r\n", 0}, Case{"ISListNum=-1\r\n", 30},
                        Case{"ISListNum=31\r\n", 30}, Case{"ISListNum=65535\r\n", 30}, Case{"ISListNum=65536\r\n", 0},
                        Case{"", 1}, Case{"ISListNum=error\r\n", 1}, Case{"ISListNum=2x\r\n", 1}}) {
    ASSERT_TRUE(Read("[ISListData 4]\r\n" + std::string(c.count) + pages));
    const PageList& list = ui->stores.pageLists->lists[3];
    EXPECT_EQ(list.pageCount, c.wanted) << c.count;
    EXPECT_EQ(std::u16string_view(list.pages[0].page), c.wanted > 0 ? u"1" : u"") << c.count;
    EXPECT_EQ(std::u16string_view(list.pages[2].page), c.wanted == 2 || c.wanted == 0 ? u"" : u"3") << c.count;
    EXPECT_EQ(std::u16string_view(list.pages[4].page), u"") << "a list ends at its first gap";
    EXPECT_EQ(ui->stores.pageLists->lists[4].pageCount, 0);
  }
  std::string forms = "[Overlay File]\r\n";
  for (int n = 0; n <= 101; ++n) forms += std::to_string(n) + "=form\r\n";
  ASSERT_TRUE(Read(forms + "[Watermark]\r\nWMarkListNum=52\r\n[Watermark String]\r\n0=a\r\n"));
  EXPECT_EQ(ui->stores.overlays->formListNum, 100);
  EXPECT_EQ(ui->stores.watermarks->wMarkListNum, 51);
}

TEST_F(LibraryTest, NumbersAreDigitsWithASignAndWrapToTheirField) {
  const auto angle = [&](const std::string& value) {
    EXPECT_TRUE(Read("[Watermark]\r\nWMarkListNum=1\r\n[Watermark Angle]\r\n0=" + value + "\r\n"));
    return ui->stores.watermarks->entries[0].angle;
  };
  ui->stores.watermarks->entries[0].angle = 77;
  for (const char* bad : {"", "-", "+", "1 ", " 1", "0x1", "1.", "--1", "12\t"}) EXPECT_EQ(angle(bad), 77) << bad;
  EXPECT_EQ(angle("-90"), -90);
  EXPECT_EQ(angle("+4294967295"), -1);
  EXPECT_EQ(angle("18446744073709551617"), 1) << "20 digits";
  EXPECT_EQ(angle("error"), 0) << "absent: the stored default";
  EXPECT_EQ(angle(std::string(16383, '0') + "5\r\n"), 0) << "as long as the line buffer: absent";
  EXPECT_EQ(angle(std::string(16382, '0') + "5\r\n"), 5);
}

TEST_F(LibraryTest, TextsKeepWhatTheirStyleProtects) {
  ASSERT_TRUE(Read("[ISListName]\r\nName1=* a *\r\nName2=bc\r\nName3=*\r\nName4=" + std::string(19, '*') +
                   "\r\nName5=" + std::string(18, '*') +
                   "\r\n[User Defined Name]\r\n1=* n \r\n2=*\r\n[Faxcoversheet Subject]\r\n0= s\xE5\xAE\x8B \r\n"
                   "[Faxcoversheet Comment]\r\n1=*second\r\n0=* first\r\n2=" +
                   std::string(641, 'x') + "\r\n3=last\r\n5=*unreached\r\n"));
  const auto& lists = ui->stores.pageLists->lists;
  EXPECT_EQ(std::u16string_view(lists[0].name), u" a ");
  EXPECT_EQ(std::u16string_view(lists[1].name), u"bc");
  EXPECT_EQ(std::u16string_view(lists[2].name), u"");
  EXPECT_EQ(std::u16string_view(lists[3].name), u"") << "beyond the field and its wrapper: absent";
  EXPECT_EQ(std::u16string_view(lists[4].name), std::u16string(16, u'*'));
  EXPECT_EQ(std::u16string_view((*ui->stores.userPapers)[0].name), u" n ");
  EXPECT_EQ(std::u16string_view(ui->stores.faxCover->subject), u" s宋 ") << "the raw scan keeps blanks";
  EXPECT_EQ(std::u16string_view(ui->stores.faxCover->text), u" first\r\nsecond\r\nlast");
  EXPECT_EQ(std::u16string_view(SlotAs<u"lpInterSheetList", ListBlock>(*ui).Items()[0].label), u" a ");

  Put(ui->stores.faxCover->subject, u" \ta\r\n[Mine]\x1b ");
  Put(ui->stores.faxCover->text, u"a\tb\rc\r\n");
  const std::string bytes = Written(*ui);
  EXPECT_EQ(Line(bytes, "Faxcoversheet Subject", "0"), "0=a  [Mine]") << "no control character makes a line";
  EXPECT_EQ(Line(bytes, "Faxcoversheet Comment", "0"), "0=*a b c");
  EXPECT_EQ(Line(bytes, "Faxcoversheet Comment", "1"), "1=*");
  EXPECT_EQ(Line(bytes, "ISListName", "Name1"), "Name1=* a *");
}

TEST_F(LibraryTest, OddFilesReadAsFarAsTheyAreSettingsFiles) {
  const auto copies = [&](const std::string& bytes) {
    SlotAs<u"Copies", NumericBlock>(*ui).value = 9;
    EXPECT_TRUE(Read(bytes));
    return SlotAs<u"Copies", NumericBlock>(*ui).value;
  };
  const std::string head = "[IP_SETTING LIBRARY UIPARAM]\r\n";
  EXPECT_EQ(copies(head + "Copies=5"), 5) << "no line end";
  EXPECT_EQ(copies(head + "Copies=5\n"), 5);
  EXPECT_EQ(copies(" \t" + head + "\tCopies=5\rx\r\n"), 5);
  EXPECT_EQ(copies("[IP_SETTING LIBRARY UIPARAM]\nCopies=5\r\n"), 9) << "a heading needs CR LF";
  EXPECT_EQ(copies("[IP_SETTING LIBRARY UIPARAM] \r\nCopies=5\r\n"), 9);
  EXPECT_EQ(copies("[ip_setting library uiparam]\r\nCopies=5\r\n"), 9);
  EXPECT_EQ(copies(head + "copies=5\r\nCopies =6\r\n"), 9);
  EXPECT_EQ(copies(head + "[x\r\nCopies=5\r\n"), 9) << "any line with [ ends a section";
  EXPECT_EQ(copies(head + "Zoom=30\r\n" + head + "Copies=5\r\n"), 9) << "the first of doubled sections";
  EXPECT_EQ(copies(head + "Copies=5\r\nlpOrientation=1\r\nCopies=6\r\n"), 5) << "the first of doubled keys";
  EXPECT_EQ(copies(head + "lpDuplex=1\r\nCopies=5\r\nZoom=30\r\nlpDuplex=2\r\nCopies=6\r\n"), 5);
  EXPECT_EQ(copies(head + "Copies=1000\r\n"), 1) << "repaired";
  EXPECT_EQ(copies(std::string("a\0b\r\n", 5) + head + std::string("x=\0\r\nCopies=5\r\n", 16)), 5);
  EXPECT_EQ(copies(head + "x=" + std::string(70000, 'y') + "\r\nCopies=5\r\n"), 5);

  EXPECT_FALSE(Read(""));
  EXPECT_FALSE(Read(head + "Copies=5\r\n" + std::string(platform::kProfileLimit, ' ')));
  backend.files.content.clear();
  ui->stores.overlays->formListNum = 3;
  EXPECT_FALSE(LibraryReadSettings(*ui, kFile, resources.get()));
  EXPECT_EQ(ui->stores.overlays->formListNum, 0) << "the lists are emptied all the same";
}

TEST_F(LibraryTest, TheCodePageIsTheSystems) {
  Put(ui->stores.faxCover->subject, u"é宋\xD83D\xDE00.");
  backend.codePage = 28591;
  const std::string bytes = Written(*ui);
  EXPECT_EQ(Line(bytes, "Faxcoversheet Subject", "0"), "0=\xE9??.");
  ASSERT_TRUE(Read(bytes));
  EXPECT_EQ(std::u16string_view(ui->stores.faxCover->subject), u"é??.");
  backend.codePage = 65001;
  ASSERT_TRUE(Read(bytes));
  EXPECT_EQ(std::u16string_view(ui->stores.faxCover->subject), u"\xFFFD??.");
}

TEST_F(LibraryTest, PageNumbersAndMediaHaveTheirOwnForms) {
  const auto through = [](std::string_view text) {
    PageNumberLists lists{};
    lists.count[0] = 3;
    ParsePageNumbers(text, &lists);
    EXPECT_EQ(lists.count[0], 3) << "the other lists stay";
    return FormatPageNumbers(lists);
  };
  EXPECT_EQ(through("/C9,1-3,3,5-4"), "/C1-5,9");
  EXPECT_EQ(through("7,2"), "/C2,7") << "without a tag";
  EXPECT_EQ(through("7/C2/C1"), "/C1-2,7");
  EXPECT_EQ(through("/C1-9999"), "/C1-30");
  EXPECT_EQ(through("/C12345,x,,-,1-,4 ,0009"), "/C9");
  EXPECT_EQ(through("/C"), "");
  PageNumberLists full{};
  full.count[kChapterList] = 255;
  for (uint16_t i = 0; i < 30; ++i) full.pages[kChapterList][i] = static_cast<uint16_t>(1000 + 3 * i);
  EXPECT_EQ(FormatPageNumbers(full).size(), 2u + 149);

  const TrayTable& media = TraysOf(*ui);
  const TrayTable before = media;
  ASSERT_TRUE(
      Read("[MEDIATYPELISTDATA]\r\nMax_Cnt=-2\r\nindex=12\r\nMEDIATYPEITEMDATA00_MediaSource=77\r\n"
           "MEDIATYPEITEMDATA00_MediaType=2\r\nMEDIATYPEITEMDATA01_MediaType=200\r\n"));
  EXPECT_EQ(media.maxCount, -2);
  EXPECT_EQ(media.index, 0) << "there are ten items";
  EXPECT_EQ(media.rows[0].source, before.rows[0].source) << "never read";
  EXPECT_EQ(media.rows[0].media.mediaType, 2);
  EXPECT_EQ(media.rows[1].media.mediaType, CatalogDefault(resources.get(), 39)) << "no such media type";
  *FieldsOf(*ui, ParamNamed<u"lpMediaSource">()).value = static_cast<uint16_t>(media.rows[0].source);
  RefreshTrayMedia(*ui);
  EXPECT_EQ(*FieldsOf(*ui, ParamIndexOf(510)).value, 2);
}

TEST_F(LibraryTest, AGroupIsCopiedAloneAndRepaired) {
  const UiStatePtr source = Create();
  for (int group = 0; group <= 8; ++group) {
    const UiStatePtr target = Create();
    Randomize(*source, 5, 4);
    const auto old_values = Values(*target);
    const auto wanted = Values(*source);
    CopySettingsGroup(*target, *source, group, resources.get());
    const auto found = Values(*target);
    for (const auto& [name, value] : found) {
      if (name.find('#') == std::string::npos) continue;
      const bool copied = name.ends_with("#" + std::to_string(group));
      EXPECT_EQ((copied ? wanted : old_values).at(name), value) << group << ' ' << name;
    }
    EXPECT_EQ(found.at("pages"), group == 1 ? wanted.at("pages") : old_values.at("pages"));
  }
  *FieldsOf(*source, ParamNamed<u"lpStaple">()).value = 999;
  const UiStatePtr target = Create();
  CopySettingsGroup(*target, *source, 1, resources.get());
  EXPECT_EQ(*FieldsOf(*target, ParamNamed<u"lpStaple">()).value, CatalogDefault(resources.get(), 34));
}

TEST_F(LibraryTest, BoundsOfSettingsWithoutAFeatureBelongToTheirDefaults) {
  const auto* bounds = ui->snapshots.get();
  for (const KeyEntry& key : Plan().keys) {
    if (key.field != nullptr || key.param->row->feature != kNoFeature || key.param->slotType == kTypeText ||
        key.param->slotType == kTypeBytes) {
      continue;
    }
    const uint8_t* fallback = nullptr;
    ASSERT_TRUE(GetRowDefault(key.param->selfIndex, *bounds, &fallback)) << key.param->row->id;
    StoreField value;
    ASSERT_TRUE(LocateValue(key, *ui, 1, 1, &value));
    std::memcpy(value.data, fallback, value.size);
  }
  const auto defaults = Values(*ui);
  RepairSettings(*ui, -1, resources.get());
  const auto before = Values(*ui);
  for (const auto& [name, value] : before) {
    EXPECT_TRUE(defaults.at(name) == value || name.find("MediaType") != std::string::npos) << name;
  }
  SlotAs<u"InterSheetListData_nCurrent", uint16_t>(*ui) = 11;
  SlotAs<u"bWatermarkCurrent", uint8_t>(*ui) = 51;
  SlotAs<u"lpPrnTabIndexNo", ListBlock>(*ui).value = 13;
  RepairSettings(*ui, -1, resources.get());
  EXPECT_TRUE(Values(*ui) == before);
}

TEST_F(LibraryTest, TheHeadComesBack) {
  platform::Profile file;
  const std::u16string long_name(70, u'n');
  WriteLibraryName(file, long_name);
  EXPECT_EQ(ReadLibraryName(file, kFile), long_name.substr(0, 64));
  WriteLibraryName(file, u" *a\r\n[x]* ");
  EXPECT_EQ(ReadLibraryName(file, kFile), u" *a  [x]* ");
  for (const char* bad : {"", "**", "*", "x*", "*x", "**\r\n"}) {
    file.Set("IP_SETTING LIBRARY NAME", "name", bad);
    EXPECT_EQ(ReadLibraryName(file, kFile), u"entry") << bad;
  }
  for (const std::u16string_view comment : {u"", u"one", u"a\r\nb\r\n c ", u"\r\n"}) {
    WriteLibraryComment(file, comment);
    EXPECT_EQ(ReadLibraryComment(file), comment);
  }
  WriteLibraryComment(file, std::u16string(512, u'c'));
  EXPECT_EQ(ReadLibraryComment(file).size(), 512u);
  WriteLibraryComment(file, std::u16string(300, u'c') + u"\n" + std::u16string(211, u'd'));
  EXPECT_EQ(ReadLibraryComment(file), u"") << "513 with the line end: no room";
  WriteLibraryComment(file, u"a\nb");
  file.Set("IP_SETTING LIBRARY COMMENT", "1", "b*");
  EXPECT_EQ(ReadLibraryComment(file), u"");
  file.Set("IP_SETTING LIBRARY COMMENT", "commentX", "2147483647");
  EXPECT_EQ(ReadLibraryComment(file), u"");

  DriverIdentity identity;
  EXPECT_FALSE(ReadDriverIdentity(file, &identity));
  EXPECT_EQ(identity.destination, u"error");
  WriteDriverIdentity(file, {});
  file.Set("IP_SETTING LIBRARY DRIVERINFO", "attributes", "0");
  EXPECT_TRUE(ReadDriverIdentity(file, &identity));
  EXPECT_EQ(identity.model, DriverIdentity().model);
  EXPECT_EQ(identity.attributes, 0);
  WriteDriverIdentity(file, {.manufacture = u"", .attributes = 1});
  EXPECT_FALSE(ReadDriverIdentity(file, &identity));
  EXPECT_EQ(identity.attributes, 0) << "never written";
}

TEST_F(LibraryTest, AFailedWriteLeavesTheFile) {
  SetBytes("[IP_SETTING LIBRARY UIPARAM]\r\nCopies=5\r\n");
  const std::string before = Bytes();
  backend.files.writable = false;
  EXPECT_FALSE(LibraryWriteSettings(*ui, kFile));
  EXPECT_EQ(Bytes(), before);
}

}  // namespace
}  // namespace heron::test
