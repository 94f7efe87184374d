#include "common/Logger.h"
#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using controls::SortOrder;
using Texts = std::vector<String>;

/// Loads that the test holds up, and loads that fail.
struct ContactLoadTest : AddressBookTest {
  ContactLoadTest() {
    SharedFolders({{u"7", u"Staff"}});
    RemoteFolders({{u"3", u"Dealers"}});
    Counts(Queries::kCountFolderContacts, kRows);
    std::vector<Row> rows;
    for (int i = 1; i <= kRows; ++i) rows.push_back(Item(ToDecimal(i), u"Name " + ToDecimal(i)));
    Lists(std::move(rows));
  }
  /// Clicks the node; its fetch waits before it opens its link.
  void ClickAndHold(StringView key) {
    driver.OpenGate.Close();
    Click(key);
  }
  static void AddContact(forms::ContactList& list) {
    list.Add({.Id = u"9000",
              .Name = u"Carl",
              .Mobile = {},
              .Email = {},
              .Address = {},
              .Organisation = {}},
             u"0");
  }
  void LetGo() {
    driver.OpenGate.Open();
    ASSERT_TRUE(Complete());
  }
  void ExpectUsable() {
    EXPECT_EQ(form->Pointer(), controls::MousePointer::Default);
    EXPECT_FALSE(form->ProgressBar1.Visible());
    EXPECT_EQ(form->StatusBar1.PanelCount(), 2);
    EXPECT_TRUE(form->IsVisible());
    EXPECT_TRUE(form->vsfContacts.Redraw());
    EXPECT_TRUE(screen.Messages.empty());
  }

  static constexpr int kRows = 2500;  // three blocks of a background fetch
};

TEST_F(ContactLoadTest, WhileItRunsTheCountStandsInTheFirstPanelAndTheBarOverTheThird) {
  Open();
  ClickAndHold(u"SHARED");
  EXPECT_EQ(Panel(1), u"2500 item(s)");
  EXPECT_EQ(form->StatusBar1.PanelCount(), 3);
  EXPECT_EQ(form->StatusBar1.PanelAt(3).Width, 3000);
  EXPECT_TRUE(form->ProgressBar1.Visible());
  EXPECT_EQ(form->ProgressBar1.HostPanel(), 3);
  EXPECT_EQ(form->ProgressBar1.Min(), 0);
  EXPECT_EQ(form->ProgressBar1.Max(), 2500);
  EXPECT_EQ(form->ProgressBar1.Value(), 0);
  EXPECT_EQ(form->Pointer(), controls::MousePointer::Default);
  LetGo();
}

TEST_F(ContactLoadTest, TheHourglassShowsWhileTheListIsReset) {
  Open();
  screen.Log.clear();
  ClickAndHold(u"SHARED");
  EXPECT_EQ(screen.Log, (std::vector<std::string>{"hourglass", "default"}));
  LetGo();
}

TEST_F(ContactLoadTest, WhenItIsCompleteTheCountStaysAndTheBarIsGone) {
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(Panel(1), u"2500 item(s)");
  EXPECT_EQ(Panel(2), u"");
  EXPECT_EQ(form->vsfContacts.Rows(), kRows + 1);
  ExpectUsable();
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactLoadTest, TheBarOfALoadThatIsDroppedForAnEmptyNodeIsHidden) {
  Open();
  ClickAndHold(u"SHARED");
  ASSERT_TRUE(form->ProgressBar1.Visible());
  Counts(Queries::kCountFolderContacts, 0);
  Click(u"SFLD7");
  EXPECT_FALSE(form->ProgressBar1.Visible());
  LetGo();
}

TEST_F(ContactLoadTest, TheGridIsNotPaintedWhileTheRowsArePutIn) {
  Open();
  Click(u"SHARED");
  const auto apply = form->vsfContacts.AfterDataRefresh;
  std::vector<bool> complete;
  form->vsfContacts.AfterDataRefresh = [&] {
    // The third panel goes just before the rows of the whole result are put in.
    if (form->StatusBar1.PanelCount() == 2) complete.push_back(form->vsfContacts.Redraw());
    apply();
  };
  ASSERT_TRUE(Complete());
  EXPECT_EQ(complete, std::vector<bool>{false});
  EXPECT_TRUE(form->vsfContacts.Redraw());
}

TEST_F(ContactLoadTest, TheListIsKeptAtTheClient) {
  Open();
  ClickAndHold(u"SHARED");
  ASSERT_NE(form->rsUserContacts(), nullptr);
  EXPECT_EQ(form->rsUserContacts()->Location, database::CursorLocation::Client);
  LetGo();
}

TEST_F(ContactLoadTest, TheBarIsHiddenWhenTheWindowHasLoaded) {
  Open();
  EXPECT_FALSE(form->ProgressBar1.Visible());
}

TEST_F(ContactLoadTest, TheBarFollowsTheRowsThatHaveCome) {
  Open();
  Click(u"SHARED");
  ASSERT_TRUE(screen.WaitUntil([this] { return form->vsfContacts.Rows() > 2; }));
  EXPECT_EQ(form->ProgressBar1.Value(), form->vsfContacts.Rows() - 1);
  ASSERT_TRUE(Complete());
}

TEST_F(ContactLoadTest, MoreRowsThanWereCountedLeaveTheBarAtItsEnd) {
  Counts(Queries::kCountFolderContacts, 2);
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(form->vsfContacts.Rows(), kRows + 1);
  EXPECT_EQ(Panel(1), u"2 item(s)");
  EXPECT_EQ(form->ProgressBar1.Value(), 2);
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactLoadTest, TheListIsFetchedOnALinkOfItsOwnThatGoesAfterwards) {
  Open();
  const std::size_t before = driver.Opened().size();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(driver.Opened().size(), before + 1);
  EXPECT_TRUE(WaitForFetches());
  EXPECT_EQ(driver.LinksAlive(), 1);
}

TEST_F(ContactLoadTest, RowsThatHaveComeAreFoundWhileOthersAreStillToCome) {
  Open();
  ClickAndHold(u"SHARED");
  EXPECT_TRUE(form->ProgressBar1.Visible());
  driver.OpenGate.Open();
  ASSERT_TRUE(screen.WaitUntil([this] { return form->vsfContacts.Rows() > 700; }));
  form->txtFind.UserTypes(u"name 700");
  EXPECT_EQ(form->vsfContacts.Row(), 700);
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfContacts.Row(), 700);
}

TEST_F(ContactLoadTest, SortedWhileRowsCameTheListIsInTheResultsOrderInTheEnd) {
  Open();
  Click(u"SHARED");
  ASSERT_TRUE(screen.WaitUntil([this] { return form->vsfContacts.Rows() > 2; }));
  form->ChangeSortOrder(u"NAME", SortOrder::Descending);
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfContacts.Text(1, form->vsfContacts.ColIndex(u"NAME")), u"Name 1");
  EXPECT_EQ(form->List().SortColumn(), u"NAME");
}

// Switching, closing, showing again.

TEST_F(ContactLoadTest, AnotherNodeDropsTheFetchThatRuns) {
  Open();
  ClickAndHold(u"SHARED");
  Lists({Item(u"D1", u"Dealer", u"3")});
  Counts(Queries::kCountRemoteContacts, 1);
  Click(u"RFLD3");
  LetGo();
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Dealer"}));
  EXPECT_EQ(Panel(1), u"1 item(s)");
  EXPECT_TRUE(WaitForFetches());
  screen.Pump();
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Dealer"}));
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactLoadTest, NoEventOfADroppedFetchArrivesInTheNextLoad) {
  Open();
  Click(u"SHARED");
  ASSERT_TRUE(screen.WaitUntil([this] { return form->vsfContacts.Rows() > 2; }));
  ASSERT_TRUE(WaitForFetches());  // the rest of its rows and its end wait for the window
  Counts(Queries::kCountFolderContacts, 0);
  Lists({});
  driver.OpenGate.Close();
  Click(u"SFLD7");
  screen.Pump();
  EXPECT_EQ(form->StatusBar1.PanelCount(), 3);
  EXPECT_EQ(form->vsfContacts.Rows(), 1);
  LetGo();
}

TEST_F(ContactLoadTest, AtMostThreePanelsStandHoweverManyLoadsAreBegun) {
  Open();
  driver.OpenGate.Close();
  for (const StringView key : {u"SHARED", u"SFLD7", u"SHARED", u"SFLD7"}) {
    Click(key);
    EXPECT_EQ(form->StatusBar1.PanelCount(), 3);
  }
  LetGo();
}

TEST_F(ContactLoadTest, ClosedDuringALoadTheWindowHearsNoMoreOfIt) {
  Open();
  ClickAndHold(u"SHARED");
  form->UserCloses();
  driver.OpenGate.Open();
  EXPECT_TRUE(WaitForFetches());
  screen.Pump();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(form->rsUserContacts(), nullptr);
  EXPECT_FALSE(form->List().CanCount());
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactLoadTest, DestroyedDuringALoadTheWindowLeavesNothingBehind) {
  Open();
  ClickAndHold(u"SHARED");
  form.reset();
  driver.OpenGate.Open();
  EXPECT_TRUE(WaitForFetches());
  screen.Pump();
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(ContactLoadTest, ShownAgainTheWindowStartsAnew) {
  Open();
  ClickAndWait(u"SFLD7");
  form->txtFind.UserTypes(u"name");
  form->Unload();
  screen.Pump();
  Open();
  EXPECT_TRUE(form->IsVisible());
  EXPECT_EQ(form->Current().Key, u"");
  EXPECT_EQ(form->txtFind.Text(), u"");
  EXPECT_EQ(Panel(1), u"0 item(s)");
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(form->vsfContacts.Rows(), kRows + 1);
}

TEST_F(ContactLoadTest, ClosedDuringALoadAndShownAgainItLoadsAsBefore) {
  Open();
  ClickAndHold(u"SHARED");
  form->Unload();
  driver.OpenGate.Open();
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(form->vsfContacts.Rows(), kRows + 1);
  ExpectUsable();
}

TEST_F(ContactLoadTest, AConnectionClosedInBetweenIsOpenedAgain) {
  Open();
  form->Place().Database.Connection->Close();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(form->vsfContacts.Rows(), kRows + 1);
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactLoadTest, AConnectionReplacedInBetweenIsTaken) {
  Open();
  form->Place().Database.Renew();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(form->vsfContacts.Rows(), kRows + 1);
  EXPECT_EQ(Log(), u"");
}

// Failures.

TEST_F(ContactLoadTest, AFailingCountIsLoggedAndTold) {
  driver.Fail(Queries::kCountFolderContacts, Error(ErrorNumber::DriverFailure, u"gone away"));
  Open();
  Click(u"SHARED");
  EXPECT_EQ(ErrorsLogged(kLoadContext), 1);
  EXPECT_EQ(Panel(1), u"Contacts could not be loaded.");
  EXPECT_EQ(form->vsfContacts.Rows(), 2);
  EXPECT_TRUE(Ran(u"AS CONTACTTYPE").empty());
  ExpectUsable();
}

TEST_F(ContactLoadTest, AfterALinkDroppedTheNextLoadUsesANewOne) {
  driver.Fail(Queries::kCountFolderContacts, Error(ErrorNumber::DriverFailure, u"gone away"));
  Open();
  Click(u"SHARED");
  Counts(Queries::kCountFolderContacts, kRows);
  form->tlbMain.UserClicks(u"REFRESH");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfContacts.Rows(), kRows + 1);
  EXPECT_EQ(Panel(1), u"2500 item(s)");
}

TEST_F(ContactLoadTest, AServerThatIsNotThereWhenTheWindowOpensIsToldAndTriedAgain) {
  RunAt(RunApplicationAt::RuntAtServer);
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"no server"));
  Open();
  EXPECT_EQ(Panel(1), u"Contacts could not be loaded.");
  EXPECT_EQ(ErrorsLogged(kLoadContext), 1);
  ExpectUsable();
  driver.FailOpen(std::nullopt);
  form->tlbMain.UserClicks(u"REFRESH");
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfContacts.Rows(), kRows + 1);
}

TEST_F(ContactLoadTest, WithoutALinkTheCountsOwnFailureIsLogged) {
  Open();
  form->Place().Database.Close();
  driver.OpenNothing();
  Click(u"SHARED");
  EXPECT_EQ(ErrorsLogged(kLoadContext), 1);
  EXPECT_NE(Log().find(u"Error Number      : 3709\r\n"), String::npos) << ToUtf8(Log());
}

TEST_F(ContactLoadTest, AListThatTheServerRefusesIsLoggedOnceAndTold) {
  driver.Fail(u"AS CONTACTTYPE", Error(ErrorNumber::SyntaxOrPermission, u"refused"));
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(ErrorsLogged(kLoadContext), 1);
  EXPECT_NE(Log().find(u"Error Description : refused"), String::npos);
  EXPECT_EQ(Panel(1), u"Contacts could not be loaded.");
  ExpectUsable();
}

TEST_F(ContactLoadTest, AListThatBreaksOffKeepsItsRowsAndSaysSo) {
  driver.FailAtEnd(u"AS CONTACTTYPE", Error(ErrorNumber::DriverFailure, u"link lost"));
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(ErrorsLogged(kLoadContext), 1);
  EXPECT_EQ(Panel(1), u"Not all contacts could be loaded.");
  EXPECT_GT(form->vsfContacts.Rows(), 1);
  ExpectUsable();
}

TEST_F(ContactLoadTest, ANewContactDoesNotHideThatOthersAreMissing) {
  Open();
  forms::ContactList list(session.Services, session.Database,
                          {*form, form->vsfContacts, form->StatusBar1, form->ProgressBar1});
  driver.FailAtEnd(u"AS CONTACTTYPE", Error(ErrorNumber::DriverFailure, u"link lost"));
  list.Load(u"SHARED");
  ASSERT_TRUE(Complete());
  AddContact(list);
  EXPECT_EQ(Panel(1), u"Not all contacts could be loaded.");
  EXPECT_EQ(Column(u"NAME").back(), u"Carl");
  // After a load that is whole, new contacts are counted again.
  Lists({Item(u"1", u"Anna")});
  Counts(Queries::kCountFolderContacts, 1);
  list.Load(u"SHARED");
  ASSERT_TRUE(Complete());
  AddContact(list);
  EXPECT_EQ(Panel(1), u"2 item(s)");
}

TEST_F(ContactLoadTest, ANewContactDoesNotHideThatAllAreMissing) {
  Open();
  forms::ContactList list(session.Services, session.Database,
                          {*form, form->vsfContacts, form->StatusBar1, form->ProgressBar1});
  Lists({});
  driver.FailAtEnd(u"AS CONTACTTYPE", Error(ErrorNumber::DriverFailure, u"link lost"));
  list.Load(u"SHARED");
  ASSERT_TRUE(Complete());
  AddContact(list);
  EXPECT_EQ(Panel(1), u"Contacts could not be loaded.");
}

TEST_F(ContactLoadTest, AfterAFailureTheNextNodeLoads) {
  driver.Fail(u"AS CONTACTTYPE", Error(ErrorNumber::SyntaxOrPermission, u"refused"));
  Open();
  ClickAndWait(u"SHARED");
  Lists({Item(u"1", u"Anna")});
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(Column(u"NAME"), (Texts{u"Anna"}));
}

TEST_F(ContactLoadTest, AnIdThatIsNoNumberNeverReachesTheDatabase) {
  SharedFolders({{u"7 OR 1=1", u"Evil"}});
  Open();
  Click(u"SFLD7 OR 1=1");
  EXPECT_EQ(ErrorsLogged(kLoadContext), 1);
  EXPECT_TRUE(Ran(u"OR 1=1").empty());
  EXPECT_TRUE(Ran(u"COUNT(1)").empty());
  ExpectUsable();
}

TEST_F(ContactLoadTest, AnIdBeyondACommandsParameterIsAFailure) {
  SharedFolders({{u"99999999999", u"Far"}});
  Open();
  Click(u"SFLD99999999999");
  EXPECT_EQ(ErrorsLogged(kLoadContext), 1);
  ExpectUsable();
}

TEST_F(ContactLoadTest, ALogThatCannotBeWrittenChangesNothing) {
  system.FailsToAppend = true;
  driver.Fail(u"AS CONTACTTYPE", Error(ErrorNumber::SyntaxOrPermission, u"refused"));
  Open();
  ClickAndWait(u"SHARED");
  EXPECT_EQ(Panel(1), u"Contacts could not be loaded.");
  ExpectUsable();
}

}  // namespace
}  // namespace ktrv::tests
