#include "data/GroupQueries.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/component/EntryFixture.h"

// What a host reads after its user worked in the group dialog.
namespace ktrv {
namespace {

using database::DataType;
using forms::frmGroupsNew;
namespace Queries = data::GroupQueries;

struct GroupOperationsTest : tests::EntryFixture {
  GroupOperationsTest() {
    driver.Answer(u"SELECT COUNT(1)", {{u"TOTAL", DataType::Integer}}, {{u"0"}});
    driver.Answer(u"AS MOBILE_DISPLAY FROM",
                  {{u"ID"}, {u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}, {u"1"}, {u"DISPLAY"}},
                  {{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
                   {u"2", u"Bert", u"98002", u"", u"1", u"98002"}});
    driver.Answer(Queries::kGroupIdByName, {{u"ID", DataType::Integer}}, {{u"77"}});
    driver.Answer(Queries::kGroup, {{u"NAME"}, {u"FOLDER_ID", DataType::Integer}},
                  {{u" Friends ", u"0"}});
    driver.Answer(Queries::kMemberships, {{u"CONTACT_ID"}, {u"CONTACT_TYPE"}},
                  {{u"1", u"S"}, {u"2", u"S"}});
    driver.Answer(u"SELECT ID FROM SMS_ABCONTACTS WHERE ID IN", {{u"ID"}}, {{u"1"}, {u"2"}});
    driver.Answer(Queries::kFolder,
                  {{u"ID", DataType::Integer}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                  {{u"4", u"Staff", u"S", u""}});
    driver.Changes(u"UPDATE SMS_ABGROUPS", 1);
  }

  /// The user of the next dialog waits for its lists and works in it.
  void Play(std::function<void(frmGroupsNew&)> work) {
    screen.PlayModal([this, work = std::move(work)](controls::Form& form) {
      auto& dialog = static_cast<frmGroupsNew&>(form);
      ASSERT_TRUE(screen.WaitUntil(
          [&] { return !dialog.Sources().IsLoading() && !dialog.Members().IsLoading(); }));
      work(dialog);
    });
  }
  static void Pick(frmGroupsNew& dialog, int row) {
    dialog.vsfFolderContacts.UserSelects({row}, row);
    dialog.cmdSelect.UserClicks();
  }
};

TEST_F(GroupOperationsTest, NewGroupIsReadBackThroughItsProperties) {
  Initialise(kServer);
  Play([](frmGroupsNew& dialog) {
    EXPECT_EQ(dialog.Request().FolderId, u"4");
    Pick(dialog, 1);
    dialog.txtGroupName.UserTypes(u"Team");
    dialog.cmdOK.UserClicks();
  });
  EXPECT_EQ(main.AddGroup(1, u"4", 0, {}), 1);
  EXPECT_EQ(main.NewGroupId(), u"77");
  EXPECT_EQ(main.NewGroupName(), u"Team");
  EXPECT_EQ(main.NewGroupType(), u"1");
}

TEST_F(GroupOperationsTest, LocalGroupHasNoIdOfAnEarlierOne) {
  Initialise();
  session.GroupId = u"17";
  Play([](frmGroupsNew& dialog) {
    dialog.txtGroupName.UserTypes(u"Mine");
    dialog.cmdOK.UserClicks();
  });
  EXPECT_EQ(main.AddGroup(2, u"0", 1, {}), 1);
  EXPECT_EQ(main.NewGroupName(), u"Mine");
  EXPECT_EQ(main.NewGroupId(), u"");
}

TEST_F(GroupOperationsTest, CancelledGroupIsNotReadBack) {
  Initialise(kServer);
  Play([](frmGroupsNew& dialog) {
    dialog.txtGroupName.UserTypes(u"Team");
    dialog.cmdCancel.UserClicks();
  });
  EXPECT_EQ(main.AddGroup(1, u"4", 0, {}), 1);
  EXPECT_EQ(main.NewGroupId(), u"");
  EXPECT_EQ(main.NewGroupName(), u"");
}

TEST_F(GroupOperationsTest, EditedGroupIsRenamed) {
  Initialise(kServer);
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 3", {{u"NAME"}}, {{u" Friends "}});
  Play([](frmGroupsNew& dialog) {
    EXPECT_EQ(dialog.txtGroupName.Text(), u"Friends");
    dialog.txtGroupName.SetText(u"Best friends");
    dialog.cmdOK.UserClicks();
  });
  EXPECT_EQ(main.EditGroup(1, u"3", 0, {}), 1);
  EXPECT_EQ(main.NewGroupId(), u"3");
  EXPECT_EQ(main.NewGroupName(), u"Best friends");
  EXPECT_FALSE(IsConnected());
}

TEST_F(GroupOperationsTest, IdWithZerosKeepsNoGroupFromBeingSaved) {
  Initialise(kServer);
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = ", {{u"NAME"}}, {{u"Friends"}});
  driver.Answer(Queries::kGroup, {{u"NAME"}, {u"FOLDER_ID", DataType::Integer}},
                {{u"Friends", u"0"}});
  driver.Changes(u"UPDATE SMS_ABGROUPS", 0);  // it was called so already
  driver.Changes(u"DELETE FROM SMS_ABGROUPMAPS", 0);
  driver.Answer(Queries::kGroupIdByName, {{u"ID", DataType::Integer}}, {{u"3"}});
  for (const StringView id : {u"003", u"3"}) {
    Play([](frmGroupsNew& dialog) {
      dialog.cmdOK.UserClicks();
      EXPECT_FALSE(dialog.IsLoaded());
      dialog.Unload();
    });
    EXPECT_EQ(main.EditGroup(1, id, 1, {}), 1);
    EXPECT_EQ(main.NewGroupId(), id) << "the host finds its id as it wrote it";
  }
}

TEST_F(GroupOperationsTest, GroupThatIsNotThereHasNoOthersName) {
  Initialise(kServer);
  session.GroupName = u"Other";
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 3", {{u"NAME"}}, {});
  EXPECT_EQ(main.EditGroup(1, u"3", 0, {}), 0);
  EXPECT_EQ(main.NewGroupId(), u"3");
  EXPECT_EQ(main.NewGroupName(), u"");
}

TEST_F(GroupOperationsTest, SharedGroupThatIsNotThereIsLoggedAndNothingShown) {
  Initialise(kServer);
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 3", {{u"NAME"}}, {});
  EXPECT_EQ(main.EditGroup(1, u"3", 0, {}), 0);
  EXPECT_TRUE(
      LoggedError(u"KTRVAddressBook:  Error occured. Sub: EditGroup, Module: clsMain", 3021));
  EXPECT_TRUE(screen.Log.empty());
}

TEST_F(GroupOperationsTest, BlanksAroundAGroupIdRefuseNoGroup) {
  Initialise(kServer);
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 5", {{u"NAME"}}, {{u"Friends"}});
  Play([](frmGroupsNew& dialog) { dialog.cmdOK.UserClicks(); });
  EXPECT_EQ(main.EditGroup(1, u" 5 ", 0, {}), 1);
  EXPECT_EQ(main.NewGroupId(), u"5");
  EXPECT_EQ(main.NewGroupName(), u"Friends");
}

struct RefusedFolderTest : GroupOperationsTest {
  void Refused(StringView folderId, std::int32_t number) {
    EXPECT_EQ(main.AddGroup(1, folderId, 1, {}), 0);
    EXPECT_TRUE(
        LoggedError(u"KTRVAddressBook:  Error occured. Sub: AddGroup, Module: clsMain", number));
    EXPECT_TRUE(screen.Log.empty()) << "a window was made";
  }
};

TEST_F(RefusedFolderTest, NoGroupIsMadeInAFolderThatIsGone) {
  Initialise();
  driver.Answer(u"SELECT TYPE FROM SMS_ABFOLDERS WHERE ID = 9", {{u"TYPE"}}, {});
  Refused(u"9", ErrorNumber::NoCurrentRecord);
}

TEST_F(RefusedFolderTest, NoGroupIsMadeInARemoteFolder) {
  Initialise();
  driver.Answer(u"SELECT TYPE FROM SMS_ABFOLDERS WHERE ID = 9", {{u"TYPE"}}, {{u"R"}});
  Refused(u"9", ErrorNumber::InvalidProcedureCall);
}

TEST_F(RefusedFolderTest, NoGroupIsMadeInAFolderThatNoTreeShows) {
  Initialise();
  driver.Answer(u"SELECT TYPE FROM SMS_ABFOLDERS WHERE ID = 9", {{u"TYPE"}}, {{u"L"}});
  Refused(u"9", ErrorNumber::InvalidProcedureCall);
}

TEST_F(RefusedFolderTest, FolderThatIsNoIdNeverReachesTheDatabase) {
  Initialise();
  for (const StringView id : {u"", u"x", u"4 OR 1=1", u"-4", u"4.0"}) {
    Refused(id, ErrorNumber::TypeMismatch);
    EXPECT_NE(LastQuery().find("SMS_USERS"), std::string::npos) << ToUtf8(id);
  }
}

TEST_F(GroupOperationsTest, BlanksAroundAFolderIdRefuseNoGroup) {
  Initialise(kServer);
  const auto closes = [&](StringView folderId) {
    Play([folderId](frmGroupsNew& dialog) {
      EXPECT_EQ(dialog.Request().FolderId, folderId);
      dialog.cmdCancel.UserClicks();
    });
  };
  closes(u"4");
  EXPECT_EQ(main.AddGroup(1, u" 4 ", 0, {}), 1);
  closes(u"0");
  EXPECT_EQ(main.AddGroup(1, u" 0", 0, {}), 1);
}

/// The database returns the folder's number without them, and the new group is recognised by it.
TEST_F(GroupOperationsTest, FolderIdLosesItsLeadingZeros) {
  Initialise(kServer);
  Play([](frmGroupsNew& dialog) {
    EXPECT_EQ(dialog.Request().FolderId, u"4");
    dialog.cmdCancel.UserClicks();
  });
  EXPECT_EQ(main.AddGroup(1, u"004", 0, {}), 1);
}

TEST_F(GroupOperationsTest, FolderOfALocalGroupIsNotLookedUp) {
  Initialise();
  Play([](frmGroupsNew& dialog) { dialog.cmdCancel.UserClicks(); });
  EXPECT_EQ(main.AddGroup(2, u"9", 1, {}), 1);
  for (const auto& execution : driver.Executed()) {
    EXPECT_EQ(execution.Text.find(u"SMS_ABFOLDERS"), String::npos);
  }
}

TEST_F(GroupOperationsTest, SecondPickHoldsNothingOfTheFirst) {
  Initialise(kServer);
  for (const int row : {1, 2}) {
    Play([row](frmGroupsNew& dialog) {
      Pick(dialog, row);
      dialog.cmdOK.UserClicks();
    });
    EXPECT_EQ(main.LoadRecipients(1, false), 1);
    ASSERT_EQ(main.SelectedRecipients()->Count(), 1);
    ASSERT_EQ(main.SelectedMobileNos()->Count(), 1);
  }
  EXPECT_EQ(main.SelectedRecipients()->Item(1), u"SC|2|Bert|98002");
  EXPECT_EQ(main.SelectedMobileNos()->Item(u"m1"), u"98002");
}

TEST_F(GroupOperationsTest, RefusedPickShowsNoFormerRecipients) {
  Initialise(kServer);
  const auto pick = [&] {
    Play([](frmGroupsNew& dialog) {
      Pick(dialog, 1);
      dialog.cmdOK.UserClicks();
    });
    EXPECT_EQ(main.LoadRecipients(1, true), 1);
    session.ContactsName = u"Anna;";  // as if a group had been expanded
    ASSERT_EQ(main.SelectedRecipients()->Count(), 1);
  };
  const auto refused = [&](std::int32_t user) {
    EXPECT_EQ(main.LoadRecipients(user, true), 0);
    EXPECT_EQ(main.SelectedRecipients()->Count(), 0);
    EXPECT_EQ(main.SelectedMobileNos()->Count(), 0);
    EXPECT_EQ(session.SelectedNames->Count(), 0);
    EXPECT_EQ(main.strContactsName(), u"");
  };
  pick();
  const auto kept = main.SelectedRecipients();
  refused(99);  // who is no user
  EXPECT_EQ(kept->Count(), 1) << "a host may keep the last pick";
  pick();
  session.InitDone = 0;
  refused(1);
  session.InitDone = 1;
  pick();
  driver.Fail(u"SMS_USERS", Error(ErrorNumber::TableNotFound, u"No table", u"driver"));
  refused(1);
}

TEST_F(GroupOperationsTest, CancelledPickIsShownAndEmpty) {
  Initialise(kServer);
  Play([](frmGroupsNew& dialog) {
    Pick(dialog, 1);
    dialog.cmdCancel.UserClicks();
  });
  EXPECT_EQ(main.LoadRecipients(1, false), 1);
  EXPECT_EQ(main.SelectedRecipients()->Count(), 0);
  EXPECT_EQ(main.strContactsName(), u"");
}

TEST_F(GroupOperationsTest, OrdinaryUserAtTheServerSeesCandidatesAndCannotConfirm) {
  Initialise(kServer);
  Play([](frmGroupsNew& dialog) {
    EXPECT_EQ(dialog.vsfFolderContacts.Rows(), 3);
    EXPECT_FALSE(dialog.cmdOK.Enabled());
    dialog.cmdCancel.UserClicks();
  });
  EXPECT_EQ(main.LoadRecipients(2, false), 1);
}

}  // namespace
}  // namespace ktrv
