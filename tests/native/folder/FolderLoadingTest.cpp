#include <algorithm>

#include "tests/native/folder/FolderFixture.h"

namespace ktrv::tests {
namespace {

struct FolderLoadingTest : FolderFixture {};

TEST_F(FolderLoadingTest, ANewFolderIsOfferedTheSecondCategory) {
  Categories({u"A", u"B", u"C"});
  EXPECT_EQ(Add().cboRemoteFolderView.Text(), u"B");
}

TEST_F(FolderLoadingTest, CategoriesStandAsTheDatabaseReturnsThem) {
  UseFakeDriver();
  driver.Answer(u"CATEGORY FROM ZUL$", {{u"CATEGORY"}}, {{u"C"}, {u"A"}, {u"B"}});
  Add();
  EXPECT_EQ(form->cboRemoteFolderView.List(0), u"C");
  EXPECT_EQ(form->cboRemoteFolderView.List(2), u"B");
}

TEST_F(FolderLoadingTest, ASingleCategoryIsListedNotChosenAndLogged) {
  Categories({u"A"});
  Add();
  EXPECT_EQ(form->cboRemoteFolderView.ListCount(), 1);
  EXPECT_EQ(form->cboRemoteFolderView.ListIndex(), -1);
  EXPECT_EQ(ErrorsIn(u"LoadRemoteFolderViews"), 1);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::InvalidPropertyValue));
}

TEST_F(FolderLoadingTest, WithoutCategoriesNothingIsChosenAndNothingLogged) {
  EXPECT_EQ(Add().cboRemoteFolderView.ListIndex(), -1);
  EXPECT_EQ(Log(), u"");
}

TEST_F(FolderLoadingTest, TheCaptionTellsWhatIsDone) {
  EXPECT_EQ(form->Caption(), u"New Folder");
  EXPECT_EQ(Add().Caption(), u"Add Folder");
}

TEST_F(FolderLoadingTest, LabelsStandRightBeforeTheirBoxes) {
  const auto& all = form->Controls();
  const auto labelOf = [&](const controls::Control& control) -> String {
    const auto at = std::find(all.begin(), all.end(), &control);
    const auto* label =
        at == all.begin() ? nullptr : dynamic_cast<const controls::Label*>(*(at - 1));
    return label ? label->Caption() : u"no label";
  };
  EXPECT_EQ(labelOf(form->txtFolderName), u"Folder Name");
  EXPECT_EQ(labelOf(form->cboRemoteFolderView),
            u"Show contacts belonging to the following category");
}

TEST_F(FolderLoadingTest, BoxAndButtonsSayWhatTheyDo) {
  EXPECT_EQ(form->chkRemoteFolder.Caption(), u"Map this folder to Contacts available in TALVERO");
  EXPECT_EQ(form->cmdOK.Caption(), u"&OK");
  EXPECT_EQ(form->cmdCancel.Caption(), u"&Cancel");
}

TEST_F(FolderLoadingTest, ANewFolderCanBeMapped) {
  Add();
  EXPECT_TRUE(form->chkRemoteFolder.Enabled());
  EXPECT_FALSE(form->chkRemoteFolder.Checked());
}

TEST_F(FolderLoadingTest, ASharedFolderIsShownWithItsTrimmedName) {
  Folder(u"4, 'S', '  Friends ', 0, 1, ''");
  Edit(u"4");
  EXPECT_EQ(form->Caption(), u"Edit Folder");
  EXPECT_EQ(form->txtFolderName.Text(), u"Friends");
  EXPECT_FALSE(form->chkRemoteFolder.Checked());
  EXPECT_FALSE(form->chkRemoteFolder.Enabled());
  EXPECT_FALSE(form->cboRemoteFolderView.Enabled());
  EXPECT_EQ(form->Result().FolderType, TypeOfFolder::SharedFolder);
}

TEST_F(FolderLoadingTest, ARemoteFolderIsShownWithItsCategory) {
  Categories({u"A", u"B", u"C"});
  Folder(u"4, 'R', 'Dealers', 0, 1, 'C'");
  Edit(u"4");
  EXPECT_TRUE(form->chkRemoteFolder.Checked());
  EXPECT_TRUE(form->cboRemoteFolderView.Enabled());
  EXPECT_EQ(form->cboRemoteFolderView.Text(), u"C");
  EXPECT_EQ(form->Result().FolderType, TypeOfFolder::SharedRemoteFolder);
}

TEST_F(FolderLoadingTest, EditingASharedFolderTurnsTheTypeBackToShared) {
  request.FolderType = TypeOfFolder::SharedRemoteFolder;
  Folder(u"4, 'S', 'Friends', 0, 1, ''");
  Edit(u"4");
  EXPECT_EQ(form->Result().FolderType, TypeOfFolder::SharedFolder);
  EXPECT_FALSE(form->cboRemoteFolderView.Enabled());
}

TEST_F(FolderLoadingTest, ATypeWithBlanksIsReadTrimmed) {
  Categories({u"A", u"B"});
  Folder(u"4, ' R ', 'Dealers', 0, 1, 'A'");
  EXPECT_TRUE(Edit(u"4").chkRemoteFolder.Checked());
}

TEST_F(FolderLoadingTest, ACategoryThatTalveroHasNoMoreIsKept) {
  Categories({u"A", u"B", u"C"});
  Folder(u"4, 'R', 'Dealers', 0, 1, 'Gone'");
  Edit(u"4");
  EXPECT_EQ(form->cboRemoteFolderView.Text(), u"Gone");
  form->cmdOK.UserClicks();
  EXPECT_EQ(database.Rows(kFolderRows), std::vector<String>{u"4|R|Dealers|0|1|Gone"});
}

TEST_F(FolderLoadingTest, ARemoteFolderWithoutACategoryHasNoneChosen) {
  Categories({u"A", u"B", u"C"});
  Folder(u"4, 'R', 'Dealers', 0, 1, NULL");
  EXPECT_EQ(Edit(u"4").cboRemoteFolderView.ListIndex(), -1);
  EXPECT_EQ(Log(), u"");
}

TEST_F(FolderLoadingTest, TheBoxSwitchesTheListAndTheTypeOfTheFolder) {
  Add();
  EXPECT_FALSE(form->cboRemoteFolderView.Enabled());
  form->chkRemoteFolder.UserClicks();
  EXPECT_TRUE(form->cboRemoteFolderView.Enabled());
  EXPECT_EQ(form->Result().FolderType, TypeOfFolder::SharedRemoteFolder);
  form->chkRemoteFolder.UserClicks();
  EXPECT_FALSE(form->cboRemoteFolderView.Enabled());
  EXPECT_EQ(form->Result().FolderType, TypeOfFolder::SharedFolder);
}

TEST_F(FolderLoadingTest, TheNameIsSelectedWhenItGetsTheFocus) {
  Add();
  form->txtFolderName.SetText(u"Friends");
  form->txtFolderName.SetFocus();
  EXPECT_EQ(form->txtFolderName.SelectionStart(), 0);
  EXPECT_EQ(form->txtFolderName.SelectionLength(), 7);
}

TEST_F(FolderLoadingTest, FiftyCharactersFitAndNoSurrogatePairIsCut) {
  Add();
  form->txtFolderName.UserTypes(String(49, u'x') + u"\U0001F600");
  EXPECT_EQ(form->txtFolderName.Text(), String(49, u'x'));
  form->txtFolderName.UserTypes(u"yz");
  EXPECT_EQ(form->txtFolderName.Text(), String(49, u'x') + u"y");
}

TEST_F(FolderLoadingTest, AnIdThatNamesNoRowIsLoggedAndTheDialogStays) {
  Edit(u"4");
  EXPECT_EQ(ErrorsIn(u"Populate_Data"), 1);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::NoCurrentRecord));
  EXPECT_EQ(form->Caption(), u"Edit Folder");
  EXPECT_TRUE(form->IsLoaded());
}

TEST_F(FolderLoadingTest, AFolderThatIsNotLoadedDoesNotLookLikeAnEmptyOne) {
  Edit(u"4");
  EXPECT_EQ(form->lblNotice.Caption(),
            u"The folder could not be loaded, so it cannot be saved. Please open it again.");
}

TEST_F(FolderLoadingTest, TheConnectionIsOpenedOnlyWhenItIsClosed) {
  UseFakeDriver();
  driver.Answer(u"", {{u"NONE"}}, {});
  Workplace place = session.Place();
  place.Database.Open();
  forms::frmSelectFolder dialog(std::move(place), request);
  dialog.Load();
  EXPECT_EQ(driver.Opened().size(), 1u);
  EXPECT_EQ(Log(), u"");
}

TEST_F(FolderLoadingTest, CategoriesThatCannotBeReadAreLoggedAndHinderNoSharedFolder) {
  database.Run({u"DROP TABLE ZUL$CONTACTS_CATEGORY"});
  Add();
  EXPECT_EQ(ErrorsIn(u"LoadRemoteFolderViews"), 1);
  EXPECT_EQ(form->Caption(), u"Add Folder");
  EXPECT_TRUE(form->chkRemoteFolder.Enabled());
  form->txtFolderName.UserTypes(u"Friends");
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Saved(), u"1|Friends|S|");
}

TEST_F(FolderLoadingTest, CategoriesThatCannotBeReadHideNoFolder) {
  UseFakeDriver();
  driver.Answer(u"WHERE ID = ? ", {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                {{u"4", u"Friends", u"S", std::nullopt}});
  driver.Fail(u"CATEGORY FROM ZUL$", Error(ErrorNumber::DriverFailure, u"locked"));
  Edit(u"4");
  EXPECT_EQ(ErrorsIn(u"LoadRemoteFolderViews"), 1);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::DriverFailure));
  EXPECT_EQ(form->txtFolderName.Text(), u"Friends");
  EXPECT_EQ(form->Caption(), u"Edit Folder");
}

TEST_F(FolderLoadingTest, ADatabaseThatCannotBeReachedIsTheOpenersFailure) {
  UseFakeDriver();
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"no server"));
  EXPECT_THROW(form->Load(), Error);
  EXPECT_FALSE(form->IsLoaded());
}

// With the type of local folders, which is what the host's own entry opens it with.

TEST_F(FolderLoadingTest, WithoutATypeItOpensWithoutConnectionAndLogsTheMissingCommand) {
  request.FolderType = TypeOfFolder::LocalFolder;
  UseFakeDriver();
  Add();
  EXPECT_TRUE(driver.Opened().empty());
  EXPECT_EQ(ErrorsIn(u"LoadRemoteFolderViews"), 1);
  EXPECT_EQ(ErrorsIn(u"PrepareCommand"), 0);
  EXPECT_EQ(form->Caption(), u"Add Folder");
}

TEST_F(FolderLoadingTest, WithoutATypeTheDialogSaysThatItCannotSave) {
  Add();
  EXPECT_EQ(form->lblNotice.Caption(), u"");
  form.Reset();
  request.FolderType = TypeOfFolder::LocalFolder;
  Add();
  EXPECT_EQ(form->lblNotice.Caption(),
            u"A folder cannot be saved here. Folders are added and changed in the address book.");
}

TEST_F(FolderLoadingTest, WithoutATypeNoFolderIsLoaded) {
  request.FolderType = TypeOfFolder::LocalFolder;
  Edit(u"4");
  EXPECT_EQ(ErrorsIn(u"Populate_Data"), 1);
}

}  // namespace
}  // namespace ktrv::tests
