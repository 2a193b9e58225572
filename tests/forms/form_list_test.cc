// The list of forms: order, what is shown of files, which names a form may have, and forms that fit no longer.
#include "forms/form_list.h"

#include "engine/setting.h"
#include "platform/api/text.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"

namespace heron::test {
namespace {

using platform::ToUtf8;

class FormListTest : public DriverTest {
 protected:
  FormListTest() {
    DriverEnv record;
    BuildDefaultEnv(resources.get(), &record, u"P1", printer.get());
    ui = CreateUiState(resources.get(), record, printer.get());
  }

  void Store(const std::u16string& path, int color = 1, size_t size = 200) {
    const std::string comment =
        "Model=Varnell 70/36MX-2 PCL;System=0;Destination=US;PDL=0;Color=" + std::to_string(color) + ";Reserved=0;";
    std::string bytes =
        "  \xC8\xC1" + std::string(1, static_cast<char>(comment.size())) + '\0' + comment + "\xF8\x81\x47";
    bytes.resize(std::max(bytes.size(), size), ' ');
    backend.files.content[path] = std::make_shared<std::vector<uint8_t>>(bytes.begin(), bytes.end());
  }
  OverlayStore& store() { return *ui->stores.overlays; }
  uint8_t& Chosen() { return SlotAs<u"bOverlayIndex", uint8_t>(*ui); }
  std::string List() {
    std::string text;
    for (const std::u16string& path : FormsIn(store())) text += ToUtf8(path) + ' ';
    return text;
  }
  std::string Sorted(int column, bool ascending) {
    std::vector<FormRow> rows = FormRowsOf(store());
    SortFormRows(rows, column, ascending);
    std::string text;
    for (const FormRow& row : rows) text += ToUtf8(row.cells[0]) + ' ';
    return text;
  }

  UiStatePtr ui;
};

TEST_F(FormListTest, RemovingKeepsTheChosenForm) {
  for (size_t removed = 0; removed < 3; ++removed) {
    for (uint8_t chosen = 0; chosen < 3; ++chosen) {
      SetForms(store(), {u"/a", u"/b", u"/c"});
      Chosen() = chosen;
      const std::u16string before = FormsIn(store())[chosen];
      RemoveForm(*ui, removed);
      EXPECT_EQ(FormsIn(store()).size(), 2U);
      EXPECT_EQ(FormsIn(store())[Chosen()], removed == chosen ? FormsIn(store())[0] : before);
    }
  }
}

TEST_F(FormListTest, HoldsAHundred) {
  for (int i = 0; i < 100; ++i) EXPECT_TRUE(AddForm(store(), u"/" + platform::FromUtf8(std::to_string(i))));
  EXPECT_FALSE(AddForm(store(), u"/one more"));
  EXPECT_EQ(PlaceOfForm(store(), u"/99"), 99U);
  store().forms[2][0] = 0;  // an empty entry ends a list, whatever its count says
  store().formListNum = 0xFFFF;
  EXPECT_EQ(List(), "/0 /1 ");
  EXPECT_FALSE(AddForm(store(), u"/" + std::u16string(259, u'x')));
  EXPECT_TRUE(AddForm(store(), u"/" + std::u16string(258, u'x')));
}

TEST_F(FormListTest, FormsThatDontFitLeaveTheList) {
  Store(u"/good.vxf");
  Store(u"/color.vxf", 2);
  backend.files.content[u"/other.vxf"] = std::make_shared<std::vector<uint8_t>>(500, uint8_t{7});
  SetForms(store(), {u"/other.vxf", u"/gone.vxf", u"/good.vxf", u"/color.vxf"});
  Chosen() = 3;
  engine::Setting<u"lpColorMode">(*ui) = 2;
  DropUnfitForms(*ui);
  EXPECT_EQ(List(), "/good.vxf /color.vxf ") << "a form in colour stays";
  EXPECT_EQ(Chosen(), 1);
  EXPECT_TRUE(backend.files.content.contains(u"/other.vxf")) << "the file stays on the disk";
}

TEST_F(FormListTest, ShowsAndSortsFiles) {
  Store(u"/b.vxf", 1, 1024);
  Store(u"/a.vxf", 1, 20000);
  Store(u"/C.vxf", 1, 4000);
  const auto write = [&](const char16_t* path, uint16_t year, uint16_t month, uint16_t day, uint16_t hour,
                         uint16_t minute) {
    backend.files.written[path] = {.wYear = year,
                                   .wMonth = month,
                                   .wDayOfWeek = 0,
                                   .wDay = day,
                                   .wHour = hour,
                                   .wMinute = minute,
                                   .wSecond = 0,
                                   .wMilliseconds = 0};
  };
  write(u"/b.vxf", 1999, 12, 31, 23, 5);
  write(u"/a.vxf", 2026, 1, 2, 3, 4);
  write(u"/C.vxf", 2059, 7, 8, 9, 10);
  SetForms(store(), {u"/a.vxf", u"/b.vxf", u"/C.vxf"});
  const std::vector<FormRow> rows = FormRowsOf(store());
  EXPECT_EQ(ToUtf8(rows[1].cells[1] + u"|" + rows[1].cells[2] + u"|" + rows[1].cells[3]), "/|1KB|99/12/31 23:05");
  EXPECT_EQ(ToUtf8(rows[0].cells[2] + u"|" + rows[0].cells[3]), "20KB|26/01/02 3:04");
  EXPECT_EQ(Sorted(0, true), "a.vxf b.vxf C.vxf ");
  EXPECT_EQ(Sorted(0, false), "C.vxf b.vxf a.vxf ");
  EXPECT_EQ(Sorted(1, true), "a.vxf b.vxf C.vxf ") << "equal rows stay";
  EXPECT_EQ(Sorted(2, true), "b.vxf a.vxf C.vxf ") << "sizes as texts: 1KB 20KB 4KB";
  EXPECT_EQ(Sorted(3, true), "b.vxf a.vxf C.vxf ") << "two centuries";
  for (const auto& [bytes, text] : {std::pair(0U, u"1KB"), {311U, u"1KB"}, {1335U, u"1KB"}, {1336U, u"2KB"}})
    EXPECT_EQ(FormSizeText(bytes), text) << bytes;
}

TEST_F(FormListTest, NamesOfNewForms) {
  const auto problem = [](const std::u16string& folder, const std::u16string& name) {
    const FormVerdict verdict = CheckNewForm({folder, name});
    return verdict.problem != 0 ? std::to_string(verdict.problem)
                                : ToUtf8(verdict.Path()) + (verdict.exists ? "!" : "");
  };
  EXPECT_EQ(problem(u"/f/", u"letter"), "/f/letter.vxf");
  EXPECT_EQ(problem(u"/f", u"letter.vxf"), "/f/letter.vxf");
  EXPECT_EQ(problem(u"/f/", u"/g/letter"), "/g/letter.vxf");
  for (const char16_t* name : {u"", u".vxf", u"*.vxf", u"a*.vxf", u"a .vxf", u"a*", u"/g/"})
    EXPECT_EQ(problem(u"/f/", name), "29514") << ToUtf8(name);
  for (const char16_t* name : {u"a.VXF", u"a.b.vxf", u"a.", u"a.txt"})
    EXPECT_EQ(problem(u"/f/", name), "29516") << ToUtf8(name);
  EXPECT_EQ(problem(u"/f/", std::u16string(259, u'x')), "29520");
  EXPECT_EQ(problem(u"/f/", std::u16string(253, u'x')), "29520") << "with folder and extension it is too long";
  Store(u"/f/there.vxf");
  EXPECT_EQ(problem(u"/f/", u"there"), "/f/there.vxf!");
  backend.files.protectedPaths = {u"/f/there.vxf"};
  EXPECT_EQ(problem(u"/f/", u"there"), "29520");
  backend.files.awayFolders = {u"/away"};
  EXPECT_EQ(problem(u"/away/", u"a"), "29520");
}

TEST_F(FormListTest, NamesOfListedForms) {
  Store(u"/f/a.vxf");
  Store(u"/f/color.vxf", 2);
  Store(u"/f/other.vxf");
  SetForms(store(), {u"/f/a.vxf", u"/f/color.vxf", u"/f/gone.vxf"});
  engine::Setting<u"lpColorMode">(*ui) = 2;
  const auto problem = [&](const char16_t* name) { return CheckListedForm(*ui, {u"/f/", name}).problem; };
  EXPECT_EQ(problem(u"a"), 0U);
  EXPECT_EQ(problem(u"other"), 29515U);
  EXPECT_EQ(problem(u"*.vxf"), 29515U);
  EXPECT_EQ(problem(u"gone.vxf"), 29521U);
  EXPECT_EQ(problem(u"color.vxf"), 29522U);
  engine::Setting<u"lpColorMode">(*ui) = 1;
  EXPECT_EQ(problem(u"color.vxf"), 0U);
}

}  // namespace
}  // namespace heron::test
