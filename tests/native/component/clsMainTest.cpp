#include "component/clsMain.h"

#include "tests/native/component/EntryFixture.h"

namespace ktrv::tests {
namespace {

using clsMainTest = EntryFixture;

bool WasShown(const ScriptedScreen& screen) {
  return std::find(screen.Log.begin(), screen.Log.end(), "show") != screen.Log.end();
}

TEST_F(clsMainTest, LoadAddressBookShowsTheWindowAndKeepsTheConnection) {
  Initialise();
  EXPECT_EQ(main.LoadAddressBook(2), 1);
  EXPECT_TRUE(WasShown(screen));
  EXPECT_TRUE(dialogs.AddressBook().IsVisible());
  EXPECT_EQ(driver.LinksAlive(), 1) << "the window has it now";
}

TEST_F(clsMainTest, LoadAddressBookShowsTheSameWindowAgain) {
  Initialise();
  main.LoadAddressBook(2);
  const auto* window = &dialogs.AddressBook();
  EXPECT_EQ(main.LoadAddressBook(2), 1);
  EXPECT_EQ(&dialogs.AddressBook(), window);
  EXPECT_EQ(std::count(screen.Log.begin(), screen.Log.end(), "realise"), 1);
}

TEST_F(clsMainTest, LoadAddressBookRefusesAGeneralUserAtTheServer) {
  Initialise(kServer);
  const String before = Log();
  EXPECT_EQ(main.LoadAddressBook(2), 0);
  EXPECT_EQ(screen.LastMessage().Text,
            u"You do not have rights to access address book. Please contact Administrator.");
  EXPECT_EQ(screen.LastMessage().Style, 16);
  EXPECT_FALSE(IsConnected());
  EXPECT_TRUE(screen.Log.empty());
  EXPECT_EQ(Log(), before);
}

TEST_F(clsMainTest, LoadAddressBookOpensForAnAdministratorAtTheServer) {
  Initialise(kServer);
  EXPECT_EQ(main.LoadAddressBook(1), 1);
  EXPECT_EQ(main.NewContactType(), u"1");
}

TEST_F(clsMainTest, TheEndOfTheLastObjectUnloadsTheWindow) {
  Initialise();
  {
    clsMain second(session, dialogs);
    ASSERT_EQ(second.LoadAddressBook(2), 1);
  }
  EXPECT_TRUE(dialogs.AddressBook().IsLoaded());
  last.reset();
  EXPECT_FALSE(dialogs.AddressBook().IsLoaded());
}

TEST_F(clsMainTest, TheEndOfTheLastObjectClosesTheConnections) {
  Initialise();
  // The one refusal that leaves the host's connection open.
  ASSERT_EQ(main.EditContacts(9, 0, 5, {}, {}), 0);
  ASSERT_TRUE(IsConnected());
  last.reset();
  EXPECT_FALSE(IsConnected());
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(clsMainTest, TheEndOfTheLastObjectClosesTheWindowsConnection) {
  Initialise();
  ASSERT_EQ(main.LoadAddressBook(2), 1);
  ASSERT_EQ(driver.LinksAlive(), 1);
  last.reset();
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(clsMainTest, TheEndOfTheLastObjectClosesAnOpenEditor) {
  Initialise();
  bool loaded = true;
  screen.PlayModal([&](controls::Form& form) {
    dialogs.UnloadAll();
    loaded = form.IsLoaded();
    form.Unload();
  });
  EXPECT_EQ(main.LoadFolders(1), 1);
  EXPECT_FALSE(loaded);
}

TEST_F(clsMainTest, EditContactsHandsTheNameOfASharedContactOver) {
  Initialise();
  driver.Answer(u"SELECT FNAME FROM SMS_ABCONTACTS WHERE ID  = 5", {{u"FNAME"}}, {{u"  Asha "}});
  String handedOver;
  screen.PlayModal([&](controls::Form& form) {
    handedOver = session.EditContactId + u"|" + session.PresetContactName;
    form.UserCloses();
  });
  EXPECT_EQ(main.EditContacts(1, 1, 5, {}, {}), 1);
  EXPECT_EQ(handedOver, u"5|Asha");
  EXPECT_EQ(main.NewContactType(), u"1");
}

TEST_F(clsMainTest, EditorsAndPickerOpenWithTheConnectionClosed) {
  Initialise();
  const auto connectedInside = [&](const std::function<std::int32_t()>& operation) {
    bool connected = true;
    screen.PlayModal([&](controls::Form& form) {
      connected = IsConnected();
      form.UserCloses();
    });
    EXPECT_EQ(operation(), 1);
    return connected;
  };
  EXPECT_FALSE(connectedInside([&] { return main.EditContacts(1, 0, 5, {}, {}); }));
  EXPECT_FALSE(connectedInside([&] { return main.LoadRecipients(1, false); }));
}

TEST_F(clsMainTest, EditContactsFailsForASharedContactThatIsGone) {
  Initialise();
  driver.Answer(u"FROM SMS_ABCONTACTS", {{u"FNAME"}}, {});
  EXPECT_EQ(main.EditContacts(1, 1, 5, {}, {}), 0);
  EXPECT_TRUE(screen.Log.empty());
  EXPECT_TRUE(LoggedError(u"KTRVAddressBook: Error occured. Sub: EditContacts, Module: clsMain",
                          ErrorNumber::NoCurrentRecord));
}

TEST_F(clsMainTest, AddGroupShowsTheGroupEditorForANewGroup) {
  Initialise();
  session.GroupId = u"17";
  String caption;
  CloseNextDialog(&caption);
  EXPECT_EQ(main.AddGroup(1, u"4", 1, {}), 1);
  EXPECT_NE(caption, u"");
  EXPECT_EQ(main.NewGroupId(), u"");
  EXPECT_EQ(main.NewGroupType(), u"1");
  EXPECT_FALSE(IsConnected());
}

TEST_F(clsMainTest, AddGroupByAGeneralUserIsLocal) {
  Initialise();
  CloseNextDialog();
  EXPECT_EQ(main.AddGroup(2, u"0", 1, {}), 1);
  EXPECT_EQ(main.NewGroupType(), u"0");
}

TEST_F(clsMainTest, EditGroupReadsTheNameOfASharedGroup) {
  Initialise();
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 3", {{u"NAME"}}, {{u" Friends  "}});
  String handedOver;
  screen.PlayModal([&](controls::Form& form) {
    handedOver = session.GroupId + u"|" + session.GroupName;
    form.UserCloses();
  });
  EXPECT_EQ(main.EditGroup(1, u"3", 1, {}), 1);
  EXPECT_EQ(handedOver, u"3|Friends");
  EXPECT_FALSE(IsConnected());
}

TEST_F(clsMainTest, EditGroupOfALocalGroupFailsAndShowsNothing) {
  Initialise();
  EXPECT_EQ(main.EditGroup(1, u"3", 0, {}), 0);
  EXPECT_TRUE(LoggedError(u"KTRVAddressBook:  Error occured. Sub: EditGroup, Module: clsMain",
                          ErrorNumber::ObjectClosed));
  EXPECT_TRUE(screen.Log.empty());
}

TEST_F(clsMainTest, EditGroupTakesTheIdThoughTheUserIsRefused) {
  Initialise();
  EXPECT_EQ(main.EditGroup(99, u"3", 1, {}), 0);
  EXPECT_EQ(main.NewGroupId(), u"3");
}

TEST_F(clsMainTest, AGroupIdThatIsNoIdNeverReachesTheDatabase) {
  Initialise();
  EXPECT_EQ(main.EditGroup(1, u"3 OR 1=1", 1, {}), 0);
  EXPECT_THAT(LastQuery(), testing::HasSubstr("SMS_USERS"));
  EXPECT_TRUE(LoggedError(u"KTRVAddressBook:  Error occured. Sub: EditGroup, Module: clsMain",
                          ErrorNumber::TypeMismatch));
}

TEST_F(clsMainTest, LoadRecipientsShowsThePickerWithFreshResults) {
  Initialise();
  session.SelectedRecipients->Add(u"SC|1|Old|1");
  session.SelectedNames->Add(u"Old");
  session.OpenForProperties = true;
  const auto kept = main.SelectedRecipients();
  String caption;
  CloseNextDialog(&caption);
  EXPECT_EQ(main.LoadRecipients(2, true), 1);
  EXPECT_EQ(caption, u"Select Recipient");
  EXPECT_EQ(main.SelectedRecipients()->Count(), 0);
  EXPECT_EQ(session.SelectedNames->Count(), 0);
  EXPECT_EQ(kept->Count(), 1) << "a host may keep the last pick";
  EXPECT_TRUE(session.ExpandGroups);
  EXPECT_FALSE(session.OpenForProperties);
}

TEST_F(clsMainTest, LoadRecipientsPicksSharedGroupsAtTheServerForEveryUser) {
  Initialise(kServer);
  CloseNextDialog();
  EXPECT_EQ(main.LoadRecipients(2, false), 1);
  EXPECT_EQ(main.NewGroupType(), u"1");
}

TEST_F(clsMainTest, LoadRecipientsKeepsTheGroupTypeAtTheClient) {
  Initialise(kClient);
  CloseNextDialog();
  EXPECT_EQ(main.LoadRecipients(1, false), 1);
  EXPECT_EQ(main.NewGroupType(), u"0");
}

TEST_F(clsMainTest, LoadRecipientsTakesItsArgumentsThoughItIsRefused) {
  EXPECT_EQ(main.LoadRecipients(7, true), 0);
  EXPECT_EQ(session.SessionUserId, 7);
  EXPECT_TRUE(session.ExpandGroups);
}

TEST_F(clsMainTest, ARefusedOperationTakesNoArgumentsBeforeInit) {
  EXPECT_EQ(main.EditContacts(7, 1, 5, {}, {}), 0);
  EXPECT_EQ(session.SessionUserId, 0);
  EXPECT_EQ(main.NewContactType(), u"0");
}

TEST_F(clsMainTest, LoadFoldersShowsTheFolderEditorForALocalFolder) {
  Initialise();
  session.FolderType = TypeOfFolder::SharedRemoteFolder;
  CloseNextDialog();
  EXPECT_EQ(main.LoadFolders(1), 1);
  EXPECT_EQ(session.FolderType, TypeOfFolder::LocalFolder);
  EXPECT_FALSE(IsConnected());
}

}  // namespace
}  // namespace ktrv::tests
