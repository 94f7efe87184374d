#include "component/clsMain.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/DialogFixture.h"

namespace ktrv::tests {
namespace {

using Lines = std::vector<String>;

constexpr std::int32_t kFirstUser = 1;
constexpr std::int32_t kSecondUser = 2;
constexpr std::int32_t kNobody = 9;

/// What an open window or dialog works with, whatever the host says and calls meanwhile. A second
/// database has the same ids for other things.
struct OwnSessionsTest : DialogFixture {
  OwnSessionsTest() {
    Fill(database, u"");
    Fill(other, u"Other ");
  }
  static void Fill(AddressBookDatabase& book, const String& prefix) {
    const auto named = [&](StringView name) { return u"'" + prefix + String(name) + u"'"; };
    book.Run({
        u"INSERT INTO SMS_USERS (ID, NAME, ADMIN, DISABLED, DELETED) VALUES (1, 'A', 1, 0, 0),"
        u" (2, 'B', 0, 0, 0)",
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID) VALUES (1, 'S', " +
            named(u"Staff") + u", 0)",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) VALUES (1, 0, " +
            named(u"Ann") + u", '70'), (2, 0, " + named(u"Bert") + u", '71')",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, " + named(u"Boat") +
            u", 0), (6, " + named(u"Crew") + u", 0)",
        u"INSERT INTO SMS_ABGROUPMAPS VALUES (5, '1', 'S'), (6, '2', 'S')",
    });
  }

  template <class Dialog>
  void In(std::function<void(Dialog&)> play) {
    screen.PlayModal([play = std::move(play)](controls::Form& form) {
      play(dynamic_cast<Dialog&>(form));
      form.Unload();
    });
  }
  void CloseNext() {
    screen.PlayModal([](controls::Form& form) { form.UserCloses(); });
  }
  /// Waits for both lists.
  bool Come(forms::frmGroupsNew& dialog) {
    return screen.WaitUntil(
        [&] { return !dialog.Sources().IsLoading() && !dialog.Members().IsLoading(); });
  }
  void Pick(int row) {
    In<forms::frmGroupsNew>([this, row](forms::frmGroupsNew& picker) {
      ASSERT_TRUE(Come(picker));
      picker.vsfFolderContacts.UserSelects({row}, row);
      picker.cmdSelect.UserClicks();
      picker.cmdOK.UserClicks();
    });
  }

  void AtServer() { session.RunAt = RunApplicationAt::RuntAtServer; }
  forms::frmAddressBook& Book() { return dialogs.AddressBook(); }
  forms::frmAddressBook& OpenBook(std::int32_t user = kFirstUser) {
    EXPECT_EQ(main.LoadAddressBook(user), 1);
    return Book();
  }
  bool BookHasRows() {
    return screen.WaitUntil([&] { return !Book().List().IsLoading(); });
  }
  void Show(StringView key) {
    Book().tvwContacts.UserClicks(*Book().tvwContacts.Find(key));
    ASSERT_TRUE(BookHasRows());
  }
  void SelectRow(int row) {
    Book().tvwContacts.UserFocuses(false);
    Book().vsfContacts.UserSelects({row}, row);
  }
  String OtherString() const { return other.ConnectionString(); }
  static Lines Contacts(AddressBookDatabase& book) {
    return book.Rows(u"SELECT FNAME FROM SMS_ABCONTACTS ORDER BY ID");
  }

  AddressBookDatabase other;
  Dialogs dialogs{session};
  clsMain main{session, dialogs};
};

// Results.

TEST_F(OwnSessionsTest, ACancelledPickReturnsNoOtherPicksRecipients) {
  AtServer();
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& outer) {
    ASSERT_TRUE(Come(outer));
    Pick(1);
    EXPECT_EQ(main.LoadRecipients(kFirstUser, false), 1);
    EXPECT_EQ(main.SelectedRecipients()->Count(), 1);
    outer.cmdCancel.UserClicks();
  });
  EXPECT_EQ(main.LoadRecipients(kFirstUser, false), 1);
  EXPECT_EQ(main.SelectedRecipients()->Count(), 0);
  EXPECT_EQ(main.SelectedMobileNos()->Count(), 0);
  EXPECT_EQ(main.strContactsName(), u"");
}

TEST_F(OwnSessionsTest, ACancelledNewContactHasNoOthersId) {
  In<forms::frmNewContact>([this](forms::frmNewContact& outer) {
    CloseNext();
    EXPECT_EQ(main.EditContacts(kFirstUser, 1, 2, {}, {}), 1);
    outer.cmdCancel.UserClicks();
  });
  EXPECT_EQ(main.AddContacts(kFirstUser, 1, {}, {}), 1);
  EXPECT_EQ(main.NewContactId(), u"");
}

TEST_F(OwnSessionsTest, ACancelledNewGroupHasNoOthersId) {
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& outer) {
    ASSERT_TRUE(Come(outer));
    In<forms::frmGroupsNew>([this](forms::frmGroupsNew& inner) {
      ASSERT_TRUE(Come(inner));
      inner.cmdOK.UserClicks();
    });
    EXPECT_EQ(main.EditGroup(kFirstUser, u"6", 1, {}), 1);
    EXPECT_EQ(main.NewGroupId(), u"6");
    outer.cmdCancel.UserClicks();
  });
  EXPECT_EQ(main.AddGroup(kFirstUser, u"0", 1, {}), 1);
  EXPECT_EQ(main.NewGroupId(), u"");
  EXPECT_EQ(main.NewGroupName(), u"");
}

TEST_F(OwnSessionsTest, ACancelledNewContactAddsNoOthersRow) {
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    ASSERT_TRUE(Come(editor));
    const int rows = editor.vsfFolderContacts.Rows();
    In<forms::frmNewContact>([this](forms::frmNewContact& contact) {
      CloseNext();
      EXPECT_EQ(main.EditContacts(kFirstUser, 1, 2, {}, {}), 1);
      contact.cmdCancel.UserClicks();
    });
    editor.cmdNew.UserClicks();
    EXPECT_EQ(editor.vsfFolderContacts.Rows(), rows);
  });
  EXPECT_EQ(main.EditGroup(kFirstUser, u"5", 1, {}), 1);
}

TEST_F(OwnSessionsTest, AGroupEditorTakesNoPickAway) {
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    ASSERT_TRUE(Come(editor));
    Pick(2);
    EXPECT_EQ(main.LoadRecipients(kFirstUser, false), 1);
    editor.cmdOK.UserClicks();
  });
  EXPECT_EQ(main.EditGroup(kFirstUser, u"5", 1, {}), 1);
  ASSERT_EQ(main.SelectedRecipients()->Count(), 1);
}

// One database.

TEST_F(OwnSessionsTest, DeleteReachesNoDatabaseThatIsNotShown) {
  OpenBook();
  Show(u"SHARED");
  main.SetRemoteDBString(OtherString());
  SelectRow(1);
  screen.Answer(MessageAnswer::Yes);
  Book().ContactDelete();
  ASSERT_TRUE(screen.WaitUntil([&] { return !Book().IsDeleting(); }));
  EXPECT_EQ(Contacts(other), (Lines{u"Other Ann", u"Other Bert"}));
  EXPECT_EQ(Contacts(database), Lines{u"Bert"});
}

TEST_F(OwnSessionsTest, AGroupsDeletionReachesNoDatabaseThatIsNotShown) {
  OpenBook();
  Show(u"SHGR5");
  Book().tvwContacts.UserFocuses(true);
  screen.WhileAsked([&] { EXPECT_EQ(main.Init({}, OtherString(), 0, u"SQL", u"log"), 1); });
  screen.Answer(MessageAnswer::Yes);
  Book().ContactDelete();
  EXPECT_EQ(other.Rows(u"SELECT NAME FROM SMS_ABGROUPS ORDER BY ID"),
            (Lines{u"Other Boat", u"Other Crew"}));
  EXPECT_EQ(database.Rows(u"SELECT NAME FROM SMS_ABGROUPS"), Lines{u"Crew"});
}

TEST_F(OwnSessionsTest, ListsAndCountsComeFromNoOtherDatabase) {
  OpenBook();
  main.SetRemoteDBString(OtherString());
  Show(u"SHGR5");
  EXPECT_EQ(Trim(Book().vsfContacts.Text(1, 2)), u"Ann");
  Book().LoadTreeView();
  EXPECT_EQ(Book().tvwContacts.Find(u"SHGR5")->Text, u"Boat");
}

TEST_F(OwnSessionsTest, AContactIsSavedInNoOtherDatabase) {
  for (const bool initialised : {false, true}) {
    In<forms::frmNewContact>([&](forms::frmNewContact& editor) {
      if (initialised) {
        EXPECT_EQ(main.Init({}, OtherString(), 0, u"SQL", u"log"), 1);
      } else {
        main.SetRemoteDBString(OtherString());
      }
      editor.txtLname.SetText(u"Lee");
      editor.cmdSave.UserClicks();
    });
    main.SetRemoteDBString(database.ConnectionString());
    EXPECT_EQ(main.EditContacts(kFirstUser, 1, initialised ? 1 : 2, {}, {}), 1);
  }
  EXPECT_EQ(other.Rows(u"SELECT LNAME FROM SMS_ABCONTACTS ORDER BY ID"), (Lines{u"null", u"null"}));
  EXPECT_EQ(database.Rows(u"SELECT LNAME FROM SMS_ABCONTACTS ORDER BY ID"),
            (Lines{u"Lee", u"Lee"}));
}

TEST_F(OwnSessionsTest, AGroupIsSavedInNoOtherDatabase) {
  In<forms::frmGroupsNew>([&](forms::frmGroupsNew& editor) {
    ASSERT_TRUE(Come(editor));
    EXPECT_EQ(main.Init({}, OtherString(), 0, u"SQL", u"log"), 1);
    editor.txtGroupName.SetText(u"Ship");
    editor.cmdOK.UserClicks();
  });
  EXPECT_EQ(main.EditGroup(kFirstUser, u"5", 1, {}), 1);
  EXPECT_EQ(other.Rows(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 5"), Lines{u"Other Boat"});
  EXPECT_EQ(database.Rows(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 5"), Lines{u"Ship"});
}

TEST_F(OwnSessionsTest, AFolderIsSavedInNoOtherDatabase) {
  OpenBook();
  Show(u"SFLD1");
  Book().tvwContacts.UserFocuses(true);
  In<forms::frmSelectFolder>([&](forms::frmSelectFolder& editor) {
    EXPECT_EQ(main.Init({}, OtherString(), 0, u"SQL", u"log"), 1);
    editor.txtFolderName.SetText(u"People");
    editor.cmdOK.UserClicks();
  });
  Book().ContactProperties();
  EXPECT_EQ(other.Rows(u"SELECT NAME FROM SMS_ABFOLDERS"), Lines{u"Other Staff"});
  EXPECT_EQ(database.Rows(u"SELECT NAME FROM SMS_ABFOLDERS"), Lines{u"People"});
}

TEST_F(OwnSessionsTest, ADialectMeantForAnotherDatabaseChangesNoOpenDialog) {
  AtServer();
  In<forms::frmGroupsNew>([&](forms::frmGroupsNew& picker) {
    ASSERT_TRUE(Come(picker));
    EXPECT_EQ(main.Init({}, OtherString(), 0, u"unknown", u"log"), 1);
    picker.cboContactType.UserChooses(1);
    ASSERT_TRUE(Come(picker));
    EXPECT_EQ(picker.vsfFolderContacts.Rows(), 1) << "the folder is empty";
    picker.cboContactType.UserChooses(0);
    ASSERT_TRUE(Come(picker));
    EXPECT_EQ(Trim(picker.vsfFolderContacts.Text(1, 2)), u"Ann");
  });
  EXPECT_EQ(main.LoadRecipients(kFirstUser, false), 1);
}

TEST_F(OwnSessionsTest, AChangedDatabaseIsShownByTheNextLoad) {
  OpenBook();
  Show(u"SHGR5");
  main.SetRemoteDBString(OtherString());
  OpenBook();
  EXPECT_TRUE(Book().IsVisible());
  EXPECT_EQ(Book().tvwContacts.Find(u"SHGR5")->Text, u"Other Boat");
}

TEST_F(OwnSessionsTest, ARenamedGroupDoesNotKeepItsFormerNameInTheTree) {
  OpenBook();
  Show(u"SHARED");
  ASSERT_EQ(Trim(Book().vsfContacts.Text(3, 2)), u"Boat");
  SelectRow(3);
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    ASSERT_TRUE(Come(editor));
    editor.txtGroupName.SetText(u"Ship");
    editor.cmdOK.UserClicks();
  });
  Book().ContactProperties();
  EXPECT_EQ(Book().tvwContacts.Find(u"SHGR5")->Text, u"Ship");
}

TEST_F(OwnSessionsTest, AContactMadeInAGroupEditorIsNotLost) {
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    ASSERT_TRUE(Come(editor));
    const int rows = editor.vsfFolderContacts.Rows();
    In<forms::frmNewContact>([](forms::frmNewContact& contact) {
      contact.txtFname.SetText(u"Zoe");
      contact.cmdSave.UserClicks();
    });
    editor.cmdNew.UserClicks();
    ASSERT_TRUE(Come(editor));
    EXPECT_EQ(editor.vsfFolderContacts.Rows(), rows + 1);
  });
  EXPECT_EQ(main.EditGroup(kFirstUser, u"5", 1, {}), 1);
  EXPECT_EQ(Contacts(database), (Lines{u"Ann", u"Bert", u"Zoe"}));
}

TEST_F(OwnSessionsTest, ACommandInAReplacedWindowChangesNothingInTheNewOne) {
  OpenBook();
  Show(u"SHGR5");
  In<forms::frmNewContact>([this](forms::frmNewContact& editor) {
    main.SetRemoteDBString(OtherString());
    OpenBook();
    editor.txtFname.SetText(u"Zoe");
    editor.cmdSave.UserClicks();
  });
  Book().ContactNew({});
  EXPECT_EQ(Contacts(database), (Lines{u"Ann", u"Bert", u"Zoe"}));
  EXPECT_EQ(other.Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), Lines{u"2"});
  EXPECT_EQ(Book().tvwContacts.Find(u"SHGR5")->Text, u"Other Boat");
}

TEST_F(OwnSessionsTest, ACheckOfRightsAsksNoFormerDatabase) {
  other.Run({u"UPDATE SMS_USERS SET DELETED = 1 WHERE ID = 1"});
  // The one refusal that leaves the connection open.
  EXPECT_EQ(main.EditContacts(kNobody, 1, 1, {}, {}), 0);
  ASSERT_EQ(session.SessionConnection->State(), database::ObjectState::Open);
  main.SetRemoteDBString(OtherString());
  EXPECT_EQ(main.LoadAddressBook(kFirstUser), 0);
  EXPECT_EQ(screen.LastMessage().Text, u"User has been either deleted or disabled");
}

// User and rights.

TEST_F(OwnSessionsTest, AClerksCallTakesNoRightsFromAnOpenWindow) {
  OpenBook();
  Show(u"SHARED");
  CloseNext();
  EXPECT_EQ(main.EditContacts(kSecondUser, 0, 1, {}, {}), 1);
  SelectRow(1);
  screen.Answer(MessageAnswer::Yes);
  Book().ContactDelete();
  ASSERT_TRUE(screen.WaitUntil([&] { return !Book().IsDeleting(); }));
  EXPECT_EQ(Contacts(database), Lines{u"Bert"});
}

TEST_F(OwnSessionsTest, AnAdministratorsCallGivesAClerksWindowNoRights) {
  OpenBook(kSecondUser);
  Show(u"SHARED");
  CloseNext();
  EXPECT_EQ(main.EditContacts(kFirstUser, 0, 1, {}, {}), 1);
  SelectRow(1);
  Book().ContactDelete();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Contacts(database), (Lines{u"Ann", u"Bert"}));
  Show(u"SHGR5");
  Book().tvwContacts.UserFocuses(true);
  In<forms::frmGroupsNew>(
      [](forms::frmGroupsNew& editor) { EXPECT_FALSE(editor.cmdOK.Enabled()); });
  Book().ContactProperties();
}

TEST_F(OwnSessionsTest, ARefusedUsersIdIsStoredNowhere) {
  OpenBook();
  EXPECT_EQ(main.EditContacts(kNobody, 0, 1, {}, {}), 0);
  In<forms::frmSelectFolder>([](forms::frmSelectFolder& editor) {
    editor.txtFolderName.SetText(u"People");
    editor.cmdOK.UserClicks();
  });
  Book().Menus.Item(u"mnuSharedFolderContext").Click();
  EXPECT_EQ(database.Rows(u"SELECT USER_ID FROM SMS_ABFOLDERS WHERE NAME = 'People'"), Lines{u"1"});
}

TEST_F(OwnSessionsTest, AnotherUsersLoadLeavesNoFormerRights) {
  OpenBook();
  Show(u"SHARED");
  OpenBook(kSecondUser);
  EXPECT_TRUE(Book().IsVisible());
  Show(u"SHARED");
  SelectRow(1);
  Book().ContactDelete();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Contacts(database), (Lines{u"Ann", u"Bert"}));
}

TEST_F(OwnSessionsTest, ARefusedLoadChangesNoOpenWindow) {
  OpenBook();
  const auto* window = &Book();
  EXPECT_EQ(main.LoadAddressBook(kNobody), 0);
  EXPECT_EQ(&Book(), window);
  EXPECT_TRUE(window->IsLoaded());
}

// Objects.

TEST_F(OwnSessionsTest, AnotherObjectsEndClosesNothing) {
  AtServer();
  OpenBook();
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& picker) {
    ASSERT_TRUE(Come(picker));
    { clsMain second(session, dialogs); }
    EXPECT_TRUE(picker.IsLoaded());
    picker.vsfFolderContacts.UserSelects({1}, 1);
    picker.cmdSelect.UserClicks();
    picker.cmdOK.UserClicks();
  });
  EXPECT_EQ(main.LoadRecipients(kFirstUser, false), 1);
  EXPECT_EQ(main.SelectedRecipients()->Count(), 1);
  EXPECT_TRUE(Book().IsLoaded());
}

TEST_F(OwnSessionsTest, AMenuThatOutlivesTheObjectOpensNoEditor) {
  OpenBook();
  screen.Choose(u"mnuSharedContactContext");
  screen.WhileMenuIsOpen([&] { dialogs.UnloadAll(); });
  Book().ShowItemContextMenu();
  EXPECT_EQ(std::count(screen.Log.begin(), screen.Log.end(), "modal"), 0);
  EXPECT_EQ(Log(), u"");
}

TEST_F(OwnSessionsTest, AWindowOnItsWayOutIsNotTheOneShown) {
  OpenBook();
  const auto realised = [&] { return std::count(screen.Log.begin(), screen.Log.end(), "realise"); };
  // As when the host destroys it: what there is of its window goes with a later message.
  Book().UserCloses();
  const auto before = realised();
  OpenBook();
  EXPECT_TRUE(Book().IsVisible());
  EXPECT_EQ(realised(), before + 1);
}

}  // namespace
}  // namespace ktrv::tests
