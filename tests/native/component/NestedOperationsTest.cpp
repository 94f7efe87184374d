#include "component/clsMain.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/DialogFixture.h"

namespace ktrv::tests {
namespace {

using Lines = std::vector<String>;

/// A host calls an operation while a dialog of another one is open, from a timer for instance.
struct NestedOperationsTest : DialogFixture {
  NestedOperationsTest() {
    database.Run({
        u"INSERT INTO SMS_USERS (ID, NAME, ADMIN, DISABLED, DELETED) VALUES (1, 'A', 1, 0, 0),"
        u" (2, 'B', 0, 0, 0)",
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID) VALUES (1, 'S', 'Staff', 0)",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) VALUES (1, 0, 'Ann', '70'),"
        u" (2, 0, 'Bert', '71')",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 0), (6, 'Crew', 0)",
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

  Dialogs dialogs{session};
  std::unique_ptr<clsMain> main = std::make_unique<clsMain>(session, dialogs);
};

TEST_F(NestedOperationsTest, AContactIsSavedAsTheOneThatWasOpened) {
  In<forms::frmNewContact>([this](forms::frmNewContact& editor) {
    CloseNext();
    EXPECT_EQ(main->EditContacts(1, 1, 2, {}, {}), 1);
    editor.txtFname.SetText(u"Anna");
    editor.cmdSave.UserClicks();
  });
  EXPECT_EQ(main->EditContacts(1, 1, 1, {}, {}), 1);
  EXPECT_EQ(database.Rows(u"SELECT FNAME FROM SMS_ABCONTACTS ORDER BY ID"),
            (Lines{u"Anna", u"Bert"}));
  EXPECT_EQ(main->NewContactId(), u"1");
}

TEST_F(NestedOperationsTest, ANewContactStaysANewOne) {
  In<forms::frmNewContact>([this](forms::frmNewContact& editor) {
    CloseNext();
    EXPECT_EQ(main->EditContacts(1, 1, 2, {}, {}), 1);
    editor.txtFname.SetText(u"Carl");
    editor.cmdSave.UserClicks();
  });
  EXPECT_EQ(main->AddContacts(1, 1, {}, {}), 1);
  EXPECT_EQ(database.Rows(u"SELECT FNAME FROM SMS_ABCONTACTS ORDER BY ID"),
            (Lines{u"Ann", u"Bert", u"Carl"}));
  EXPECT_EQ(main->NewContactId(), u"3");
}

TEST_F(NestedOperationsTest, AGroupIsSavedAsTheOneThatWasOpened) {
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    ASSERT_TRUE(screen.WaitUntil([&] { return !editor.Members().IsLoading(); }));
    CloseNext();
    EXPECT_EQ(main->EditGroup(1, u"6", 1, {}), 1);
    editor.txtGroupName.SetText(u"Ship");
    editor.cmdOK.UserClicks();
  });
  EXPECT_EQ(main->EditGroup(1, u"5", 1, {}), 1);
  EXPECT_EQ(Log(), u"");
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(database.Rows(u"SELECT NAME FROM SMS_ABGROUPS ORDER BY ID"), (Lines{u"Ship", u"Crew"}));
  EXPECT_EQ(database.Rows(u"SELECT * FROM SMS_ABGROUPMAPS ORDER BY GROUP_ID"),
            (Lines{u"5|1|S", u"6|2|S"}));
  EXPECT_EQ(main->NewGroupId(), u"5");
}

TEST_F(NestedOperationsTest, ASharedGroupIsSavedThoughAGeneralUsersLocalOneWasOpenMeanwhile) {
  In<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    ASSERT_TRUE(screen.WaitUntil([&] { return !editor.Members().IsLoading(); }));
    CloseNext();
    EXPECT_EQ(main->AddGroup(2, u"0", 1, {}), 1);
    editor.txtGroupName.SetText(u"Ship");
    editor.cmdOK.UserClicks();
  });
  EXPECT_EQ(main->EditGroup(1, u"5", 1, {}), 1);
  EXPECT_EQ(Log(), u"");
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(database.Rows(u"SELECT NAME FROM SMS_ABGROUPS ORDER BY ID"), (Lines{u"Ship", u"Crew"}));
}

TEST_F(NestedOperationsTest, AFolderOfTheAddressBookIsSavedThoughTheHostsEditorWasOpenMeanwhile) {
  ASSERT_EQ(main->LoadAddressBook(1), 1);
  forms::frmAddressBook& book = dialogs.AddressBook();
  book.tvwContacts.UserClicks(*book.tvwContacts.Find(u"SFLD1"));
  ASSERT_TRUE(screen.WaitUntil([&] { return book.StatusBar1.PanelCount() == 2; }));
  book.tvwContacts.UserFocuses(true);
  In<forms::frmSelectFolder>([this](forms::frmSelectFolder& editor) {
    CloseNext();
    EXPECT_EQ(main->LoadFolders(1), 1);
    editor.txtFolderName.SetText(u"People");
    editor.cmdOK.UserClicks();
  });
  book.ContactProperties();
  EXPECT_EQ(database.Rows(u"SELECT NAME FROM SMS_ABFOLDERS"), (Lines{u"People"}));
}

/// The host is activated when the former window is hidden.
TEST_F(NestedOperationsTest, AWindowHasTheRightsOfItsUserThoughTheHostCalledForAnotherMeanwhile) {
  for (const bool opensAnother : {false, true}) {
    ASSERT_EQ(main->LoadAddressBook(1), 1);
    const User admin = dialogs.AddressBook().Place().User;
    screen.WhileHidden = [&](controls::Form&) {
      if (opensAnother) {
        EXPECT_EQ(main->LoadAddressBook(1), 1);
      } else {
        CloseNext();
        EXPECT_EQ(main->AddGroup(1, u"0", 1, {}), 1);
      }
    };
    EXPECT_EQ(main->LoadAddressBook(2), 1);
    EXPECT_FALSE(screen.WhileHidden);
    EXPECT_TRUE(dialogs.AddressBook().IsVisible());
    EXPECT_FALSE(dialogs.AddressBook().Place().User == admin);
    screen.Pump();
  }
}

TEST_F(NestedOperationsTest, AFailureIsLoggedThoughTheHostCalledInitMeanwhile) {
  const StringView log = u"C:\\the logs of a program\\address book.log";
  const String connection = session.SessionConnectionString;
  ASSERT_EQ(main->Init({}, connection, 1, u"SQL", log), 1);
  ASSERT_EQ(main->LoadAddressBook(1), 1);
  forms::frmAddressBook& book = dialogs.AddressBook();
  book.tvwContacts.UserClicks(*book.tvwContacts.Find(u"SHGR5"));
  ASSERT_TRUE(screen.WaitUntil([&] { return book.StatusBar1.PanelCount() == 2; }));
  In<forms::frmNewContact>([&](forms::frmNewContact& editor) {
    EXPECT_EQ(main->Init({}, connection, 1, u"SQL", log), 1);
    editor.txtFname.SetText(u"Zoe");
    database.Run({u"DROP TABLE SMS_ABGROUPMAPS"});
    editor.cmdSave.UserClicks();
    editor.Unload();
  });
  book.ContactNew({});
  EXPECT_NE(system.TextOf(log).find(u"ContactNew()"), String::npos);
}

TEST_F(NestedOperationsTest, TheAddressBookIsClosedBeforeTheEditorThatItOpened) {
  ASSERT_EQ(main->LoadAddressBook(1), 1);
  forms::frmAddressBook& book = dialogs.AddressBook();
  /// Tells, when it goes, whether the address book is still there.
  struct Editor final : controls::Form {
    Editor(controls::Screen& screen, forms::frmAddressBook& book) : Form(screen, {}), Book(book) {}
    ~Editor() override { Unload(); }
    void Form_QueryUnload() override { BookWasOpen = Book.IsLoaded(); }
    forms::frmAddressBook& Book;
    bool BookWasOpen = true;
  } editor(screen, book);
  screen.PlayModal([&](controls::Form&) { main.reset(); });
  session.Services.Modal.Show(ModalDialogs::Kind::Contact, editor);
  EXPECT_FALSE(editor.BookWasOpen);
}

TEST_F(NestedOperationsTest, TheEndOfTheLastObjectClosesWhatTheAddressBookOpened) {
  ASSERT_EQ(main->LoadAddressBook(1), 1);
  forms::frmAddressBook& book = dialogs.AddressBook();
  bool loaded = true;
  screen.PlayModal([&](controls::Form& editor) {
    main.reset();
    loaded = editor.IsLoaded();
    editor.Unload();
  });
  book.ContactNew({});
  EXPECT_FALSE(loaded);
  EXPECT_FALSE(book.IsLoaded());
}

TEST_F(NestedOperationsTest, InnerDialogsAreClosedBeforeThoseThatOpenedThem) {
  forms::frmGroupsNew outer(session.Place(), {});
  forms::frmGroupsNew inner(session.Place(), {});
  forms::frmNewContact contact(session.Place(), {});
  forms::frmSelectFolder folder(session.Place(), {});
  using Kind = ModalDialogs::Kind;
  std::vector<controls::Form*> open;
  const auto then = [&](controls::Form& form, Kind kind, controls::Form& next) {
    screen.PlayModal([&session = session, &form, &next, kind](controls::Form&) {
      session.Services.Modal.Show(kind, next);
      form.Unload();
    });
  };
  then(outer, Kind::Folder, folder);
  then(folder, Kind::Group, inner);
  then(inner, Kind::Contact, contact);
  screen.PlayModal([&](controls::Form& form) {
    open = session.Services.Modal.Open();
    form.Unload();
  });
  session.Services.Modal.Show(Kind::Group, outer);
  EXPECT_EQ(open, (std::vector<controls::Form*>{&contact, &folder, &inner, &outer}));
  EXPECT_TRUE(session.Services.Modal.Open().empty());
}

}  // namespace
}  // namespace ktrv::tests
