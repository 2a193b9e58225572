// The overlay page: its list of forms, the names that it accepts, and what it asks before files change.
#include "forms/form_list.h"
#include "sheet_fixture.h"

namespace heron::test {
namespace {

using platform::IDNO;
using platform::IDYES;

class OverlayPageTest : public SheetTest {
 protected:
  OverlayPageTest() {
    for (uint32_t n = 29514; n <= 29522; ++n) backend.modules[kResourceModule][n] += u"%s";
    backend.modules[kResourceModule][29540] = u"(no forms)";
    for (const char16_t* name : {u"/f/a.vxf", u"/f/b.vxf", u"/f/c.vxf"}) Store(name);
  }

  void Store(const std::u16string& path, int color = 1) {
    const std::string comment =
        "Model=Varnell 70/36MX-2 PCL;System=0;Destination=US;PDL=0;Color=" + std::to_string(color) + ";Reserved=0;";
    std::string bytes =
        "  \xC8\xC1" + std::string(1, static_cast<char>(comment.size())) + '\0' + comment + "\xF8\x81\x47";
    bytes.resize(300, ' ');
    backend.files.content[path] = std::make_shared<std::vector<uint8_t>>(bytes.begin(), bytes.end());
  }
  /// A sheet whose list has these forms, with its overlay page.
  void OpenList(const std::vector<std::u16string>& forms, const std::string& settings) {
    OpenPage(settings);
    SetForms(*ui().stores.overlays, forms);
    page = sheet->Show("overlay");
  }
  std::string Fields() { return page->TextOf("formFolder") + page->TextOf("formFile"); }
  int Chosen() { return SlotAs<u"bOverlayIndex", uint8_t>(ui()); }
  std::string List() {
    std::string text;
    for (const std::u16string& path : FormsIn(*ui().stores.overlays)) text += platform::ToUtf8(path) + ' ';
    return text;
  }
  /// The user gives this path; the messages after the question for it.
  std::string Browse(std::optional<std::u16string> path) {
    desk.AnswerPath(std::move(path));
    page->Click("browseForms");
    const std::string told = desk.Told();
    const size_t asked = told.find("|path?");
    EXPECT_NE(asked, std::string::npos);
    return told.substr(std::min(told.find(" / "), told.size()));
  }
  /// Leaves the page: "left", or the messages.
  std::string Leave() {
    ScriptedDialog* const next = sheet->Show("paper");
    if (next == nullptr) return desk.Told() + " at " + page->FocusedName();
    page = sheet->Show("overlay");
    return "left";
  }
};

TEST_F(OverlayPageTest, AnEmptyListSaysSo) {
  OpenList({}, "lpOverlay=PrintWithForm");
  EXPECT_EQ(Fields(), "(no forms)*.vxf");
  EXPECT_EQ(Leave(), "[29510]|[29515]*.vxf at formFile");
  page->Press("lpOverlay.NoOverlay");
  EXPECT_EQ(Leave(), "left");
}

TEST_F(OverlayPageTest, TheSelectedFormIsPrinted) {
  backend.files.content.erase(u"/f/b.vxf");
  OpenList({u"/f/a.vxf", u"/f/b.vxf", u"/f/c.vxf"}, "lpOverlay=PrintWithForm");
  EXPECT_EQ(List(), "/f/a.vxf /f/c.vxf ") << "a form that is gone leaves the list";
  EXPECT_EQ(Fields(), "/f/a.vxf");
  page->Select("forms", 1);
  EXPECT_EQ(Fields(), "/f/c.vxf");
  EXPECT_EQ(Chosen(), 1);
  EXPECT_EQ(Leave(), "left");
  page->Put("formFile", u"a");
  EXPECT_EQ(Leave(), "left");
  EXPECT_EQ(Chosen(), 0) << "what the fields name when the page is left";
  page->Check("OverlayPrompt", true);
  EXPECT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"lpOverlay">(sheet->out), 4);
  EXPECT_EQ(GetText<"overlayName">(sheet->out), u"/f/a.vxf");
}

TEST_F(OverlayPageTest, AnAskingFormShowsAsPrintedAndAskedFor) {
  OpenList({u"/f/a.vxf"}, "lpOverlay=PrintWithForm OverlayPrompt=On");
  EXPECT_TRUE(sheet->Apply());
  EXPECT_TRUE(sheet->Confirm());
  DriverEnv record = sheet->out;
  ASSERT_EQ(Get<"lpOverlay">(record), 4);
  sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), kMayChangePrinterData);
  sheet->SetInput(record);
  ASSERT_EQ(sheet->Open(), 1);
  page = sheet->Show("overlay");
  EXPECT_TRUE((*page)["lpOverlay.PrintWithForm"].checked);
  EXPECT_TRUE((*page)["OverlayPrompt"].checked);
  EXPECT_EQ(Fields(), "/f/a.vxf");
}

TEST_F(OverlayPageTest, HeadingsSortTheListAndTheFormStaysChosen) {
  OpenList({u"/f/b.vxf", u"/f/a.vxf", u"/f/c.vxf"}, "lpOverlay=PrintWithForm");
  page->ClickHeading("forms", 0);
  EXPECT_EQ(List(), "/f/a.vxf /f/b.vxf /f/c.vxf ");
  EXPECT_EQ(Chosen(), 1);
  EXPECT_EQ(page->SelectedText("forms"), "b.vxf");
  page->ClickHeading("forms", 0);
  EXPECT_EQ(List(), "/f/c.vxf /f/b.vxf /f/a.vxf ");
  page->ClickHeading("forms", 3);
  page->ClickHeading("forms", 0);
  EXPECT_EQ(List(), "/f/a.vxf /f/b.vxf /f/c.vxf ") << "each column has a direction of its own";
}

TEST_F(OverlayPageTest, BrowsingAddsAForm) {
  OpenList({u"/f/a.vxf"}, "lpOverlay=PrintWithForm");
  EXPECT_EQ(Browse(u"/f/b"), "");
  EXPECT_EQ(List(), "/f/a.vxf /f/b.vxf ");
  EXPECT_EQ(Chosen(), 1);
  EXPECT_EQ(Browse(u"/f/b.VXF"), " / [29510]|[29517]/f/b.VXF");
  backend.files.content[u"/f/x.vxf"] = std::make_shared<std::vector<uint8_t>>(500, uint8_t{1});
  EXPECT_EQ(Browse(u"/f/x.vxf"), " / [29510]|[29521]/f/x.vxf");
  EXPECT_EQ(Browse(std::nullopt), "");
  EXPECT_EQ(List(), "/f/a.vxf /f/b.vxf ");
}

TEST_F(OverlayPageTest, AFormIsMadeUnderALegalName) {
  OpenList({}, "lpOverlay=CreateForm");
  EXPECT_EQ(Browse(u"/f/new.txt"), " / [29511]|[29516]/f/new.txt");
  EXPECT_EQ(Browse(u"/f/new"), "");
  EXPECT_EQ(Fields(), "/f/new.vxf");
  EXPECT_EQ(Leave(), "left");
  page->Put("formFile", u".vxf");
  EXPECT_EQ(Leave(), "[29511]|[29514]/f/.vxf at formFile");
  page->Put("formFile", u"a");
  desk.Answer(IDNO);
  EXPECT_EQ(Leave(), "[29511]|[29518]/f/a.vxf? at formFile");
  desk.Answer(IDYES);
  EXPECT_EQ(Leave(), "left");
  desk.Told();
  EXPECT_EQ(Leave(), "left") << "what was agreed to isn't asked again";
  backend.files.protectedPaths = {u"/f"};
  page->Put("formFile", u"elsewhere");
  EXPECT_EQ(Leave(), "[29511]|[29520]/f/elsewhere.vxf at formFile");
  backend.files.protectedPaths.clear();
  EXPECT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"lpOverlay">(sheet->out), 2);
  EXPECT_EQ(GetText<"overlayName">(sheet->out), u"/f/elsewhere.vxf");
}

TEST_F(OverlayPageTest, AFormThatWasMadeJoinsTheList) {
  OpenPage("lpOverlay=CreateForm");
  std::u16string(u"/f/b.vxf").copy(ui().stores.overlays->createFileName, 8);
  page = sheet->Show("overlay");
  EXPECT_EQ(List(), "/f/b.vxf ");
  EXPECT_EQ(Fields(), "/f/b.vxf");
  EXPECT_EQ(Leave(), "left") << "the same file again needs no question";
}

TEST_F(OverlayPageTest, DeletingAsksAndDeletesTheFile) {
  OpenList({u"/f/a.vxf", u"/f/b.vxf"}, "lpOverlay=PrintWithForm");
  page->Select("forms", 1);
  desk.Answer(IDNO);
  page->Click("deleteForm");
  EXPECT_EQ(desk.Told(), "[29512]|[29519]/f/b.vxf?");
  EXPECT_EQ(List(), "/f/a.vxf /f/b.vxf ");
  desk.Answer(IDYES);
  page->Click("deleteForm");
  desk.Told();
  EXPECT_EQ(List(), "/f/a.vxf ");
  EXPECT_FALSE(backend.files.content.contains(u"/f/b.vxf"));
  EXPECT_EQ(page->TextOf("formFile"), "");
  EXPECT_EQ(Chosen(), 0);
  page->Put("formFile", u"none");
  page->Click("deleteForm");
  EXPECT_EQ(desk.Told(), "[29510]|[29515]/f/none.vxf");
  page->Put("formFile", u"a");
  backend.files.writable = false;
  desk.Answer(IDYES);
  page->Click("deleteForm");
  EXPECT_EQ(List(), "/f/a.vxf ") << "a file that can't be deleted stays";
}

TEST_F(OverlayPageTest, LongNamesAreShortenedInMessages) {
  const std::u16string folder = u"/" + std::u16string(33, u'f') + u"/";
  OpenList({}, "lpOverlay=CreateForm");
  EXPECT_EQ(Browse(folder + std::u16string(40, u'n') + u".txt"),
            " / [29511]|[29516]/" + std::string(27, 'f') + ".../" + std::string(28, 'n') + "...");
}

}  // namespace
}  // namespace heron::test
