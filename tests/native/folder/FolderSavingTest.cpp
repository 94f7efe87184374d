#include "tests/native/folder/FolderFixture.h"
#include "tests/native/support/WatchedDialog.h"

namespace ktrv::tests {
namespace {

using Lines = std::vector<String>;

struct FolderSavingTest : FolderFixture {
  FolderSavingTest() { Categories({u"A", u"B", u"C"}); }

  void Name(StringView name) { form->txtFolderName.SetText(String(name)); }
  void PressOk() { form->cmdOK.UserClicks(); }
  Lines Folders() { return database.Rows(kFolderRows); }

  /// A folder editor on the fake driver in which adding a folder named Friends has no rival.
  void AddWithFakeDriver() {
    UseFakeDriver();
    driver.Answer(u"CATEGORY FROM ZUL$", {{u"CATEGORY"}}, {});
    driver.Answer(u"SELECT 1", {{u"1"}}, {});
    driver.Changes(u"INSERT", 1);
    Add();
    Name(u"Friends");
  }
  void ExpectOpenWithItsText(StringView procedure) {
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(form->txtFolderName.Text(), u"Friends");
    EXPECT_EQ(ErrorsIn(procedure), 1);
    EXPECT_TRUE(screen.Messages.empty());
    EXPECT_NE(form->lblNotice.Caption(), u"");
  }
};

TEST_F(FolderSavingTest, ANameOfBlanksIsAskedFor) {
  Add();
  Name(u"   ");
  PressOk();
  EXPECT_EQ(screen.LastMessage().Text, u"Please enter the Folder Name.");
  EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
  EXPECT_EQ(screen.LastMessage().Style, 48);
  EXPECT_TRUE(form->txtFolderName.HasFocus());
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(Folders(), Lines{});
}

TEST_F(FolderSavingTest, ARemoteFolderNeedsACategory) {
  Add();
  Name(u"Dealers");
  form->chkRemoteFolder.UserClicks();
  form->cboRemoteFolderView.UserChooses(-1);
  PressOk();
  EXPECT_EQ(screen.LastMessage().Text,
            u"Please select the TALVERO contacts to display in this folder.");
  EXPECT_EQ(screen.LastMessage().Style, 48);
  EXPECT_TRUE(form->cboRemoteFolderView.HasFocus());
  EXPECT_EQ(screen.Messages.size(), 1u);
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(Folders(), Lines{});
}

TEST_F(FolderSavingTest, ANameThatAnyFolderHasIsRefused) {
  Folder(u"1, 'L', 'Friends', 0, 99, ''");
  Add();
  Name(u" Friends ");
  PressOk();
  EXPECT_EQ(screen.LastMessage().Text,
            u"A folder with that name already exists. Please use a different folder name.");
  EXPECT_EQ(screen.LastMessage().Style, 48);
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(Folders().size(), 1u);
}

TEST_F(FolderSavingTest, RenamingAFolderToItsOwnNameIsAllowed) {
  Folder(u"1, 'S', 'Friends', 0, 1, ''");
  Edit(u"1");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(FolderSavingTest, RenamingAFolderToAnothersNameIsRefused) {
  Folder(u"1, 'S', 'Friends', 0, 1, ''");
  Folder(u"2, 'R', 'Dealers', 0, 1, 'A'");
  Edit(u"1");
  Name(u"Dealers");
  PressOk();
  EXPECT_EQ(screen.LastMessage().Text,
            u"A folder with that name already exists. Please use a different folder name.");
  EXPECT_EQ(Folders().front(), u"1|S|Friends|0|1|");
}

TEST_F(FolderSavingTest, ACategoryThatAFolderShowsIsRefusedWithThatFoldersName) {
  Folder(u"1, 'R', 'Dealers', 0, 1, 'B'");
  Add();
  Name(u"More dealers");
  form->chkRemoteFolder.UserClicks();
  PressOk();
  EXPECT_EQ(screen.LastMessage().Text,
            u"Another folder (Dealers) is already mapped to the selected Remote Contact Category."
            u"\r\nYou can map only one folder to each Remote Contact Category.");
  EXPECT_EQ(screen.LastMessage().Style, 48);
  EXPECT_TRUE(form->IsLoaded());
}

TEST_F(FolderSavingTest, TheFolderOfAMappingMayKeepItsCategory) {
  Folder(u"1, 'R', 'Dealers', 0, 1, 'B'");
  Edit(u"1");
  Name(u"Our dealers");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Folders(), Lines{u"1|R|Our dealers|0|1|B"});
}

TEST_F(FolderSavingTest, AnotherFoldersCategoryCannotBeTaken) {
  Folder(u"1, 'R', 'Dealers', 0, 1, 'B'");
  Folder(u"2, 'R', 'Others', 0, 1, 'C'");
  Edit(u"2");
  form->cboRemoteFolderView.UserChooses(1);
  PressOk();
  EXPECT_NE(screen.LastMessage().Text.find(u"(Dealers)"), String::npos);
}

TEST_F(FolderSavingTest, ARemoteFolderMayHaveAnyFoldersNameAndThenHandsBackTheFirstOne) {
  Folder(u"1, 'S', 'Dealers', 0, 1, ''");
  Add();
  Name(u"Dealers");
  form->chkRemoteFolder.UserClicks();
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Folders().size(), 2u);
  EXPECT_EQ(Saved(), u"1|Dealers|S|");
}

TEST_F(FolderSavingTest, ANewSharedFolderIsWrittenAndHandedBack) {
  Add();
  Name(u"  Friends ");
  PressOk();
  EXPECT_EQ(Folders(), Lines{u"1|S|Friends|0|7|"});
  EXPECT_EQ(Saved(), u"1|Friends|S|");
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Log(), u"");
}

TEST_F(FolderSavingTest, ANewRemoteFolderIsWrittenAndHandedBack) {
  Add();
  Name(u"Dealers");
  form->chkRemoteFolder.UserClicks();
  form->cboRemoteFolderView.UserChooses(2);
  PressOk();
  EXPECT_EQ(Folders(), Lines{u"1|R|Dealers|0|7|C"});
  EXPECT_EQ(Saved(), u"1|Dealers|R|C");
}

TEST_F(FolderSavingTest, ARenamedFolderKeepsItsTypeParentAndUser) {
  Folder(u"5, 'L', 'Mine', 3, 2, 'x'");
  Edit(u"5");
  Name(u"Ours");
  PressOk();
  EXPECT_EQ(Folders(), Lines{u"5|L|Ours|3|2|x"});
  EXPECT_EQ(Saved(), u"5|Ours|L|x");
}

TEST_F(FolderSavingTest, WithTheRemoteTypeAndAClearedBoxNoLocalFolderIsWritten) {
  request.FolderType = TypeOfFolder::SharedRemoteFolder;
  Add();
  Name(u"Ours");
  ASSERT_FALSE(form->chkRemoteFolder.Checked());
  PressOk();
  EXPECT_EQ(Folders(), Lines{u"1|S|Ours|0|7|"});
  EXPECT_EQ(Saved(), u"1|Ours|S|");
}

TEST_F(FolderSavingTest, WithTheRemoteTypeAndAClearedBoxNoNameIsGivenTwice) {
  Folder(u"1, 'S', 'Friends', 0, 1, ''");
  request.FolderType = TypeOfFolder::SharedRemoteFolder;
  Add();
  Name(u"Friends");
  PressOk();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(Folders().size(), 1u);
}

TEST_F(FolderSavingTest, ARefusedNameGetsTheFocus) {
  Folder(u"1, 'S', 'Friends', 0, 1, ''");
  Add();
  Name(u"Friends");
  form->cmdOK.SetFocus();
  PressOk();
  ASSERT_EQ(screen.Messages.size(), 1u);
  EXPECT_TRUE(form->txtFolderName.HasFocus());
}

TEST_F(FolderSavingTest, ARefusedCategoryGetsTheFocus) {
  Folder(u"1, 'R', 'Dealers', 0, 1, 'B'");
  Add();
  Name(u"More dealers");
  form->chkRemoteFolder.UserClicks();
  form->cmdOK.SetFocus();
  PressOk();
  ASSERT_EQ(screen.Messages.size(), 1u);
  EXPECT_TRUE(form->cboRemoteFolderView.HasFocus());
}

TEST_F(FolderSavingTest, TheDialectsSaveAlike) {
  for (const StringView dialect : {u"SQL", u"ORACLE", u"MYSQL"}) {
    session.DbType = dialect;
    form.Reset();
    Add();
    Name(u"Ünïcode " + String(dialect));
    PressOk();
    EXPECT_EQ(form->Result().Saved.value().Name, u"Ünïcode " + String(dialect));
  }
}

TEST_F(FolderSavingTest, QuotesTabsLineBreaksAndEmojiArriveAsTyped) {
  const String name = u"O'Brien \"&\"\t; DROP TABLE X --\r\n\U0001F600";
  Add();
  Name(name);
  PressOk();
  EXPECT_EQ(form->Result().Saved.value().Name, name);
  EXPECT_EQ(database.Rows(u"SELECT NAME FROM SMS_ABFOLDERS"), Lines{name});
}

TEST_F(FolderSavingTest, CancelLeavesNoFolderAndKeepsTypeAndCategory) {
  session.SavedFolderId = u"3";
  session.SavedFolderName = u"Old";
  session.SavedFolderType = u"R";
  session.SavedFolderCategory = u"C";
  Add();
  Name(u"Friends");
  form->cmdCancel.UserClicks();
  EXPECT_EQ(Saved(), u"||R|C");
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Folders(), Lines{});
}

TEST_F(FolderSavingTest, TheCloseButtonIsACancel) {
  session.SavedFolderId = u"3";
  Add();
  form->UserCloses();
  EXPECT_EQ(Saved(), u"|||");
}

TEST_F(FolderSavingTest, EnterIsOkAndEscapeIsCancel) {
  EXPECT_TRUE(form->cmdOK.IsDefault());
  EXPECT_TRUE(form->cmdCancel.IsCancel());
}

// Failures: logged, the dialog still open, the text still there.

TEST_F(FolderSavingTest, WithoutATypeASaveIsLoggedAndNoFolderIsWritten) {
  request.FolderType = TypeOfFolder::LocalFolder;
  Add();
  Name(u"Friends");
  PressOk();
  ExpectOpenWithItsText(u"Save_Data");
  EXPECT_EQ(Folders(), Lines{});
}

TEST_F(FolderSavingTest, WithoutATypeCheckingTheBoxDoesNotHelp) {
  request.FolderType = TypeOfFolder::LocalFolder;
  Add();
  Name(u"Friends");
  form->chkRemoteFolder.UserClicks();
  form->cboRemoteFolderView.AddItem(u"A");
  form->cboRemoteFolderView.UserChooses(0);
  PressOk();
  ExpectOpenWithItsText(u"Validate_Data");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::ObjectNotSet));
  EXPECT_EQ(form->lblNotice.Caption(),
            u"A folder cannot be saved here. Folders are added and changed in the address book.");
}

TEST_F(FolderSavingTest, AFailedSaveIsSeenInTheDialogUntilTheNextOk) {
  AddWithFakeDriver();
  driver.Fail(u"SELECT 1", Error(ErrorNumber::DriverFailure, u"connection lost"));
  PressOk();
  EXPECT_EQ(form->lblNotice.Caption(), u"The folder was not saved. The log says why.");
  Name(u"");
  PressOk();  // tells by a message what is missing
  EXPECT_EQ(screen.Messages.size(), 1u);
  EXPECT_EQ(form->lblNotice.Caption(), u"");
}

TEST_F(FolderSavingTest, ALostConnectionIsLogged) {
  AddWithFakeDriver();
  driver.Fail(u"SELECT 1", Error(ErrorNumber::DriverFailure, u"connection lost"));
  PressOk();
  ExpectOpenWithItsText(u"Validate_Data");
}

TEST_F(FolderSavingTest, AConnectionClosedBehindItsBackIsOpenedAgain) {
  AddWithFakeDriver();
  auto& connection = *form->Commands().At(forms::FolderCommand::NameExists).ActiveConnection();
  connection.Close();
  PressOk();
  EXPECT_FALSE(LoggedNumber(ErrorNumber::InvalidConnection));
  EXPECT_EQ(connection.State(), database::ObjectState::Open);
}

TEST_F(FolderSavingTest, AConstraintViolationIsLogged) {
  AddWithFakeDriver();
  driver.Fail(u"INSERT", Error(ErrorNumber::IntegrityViolation, u"taken"));
  PressOk();
  ExpectOpenWithItsText(u"Save_Data");
}

TEST_F(FolderSavingTest, ANameThatTheDatabaseWantsOnlyOnceIsLogged) {
  Folder(u"1, 'S', 'Dealers', 0, 1, ''");
  database.Run({u"CREATE UNIQUE INDEX ONCE ON SMS_ABFOLDERS (NAME)"});
  Add();
  Name(u"Dealers");
  form->chkRemoteFolder.UserClicks();  // whose name is not asked for before
  PressOk();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsIn(u"Save_Data"), 1);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::IntegrityViolation));
  EXPECT_EQ(Folders().size(), 1u);
}

TEST_F(FolderSavingTest, ARenameThatFailsLeavesTheFolderAsItWas) {
  Folder(u"1, 'S', 'Friends', 0, 1, ''");
  Edit(u"1");
  database.Run(
      {u"CREATE TRIGGER NO BEFORE UPDATE ON SMS_ABFOLDERS BEGIN SELECT RAISE(ABORT, "
       u"'locked'); END"});
  Name(u"Others");
  PressOk();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(form->txtFolderName.Text(), u"Others");
  EXPECT_EQ(ErrorsIn(u"Save_Data"), 1);
  EXPECT_EQ(Folders(), Lines{u"1|S|Friends|0|1|"});
}

TEST_F(FolderSavingTest, ANameOverTheLimitIsKeptUntilItIsChanged) {
  const String name(80, u'n');
  Folder(u"1, 'S', '" + name + u"', 0, 1, ''");
  Edit(u"1");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(form->Result().Saved.value().Name, name);
}

TEST_F(FolderSavingTest, OverLongTextIsCutWhenItIsPasted) {
  Add();
  form->txtFolderName.UserTypes(String(200, u'x'));
  EXPECT_EQ(form->txtFolderName.Text(), String(50, u'x'));
}

TEST_F(FolderSavingTest, ANewFolderAsksForRivalsByTheTrimmedName) {
  AddWithFakeDriver();
  driver.Answer(u"WHERE NAME = ? ", {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                {{u"8", u"Friends", u"S", std::nullopt}});
  driver.Answer(u"SELECT 1", {{u"1"}}, {});
  Name(u" Friends ");
  PressOk();
  const auto ran = driver.Executed();
  ASSERT_EQ(ran.size(), 5u);
  for (const std::size_t look : {1u, 2u}) {  // before the save, and within it
    EXPECT_EQ(ran[look].Text, u"SELECT 1 FROM SMS_ABFOLDERS WHERE NAME = ?");
    EXPECT_EQ(ran[look].Values, std::vector<Variant>{String(u"Friends")});
  }
  EXPECT_EQ(ran[3].Values,
            (std::vector<Variant>{String(u"S"), String(u"Friends"), std::int64_t{7}, String()}));
  EXPECT_EQ(ran[4].Values, std::vector<Variant>{String(u"Friends")});
}

TEST_F(FolderSavingTest, AFolderThatCannotBeReadBackLeavesNoResult) {
  AddWithFakeDriver();
  driver.Fail(u"WHERE NAME = ? ", Error(ErrorNumber::DriverFailure, u"connection lost"));
  driver.Answer(u"SELECT 1", {{u"1"}}, {});
  PressOk();
  ExpectOpenWithItsText(u"Save_Data");
  form->cmdCancel.UserClicks();
  EXPECT_EQ(Saved(), u"|||");
}

TEST_F(FolderSavingTest, ASecondTryAfterAFailureSaves) {
  AddWithFakeDriver();
  driver.Fail(u"INSERT", Error(ErrorNumber::DriverFailure, u"locked"));
  PressOk();
  driver.Changes(u"INSERT", 1);
  driver.Answer(u"WHERE NAME = ? ", {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                {{u"8", u"Friends", u"S", std::nullopt}});
  driver.Answer(u"SELECT 1", {{u"1"}}, {});
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Saved(), u"8|Friends|S|");
}

TEST_F(FolderSavingTest, AFolderThatAnotherUserDeletedIsLogged) {
  Folder(u"5, 'S', 'Friends', 0, 2, ''");
  Edit(u"5");
  database.Run({u"DELETE FROM SMS_ABFOLDERS"});
  PressOk();
  ExpectOpenWithItsText(u"Save_Data");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::NoCurrentRecord));
}

TEST_F(FolderSavingTest, AnIdThatIsNoNumberNeverReachesAStatementThatWrites) {
  Folder(u"5, 'S', 'Mine', 0, 2, ''");
  Edit(u"5 OR 1=1");
  Name(u"Friends");
  PressOk();
  ExpectOpenWithItsText(u"Save_Data");
  EXPECT_EQ(Folders(), Lines{u"5|S|Mine|0|2|"});
}

// A folder that was not loaded is not saved, and what the user left alone is not written.

TEST_F(FolderSavingTest, AFolderThatCouldNotBeLoadedKeepsItsNameAndMapping) {
  Folder(u"5, 'R', 'Dealers', 0, 2, 'C'");
  request.FolderType = TypeOfFolder::SharedRemoteFolder;
  database.Run({u"ALTER TABLE SMS_ABFOLDERS RENAME TO AWAY"});
  Edit(u"5");
  ASSERT_EQ(ErrorsIn(u"Populate_Data"), 1);
  database.Run({u"ALTER TABLE AWAY RENAME TO SMS_ABFOLDERS"});
  Name(u"Friends");
  PressOk();
  ExpectOpenWithItsText(u"Save_Data");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::NoCurrentRecord));
  EXPECT_EQ(Folders(), Lines{u"5|R|Dealers|0|2|C"});
  EXPECT_EQ(form->lblNotice.Caption(),
            u"The folder could not be loaded, so it cannot be saved. Please open it again.");
}

TEST_F(FolderSavingTest, AFolderThatCouldNotBeLoadedAsksForNoName) {
  Edit(u"5");
  Folder(u"5, 'R', 'Dealers', 0, 2, 'C'");
  PressOk();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(ErrorsIn(u"Save_Data"), 1);
  EXPECT_EQ(Folders(), Lines{u"5|R|Dealers|0|2|C"});
}

TEST_F(FolderSavingTest, OkWithoutAChangeChangesNoFolder) {
  Folder(u"5, 'S', ' Mine ', 0, 2, NULL");
  Edit(u"5");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Folders(), Lines{u"5|S| Mine |0|2|null"});
}

TEST_F(FolderSavingTest, ARenameUndoesNoMappingOfAnotherUser) {
  Folder(u"5, 'R', 'Dealers', 0, 2, 'A'");
  Edit(u"5");
  database.Run({u"UPDATE SMS_ABFOLDERS SET REMOTE_CONTACTS_CATEGORY = 'C'"});
  Name(u"Friends");
  PressOk();
  EXPECT_EQ(Folders(), Lines{u"5|R|Friends|0|2|C"});
  EXPECT_EQ(Saved(), u"5|Friends|R|C");
}

TEST_F(FolderSavingTest, AMappingUndoesNoRenameOfAnotherUser) {
  Folder(u"5, 'R', 'Dealers', 0, 2, 'A'");
  Edit(u"5");
  database.Run({u"UPDATE SMS_ABFOLDERS SET NAME = 'Friends'"});
  form->cboRemoteFolderView.UserChooses(2);
  PressOk();
  EXPECT_EQ(Folders(), Lines{u"5|R|Friends|0|2|C"});
}

constexpr StringView kUnknown =
    u"It is unknown whether the folder was saved; see the log. OK looks for it first.";

/// A folder whose save ends in a way that does not tell whether it is stored.
struct FolderDoubtTest : WatchedDialog<FolderSavingTest> {
  void LoseTheReadBack() {
    watched.AfterCommit = [this] { watched.BeforeExecute = [](StringView) { Lose(); }; };
    PressOk();
    watched.AfterCommit = nullptr;
    watched.BeforeExecute = nullptr;
  }
  void ExpectHandedBack(StringView saved) {
    EXPECT_EQ(form->lblNotice.Caption(), kUnknown);
    EXPECT_EQ(Folders().size(), 1u);
    PressOk();
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_TRUE(screen.Messages.empty());
    EXPECT_EQ(Folders().size(), 1u);
    EXPECT_EQ(Saved(), saved);
  }
};

TEST_F(FolderDoubtTest, ANewFolderWhoseAnswerWasLostIsHandedBackByTheNextOk) {
  Add();
  Name(u"Friends");
  LoseTheCommit();
  ExpectHandedBack(u"1|Friends|S|");
}

TEST_F(FolderDoubtTest, ANewFolderThatWasNotReadBackIsHandedBackByTheNextOk) {
  Add();
  Name(u"Friends");
  LoseTheReadBack();
  ExpectHandedBack(u"1|Friends|S|");
}

TEST_F(FolderDoubtTest, ANewMappingWhoseAnswerWasLostIsHandedBackByTheNextOk) {
  Add();
  Name(u"Dealers");
  form->chkRemoteFolder.UserClicks();
  LoseTheCommit();
  ExpectHandedBack(u"1|Dealers|R|B");
}

TEST_F(FolderDoubtTest, AnotherFolderOfThatNameIsNotHandedBack) {
  Add();
  Name(u"Friends");
  watched.UndoTransactions = true;
  LoseTheCommit();
  watched.UndoTransactions = false;
  EXPECT_EQ(form->lblNotice.Caption(), kUnknown);
  Folder(u"1, 'L', 'Friends', 0, 99, ''");
  PressOk();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(screen.LastMessage().Text,
            u"A folder with that name already exists. Please use a different folder name.");
  database.Run({u"DELETE FROM SMS_ABFOLDERS"});
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Folders(), Lines{u"2|S|Friends|0|7|"});
}

TEST_F(FolderDoubtTest, AFolderThatWasRefusedIsNotLookedFor) {
  Add();
  Name(u"Friends");
  watched.BeforeExecute = [](StringView text) {
    if (text.starts_with(u"INSERT")) Lose();
  };
  PressOk();
  watched.BeforeExecute = nullptr;
  EXPECT_EQ(form->lblNotice.Caption(), u"The folder was not saved. The log says why.");
  Folder(u"1, 'S', 'Friends', 0, 99, ''");
  PressOk();
  EXPECT_EQ(screen.Messages.size(), 1u);
  EXPECT_TRUE(form->IsLoaded());
}

/// The same for a folder that is changed.
struct FolderOutcomeTest : FolderDoubtTest {
  FolderOutcomeTest() {
    Folder(u"5, 'R', 'Dealers', 0, 2, 'A'");
    Edit(u"5");
  }

  void ExpectThatEverythingCanBePutBack() {
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(form->lblNotice.Caption(), kUnknown);
    EXPECT_EQ(Folders(), Lines{u"5|R|Friends|0|2|C"});
    Name(u"Dealers");
    form->cboRemoteFolderView.UserChooses(0);
    PressOk();
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(Folders(), Lines{u"5|R|Dealers|0|2|A"});
  }
};

TEST_F(FolderOutcomeTest, ANameAndAMappingCanBePutBackAfterALostAnswer) {
  Name(u"Friends");
  form->cboRemoteFolderView.UserChooses(2);
  LoseTheCommit();
  ExpectThatEverythingCanBePutBack();
}

TEST_F(FolderOutcomeTest, ANameAndAMappingCanBePutBackWhenTheyWereNotReadBack) {
  Name(u"Friends");
  form->cboRemoteFolderView.UserChooses(2);
  LoseTheReadBack();
  ExpectThatEverythingCanBePutBack();
}

TEST_F(FolderOutcomeTest, ANameThatATriggerChangesCanBePutBackWithoutACount) {
  database.Run(
      {u"CREATE TRIGGER BIG AFTER UPDATE ON SMS_ABFOLDERS BEGIN UPDATE SMS_ABFOLDERS SET NAME = "
       u"UPPER(NAME) WHERE ID = NEW.ID; END"});
  watched.CountsRows = false;
  Name(u"Friends");
  PressOk();
  EXPECT_TRUE(LoggedNumber(ErrorNumber::RowChanged));
  EXPECT_EQ(form->lblNotice.Caption(), kUnknown);
  database.Run({u"DROP TRIGGER BIG"});
  ASSERT_EQ(Folders(), Lines{u"5|R|FRIENDS|0|2|A"});
  Name(u"Dealers");
  PressOk();
  EXPECT_EQ(Folders(), Lines{u"5|R|Dealers|0|2|A"});
}

TEST_F(FolderOutcomeTest, ADeletedFolderIsNotInDoubt) {
  Name(u"Friends");
  LoseTheCommit();
  EXPECT_EQ(form->lblNotice.Caption(), kUnknown);
  database.Run({u"DELETE FROM SMS_ABFOLDERS"});
  PressOk();
  EXPECT_TRUE(LoggedNumber(ErrorNumber::NoCurrentRecord));
  EXPECT_EQ(form->lblNotice.Caption(), u"The folder was not saved. The log says why.");
}

TEST_F(FolderOutcomeTest, AnUndoneRenameThatIsPutBackOverwritesNobody) {
  watched.BeforeExecute = [](StringView text) {
    if (text.starts_with(u"UPDATE")) Lose();
  };
  Name(u"Friends");
  PressOk();
  watched.BeforeExecute = nullptr;
  database.Run({u"UPDATE SMS_ABFOLDERS SET NAME = 'Ours'"});
  Name(u"Dealers");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Folders(), Lines{u"5|R|Ours|0|2|A"});
}

TEST_F(FolderSavingTest, ACategoryLongerThanItsParameterIsLogged) {
  const String category(51, u'c');
  Categories({category});
  Add();
  Name(u"Friends");
  form->chkRemoteFolder.UserClicks();
  form->cboRemoteFolderView.SetText(category);
  PressOk();
  ExpectOpenWithItsText(u"Validate_Data");
}

}  // namespace
}  // namespace ktrv::tests
