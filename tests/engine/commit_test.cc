// The commit: every value, the two papers, and the last checks of a fax job.
#include "changes/commit.h"

#include "resolve_fixture.h"

namespace heron::engine {
namespace {

class CommitTest : public ResolveTest {
 protected:
  void Commit() {
    front.shown.clear();
    CommitSettings(*engine, &front);
  }
  template <ParamKey kKey>
  uint16_t& Working() {
    return *FieldsOf(*ui, ParamNamed<kKey>()).value;
  }
};

TEST_F(CommitTest, EveryWorkingValueIsCommitted) {
  for (uint16_t i = 0; i < kParamRows.size(); ++i) {
    if (kParamRows[i].HasBlock()) *FieldsOf(*ui, i).value = static_cast<uint16_t>(i % 100 + 2);
  }
  Working<u"Nup_Check">() = Working<u"Layout_Check2">() = 1;
  Commit();
  for (uint16_t i = 0; i < kParamRows.size(); ++i) {
    if (!kParamRows[i].HasBlock() || kParamRows[i].key == u"lpOutputPaper") continue;
    EXPECT_EQ(*FieldsOf(*ui, i).committed, *FieldsOf(*ui, i).value) << kParamRows[i].id;
  }
  EXPECT_EQ(Committed<u"lpLayout_Select">(*ui), 1);
  EXPECT_EQ(Committed<u"lpBorder">(*ui), Working<u"lpBorder2">());
}

TEST_F(CommitTest, TheOutputPaperIsOneOfItsOwnOnlyWithZoom) {
  struct Case {
    const char* settings;
    uint16_t zoom_check, committed, kept;
  };
  const Case cases[] = {
      {"lpMediaSize=A4 lpOutputPaper=A3", 1, 8, 8},
      {"lpMediaSize=A4 lpOutputPaper=A3", 0, 9, 8},
      {"lpMediaSize=A4 lpOutputPaper=SameAsDocument", 1, 9, 257},
      {"lpMediaSize=4105 lpOutputPaper=A3", 1, 4104, 8},
  };
  for (const Case& row : cases) {
    Put(row.settings);
    Working<u"ZoomCheck">() = row.zoom_check;
    Commit();
    EXPECT_EQ(Committed<u"lpOutputPaper">(*ui), row.committed) << row.settings;
    EXPECT_EQ((SlotAs<u"QXOutputPaperSize", uint16_t>(*ui)), row.kept) << row.settings;
    EXPECT_EQ(*SlotOf(*ui, ParamIndexOf(232)), row.zoom_check);
  }
}

TEST_F(CommitTest, AFaxWithoutRecipientsGoesToThePrinter) {
  Put("lpOutput=Fax lpFAXUnit=Installed");
  ui->head().faxRowCount = 1;
  Commit();
  EXPECT_EQ(Committed<u"lpOutput">(*ui), 1);
  EXPECT_EQ(front.shown, "");
  ui->head().faxRowCount = 0;
  Commit();
  EXPECT_EQ(Committed<u"lpOutput">(*ui), 2);
  EXPECT_EQ(front.shown, "[22302]|[22300]");

  Put("lpOutput=Fax lpMediaSource=Tray3 lpSourceUnit=NotInstalled");  // a tray that isn't there
  ui->head().printerDataLocked = 0;
  Commit();
  EXPECT_EQ(Committed<u"lpMediaSource">(*ui), 7);
  EXPECT_TRUE(front.shown.starts_with("[22302]|[22308][31622]")) << front.shown;
}

TEST_F(CommitTest, ACoverPictureThatIsNotThereIsLeftOut) {
  Put("lpOutput=Fax");
  ui->head().faxRowCount = 1;
  Working<u"CoverSheet">() = Working<u"FaxCover_Image">() = 1;
  Commit();
  EXPECT_EQ(front.shown, "") << "no name, no file to miss";
  std::u16string_view(u"/missing").copy(ui->stores.faxCover->filename, 9);
  Commit();
  EXPECT_EQ(front.shown, "[22306]|\n'/missing'\n[22303][22304][22305]");
  EXPECT_EQ(Working<u"FaxCover_Image">(), 0);
  EXPECT_EQ(Committed<u"FaxCover_Image">(*ui), 0);
}

}  // namespace
}  // namespace heron::engine
