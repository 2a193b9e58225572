// What is saved and what comes back.
#include "changes/opening.h"
#include "preset_library_fixture.h"

namespace heron::test {
namespace {

class RecallTest : public SettingsLibraryTest {
 protected:
  RecallTest() {
    LoadPaperLabels();
    engine::Engine opened(*ui);
    engine::Resolver opener(opened);
    engine::OpenSettings(opener, nullptr, engine::OpeningPass::kRun);
    Open();
  }
  void RewriteKey(const char* section, const char* key, const char* value) {
    platform::Profile file(FileBytes(At(u"Saved")));
    file.Set(section, key, value);
    SetFile(At(u"Saved"), file.Bytes());
  }
  /// Recalls the saved entry into the working settings, by the rules.
  engine::ResolveOutcome Recall(uint8_t parts) {
    engine::Engine bound(*ui);
    engine::Resolver resolver(bound);
    engine::ResolveOutcome outcome;
    EXPECT_EQ(Open(), "Standard, Saved");
    EXPECT_TRUE(RecallSettings(resolver, &view, *library, 1, parts, &outcome));
    return outcome;
  }
};

TEST_F(RecallTest, ThreeKeysOfAnEditorBringTheRestToItsDefaults) {
  Value<u"lpPRNType">(*ui) = 2;
  SetFile(At(u"Saved"),
          "[IP_SETTING LIBRARY DRIVERINFO]\r\nmanufacture=Varnell\r\nproduct=x\r\nsystem=MS Windows NT4.0\r\n"
          "model=Varnell 70/36MX-2 PCL\r\nversion=02.00.00.00\r\nDrvLanguage=CHS\r\nDrvMachineDestination=US\r\n"
          "[IP_SETTING LIBRARY UIPARAM]\r\nlpOrientation=2\r\nCopies=12\r\nZoom=77\r\n");
  ASSERT_TRUE(Register(At(u"Saved")));
  const UiState& entry = *library->At(1)->state;
  EXPECT_EQ(library->At(1)->displayName, u"Saved");
  EXPECT_EQ(Value<u"Copies">(entry), 12);
  EXPECT_EQ(Value<u"lpPRNType">(entry), 2) << "a setting without a stored default keeps what it had";
  EXPECT_TRUE(Recall(kRecallSize).applied);
  EXPECT_EQ(Value<u"lpOrientation">(*ui), 2);
  EXPECT_EQ(Value<u"Copies">(*ui), 12);
}

TEST_F(RecallTest, EachPartComesOnlyWhenItIsAskedFor) {
  Value<u"Copies">(*ui) = 9;
  Value<u"lpPRNType">(*ui) = 2;
  ui->stores.watermarks->wMarkListNum = 2;
  Put(ui->stores.watermarks->entries[1].text, u"MINE");
  Put((*ui->stores.userPapers)[0].name, u"Card");
  (*ui->stores.userPapers)[0].width = 4000;
  ui->stores.overlays->formListNum = 1;
  Put(ui->stores.overlays->forms[0], u"/forms/one.vxf");
  Put(ui->stores.faxCover->subject, u"Hello");
  TraysOf(*ui).rows[0].media.paperColor = 3;
  CurrentPages(*ui)[0].page[0] = u'5';
  SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui) = 1;
  const UiStatePtr prepared = PrepareForSaving(*ui, resources.get(), view);
  ASSERT_TRUE(SaveSettingsAs(*library, *prepared, kHome, u"Saved", {}));
  const auto came = [&] {
    return std::array{Value<u"Copies">(*ui) == 9,
                      (*ui->stores.userPapers)[0].width == 4000,
                      ui->stores.watermarks->wMarkListNum == 2,
                      ui->stores.pageLists->lists[0].pageCount == 1 && CurrentPages(*ui)[0].page[0] == u'5',
                      TraysOf(*ui).rows[0].media.paperColor == 3,
                      ui->stores.faxCover->subject[0] == u'H',
                      ui->stores.overlays->formListNum == 1};
  };
  const UiStatePtr fresh = Create();
  for (int part = -1; part < 7; ++part) {
    CopyUiState(*ui, *fresh);
    ui->stores.overlays->formListNum = 2;
    EXPECT_TRUE(Recall(static_cast<uint8_t>(part < 0 ? 0 : 1 << part)).applied);
    EXPECT_EQ(Value<u"lpPRNType">(*ui), 2) << "ordinary settings always come, " << part;
    for (int i = 0; i < 7; ++i) EXPECT_EQ(came()[static_cast<size_t>(i)], i == part) << part << ' ' << i;
    EXPECT_EQ(ui->stores.overlays->formListNum, part == 6 ? 1 : 2);
  }
}

TEST_F(RecallTest, TheFlagsOfTheRecordNameTheParts) {
  EXPECT_EQ(RecallPartsOf(*ui), kRecallUserPapers | kRecallPerPage | kRecallWatermarks | kRecallFaxCover);
  Value<u"UsetPaperChk">(*ui) = Value<u"UsetFormChk">(*ui) = Value<u"UsetMediaTypeListChk">(*ui) = 1;
  EXPECT_EQ(RecallPartsOf(*ui), kAllRecallParts);
  Value<u"UsetUDPaperChk">(*ui) = Value<u"UsetTrybyPgChk">(*ui) = 0;
  EXPECT_EQ(RecallPartsOf(*ui), kAllRecallParts & ~(kRecallUserPapers | kRecallPerPage));
  Value<u"UsetWMarkChk">(*ui) = Value<u"UsetFaxcoverChk">(*ui) = 0;
  EXPECT_EQ(RecallPartsOf(*ui), kRecallSize | kRecallForms | kRecallPaperTypes);
}

TEST_F(RecallTest, WhatARecallWouldLeaveOutIsKnown) {
  const UiStatePtr prepared = PrepareForSaving(*ui, resources.get(), view);
  ASSERT_TRUE(SaveSettingsAs(*library, *prepared, kHome, u"Saved", {}));
  EXPECT_EQ(DifferingParts(*library, 1, *ui), 0) << "nothing differs, nothing is left out";
  Open();
  EXPECT_EQ(DifferingParts(*library, 1, *ui), 0) << "nor after the way through the file";
  Value<u"Copies">(*ui) = 9;
  EXPECT_EQ(DifferingParts(*library, 1, *ui), kRecallSize);
  Put((*ui->stores.userPapers)[0].name, u"Card");
  Put(ui->stores.faxCover->subject, u"Hello");
  TraysOf(*ui).rows[0].media.paperColor = 3;
  ui->stores.overlays->formListNum = 1;
  Put(ui->stores.overlays->forms[0], u"/forms/one.vxf");
  EXPECT_EQ(DifferingParts(*library, 1, *ui),
            kRecallSize | kRecallUserPapers | kRecallFaxCover | kRecallForms | kRecallPaperTypes);
}

TEST_F(RecallTest, TheZoomFollowsPapersThatCameAlone) {
  struct Case {
    uint8_t parts;
    uint16_t saved_paper, own_paper;
    bool follows;
  };
  // Paper 256 is a user's. A zoom that follows its papers isn't the 55 of the file.
  const Case cases[] = {{kRecallSize | kRecallUserPapers, 256, 9, false},
                        {kRecallSize, 256, 9, true},
                        {kRecallSize, 11, 9, false},
                        {kRecallUserPapers, 9, 9, false},
                        {kRecallUserPapers, 11, 9, true},
                        {0, 9, 9, false},
                        {0, 11, 9, true},
                        {0, 256, 256, true}};
  for (const auto& [parts, saved_paper, own_paper, follows] : cases) {
    Value<u"lpMediaSize">(*ui) = saved_paper;
    Value<u"lpOutputPaper">(*ui) = 257;
    Value<u"ZoomCheck">(*ui) = 0;
    Value<u"Zoom">(*ui) = 55;
    library->slots[1].reset();
    library->count = 1;
    MakeFile(At(u"Saved"), u"Saved");
    ASSERT_TRUE(LibraryRegisterFile(*library, LocationOf(At(u"Saved"))));
    Value<u"lpMediaSize">(*ui) = own_paper;
    ASSERT_TRUE(LibraryRecall(*library, 1, *ui, parts));
    EXPECT_EQ(Value<u"Zoom">(*ui) != 55, follows) << int{parts} << ' ' << saved_paper;
  }
}

TEST_F(RecallTest, LayoutOptionsStayInUse) {
  MakeFile(At(u"Saved"), u"Saved");
  RewriteKey("IP_SETTING LIBRARY UIPARAM", "Layout_Check2", "0");
  ASSERT_TRUE(Register(At(u"Saved")));
  ASSERT_EQ(Value<u"Layout_Check2">(*library->At(1)->state), 0);
  EXPECT_TRUE(Recall(RecallPartsOf(*ui)).applied);
  EXPECT_EQ(Value<u"Layout_Check2">(*ui), 1);
}

TEST_F(RecallTest, WhatIsForOneJobIsReportedAndNotSaved) {
  EXPECT_NE(PrepareForSaving(*ui, resources.get(), view), nullptr);
  EXPECT_EQ(view.Said(), "");
  Value<u"lpOutputMethod">(*ui) = 2;
  Value<u"lpOverlay">(*ui) = 3;
  Value<u"lpOutput">(*ui) = 1;
  Value<u"SecMana_Check">(*ui) = 1;
  Value<u"lpFaxCover_ReceivePersonal">(*ui) = 2;
  const UiStatePtr prepared = PrepareForSaving(*ui, resources.get(), view);
  const std::string said = view.Said();
  EXPECT_EQ(said.substr(0, 45), "[21103]|[25719][25720][25721][25723][25724]" + said.substr(43, 2));
  EXPECT_TRUE(said.ends_with("[25725]"));
  EXPECT_EQ(Value<u"lpOutputMethod">(*prepared), 1);
  EXPECT_EQ(Value<u"lpOverlay">(*prepared), 1);
  EXPECT_EQ(Value<u"lpOutput">(*prepared), 2);
  EXPECT_EQ(Value<u"SecMana_Check">(*prepared), 0);
  EXPECT_EQ(Value<u"lpFaxCover_ReceivePersonal">(*prepared), 0);
  EXPECT_EQ(Value<u"lpOutput">(*ui), 1) << "the settings themselves stay";
}

TEST_F(RecallTest, OldFilesAreReadAsTheyWereMeant) {
  ASSERT_TRUE(Save(u"Saved"));
  RewriteKey("IP_SETTING LIBRARY UIPARAM", "Saddle_Check", "1");
  EXPECT_EQ(Open(), "Standard, Saved");
  const UiState& entry = *library->At(1)->state;
  EXPECT_EQ(Value<u"Saddle_Check">(entry), 0);
  EXPECT_EQ(Value<u"FoldStaple_Check">(entry), 1);
  EXPECT_EQ(Value<u"lpFoldStaple">(entry), 1);
}

}  // namespace
}  // namespace heron::test
