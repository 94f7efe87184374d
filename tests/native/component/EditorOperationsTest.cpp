#include "component/clsMain.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "tests/native/support/DialogFixture.h"

namespace ktrv::tests {
namespace {

constexpr std::int32_t kAdministrator = 1;
constexpr std::int32_t kClerk = 2;
constexpr std::int32_t kDisabled = 3;
constexpr std::int32_t kDeleted = 4;
constexpr std::int32_t kLocal = 0;
constexpr std::int32_t kShared = 1;

/// The operations that open the contact and the folder editor, as a host calls them.
struct EditorOperationsTest : DialogFixture {
  EditorOperationsTest() {
    database.Run(
        {u"INSERT INTO SMS_USERS VALUES (1, 'Admin', 1, 0, 0), (2, 'Clerk', 0, 0, 0), "
         u"(3, 'Away', 1, 1, 0), (4, 'Gone', 1, 0, 1)",
         u"INSERT INTO SMS_ABCONTACTS (ID, FNAME, MOBILENO) VALUES (5, ' Ann ', '4477')"});
  }
  void AtServer() { session.RunAt = RunApplicationAt::RuntAtServer; }
  bool ConnectionIsOpen() const {
    return session.SessionConnection->State() == database::ObjectState::Open;
  }

  /// The user of the next contact editor.
  void PlayContact(std::function<void(forms::frmNewContact&)> play) {
    screen.PlayModal([play = std::move(play)](controls::Form& form) {
      play(dynamic_cast<forms::frmNewContact&>(form));
    });
  }
  void SaveContact(String firstName) {
    PlayContact([firstName = std::move(firstName)](forms::frmNewContact& form) {
      form.txtFname.SetText(firstName);
      form.cmdSave.UserClicks();
    });
  }
  void CancelContact() {
    PlayContact([](forms::frmNewContact& form) { form.cmdCancel.UserClicks(); });
  }

  Dialogs dialogs{session};
  clsMain component{session, dialogs};
};

// AddContacts.

TEST_F(EditorOperationsTest, AddContactsReturnsOneAndLeavesTheNewContact) {
  SaveContact(u"Bob");
  EXPECT_EQ(component.AddContacts(kClerk, kLocal, u"", u""), 1);
  EXPECT_EQ(component.NewContactId(), u"6");
  EXPECT_EQ(component.NewContactType(), u"1");
  EXPECT_EQ(database.Rows(u"SELECT FNAME, MOBILENO, FOLDER_ID FROM SMS_ABCONTACTS WHERE ID = 6"),
            std::vector<String>{u"Bob|91|0"});
  EXPECT_FALSE(ConnectionIsOpen());
}

TEST_F(EditorOperationsTest, AddContactsReturnsOneWhenTheUserCancels) {
  CancelContact();
  EXPECT_EQ(component.AddContacts(kClerk, kLocal, u"", u""), 1);
  EXPECT_EQ(component.NewContactId(), u"");
  EXPECT_EQ(component.NewContactType(), u"0");
}

TEST_F(EditorOperationsTest, AddContactsPresetsNameAndMobile) {
  PlayContact([](forms::frmNewContact& form) {
    EXPECT_EQ(form.txtFname.Text(), u"Bob");
    EXPECT_EQ(form.txtMobileno.Text(), u"4420");
    EXPECT_EQ(form.Caption(), u"New Contact");
    form.cmdCancel.UserClicks();
  });
  component.AddContacts(kClerk, kLocal, u"Bob", u"4420");
}

TEST_F(EditorOperationsTest, ASecondAddContactsShowsAFreshEditor) {
  SaveContact(u"Bob");
  component.AddContacts(kClerk, kLocal, u"", u"");
  PlayContact([](forms::frmNewContact& form) {
    EXPECT_EQ(form.txtFname.Text(), u"");
    EXPECT_EQ(form.txtMobileno.Text(), u"91");
    form.cmdCancel.UserClicks();
  });
  component.AddContacts(kClerk, kLocal, u"", u"");
  EXPECT_EQ(session.SavedContactId, u"");
}

TEST_F(EditorOperationsTest, ASecondAddContactsHandsItsOwnIdBack) {
  SaveContact(u"Bob");
  component.AddContacts(kClerk, kLocal, u"", u"");
  SaveContact(u"Eve");
  component.AddContacts(kClerk, kLocal, u"", u"");
  EXPECT_EQ(component.NewContactId(), u"7");
}

TEST_F(EditorOperationsTest, AnAdministratorAtTheServerAddsSharedContacts) {
  AtServer();
  PlayContact([](forms::frmNewContact& form) {
    EXPECT_EQ(form.Caption(), u"Add Shared Contact");
    form.cmdCancel.UserClicks();
  });
  component.AddContacts(kAdministrator, kLocal, u"", u"");
  EXPECT_EQ(component.NewContactType(), u"1");
}

TEST_F(EditorOperationsTest, AClerkAtTheServerAddsWhatWasAskedFor) {
  AtServer();
  CancelContact();
  component.AddContacts(kClerk, kLocal, u"", u"");
  EXPECT_EQ(component.NewContactType(), u"0");
}

// EditContacts.

TEST_F(EditorOperationsTest, EditContactsChangesTheContactWithTheConnectionClosed) {
  PlayContact([this](forms::frmNewContact& form) {
    EXPECT_EQ(form.Caption(), u"Edit Shared Contact");
    EXPECT_EQ(form.txtMobileno.Text(), u"4477");
    EXPECT_FALSE(ConnectionIsOpen());
    form.txtFname.SetText(u"Anna");
    form.cmdSave.UserClicks();
  });
  EXPECT_EQ(component.EditContacts(kClerk, kShared, 5, u"", u""), 1);
  EXPECT_EQ(database.Rows(u"SELECT FNAME FROM SMS_ABCONTACTS"), std::vector<String>{u"Anna"});
  EXPECT_EQ(component.NewContactId(), u"5");
}

TEST_F(EditorOperationsTest, EditContactsKeepsTheTrimmedNameOfASharedContact) {
  CancelContact();
  component.EditContacts(kClerk, kShared, 5, u"", u"");
  EXPECT_EQ(session.PresetContactName, u"Ann");
}

TEST_F(EditorOperationsTest, EditContactsOfALocalContactHasTheDesignCaption) {
  PlayContact([](forms::frmNewContact& form) {
    EXPECT_EQ(form.Caption(), u"New Contact");
    form.cmdCancel.UserClicks();
  });
  EXPECT_EQ(component.EditContacts(kClerk, kLocal, 5, u"", u""), 1);
  EXPECT_EQ(session.PresetContactName, u"");
}

TEST_F(EditorOperationsTest, AnAdministratorAtTheServerDoesNotTurnAnEditedContactToShared) {
  AtServer();
  CancelContact();
  component.EditContacts(kAdministrator, kLocal, 5, u"", u"");
  EXPECT_EQ(component.NewContactType(), u"0");
}

TEST_F(EditorOperationsTest, ASharedContactThatIsNotThereIsLoggedAndNothingShown) {
  EXPECT_EQ(component.EditContacts(kClerk, kShared, 99, u"", u""), 0);
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occured. Sub: EditContacts, Module: clsMain"), 1);
  EXPECT_TRUE(screen.Log.empty());
}

TEST_F(EditorOperationsTest, ALocalContactThatIsNotThereOpensAnEmptyEditor) {
  PlayContact([](forms::frmNewContact& form) {
    EXPECT_EQ(form.txtFname.Text(), u"");
    form.cmdCancel.UserClicks();
  });
  EXPECT_EQ(component.EditContacts(kClerk, kLocal, 99, u"", u""), 1);
}

TEST_F(EditorOperationsTest, ANegativeIdNeverReachesTheDatabase) {
  EXPECT_EQ(component.EditContacts(kClerk, kShared, -5, u"", u""), 0);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::TypeMismatch));
}

TEST_F(EditorOperationsTest, EditContactsAsksForTheNameInExactlyTheseWords) {
  UseFakeDriver();
  driver.Answer(u"FROM SMS_USERS", {{u"ADMIN", database::DataType::Integer}}, {{u"0"}});
  driver.Answer(u"SMS_ABCONTACTS", {{u"FNAME"}}, {{u"Ann"}});
  CancelContact();
  component.EditContacts(kClerk, kShared, 5, u"", u"");
  EXPECT_EQ(driver.Executed().at(1).Text, u"SELECT FNAME FROM SMS_ABCONTACTS WHERE ID  = 5");
}

TEST_F(EditorOperationsTest, ArgumentsAreTakenBeforeTheUserIsRefused) {
  component.EditContacts(kDisabled, kShared, 5, u"", u"");
  EXPECT_EQ(session.EditContactId, u"5");
  EXPECT_EQ(session.SharedMode, TypeOfContact::SharedContact);
  component.AddContacts(kDeleted, kLocal, u"Bob", u"44");
  EXPECT_EQ(session.SessionUserId, kDeleted);
  EXPECT_EQ(session.SharedMode, TypeOfContact::LocalContact);
  EXPECT_EQ(session.PresetContactName, u"Bob");
  EXPECT_EQ(session.PresetMobileNo, u"44");
}

TEST_F(EditorOperationsTest, AFailureOfTheEditorsOwnLoadingIsLoggedThereAndTheResultStaysOne) {
  database.Run({u"ALTER TABLE SMS_ABCONTACTS RENAME COLUMN HOBBY TO PASTIME"});
  CancelContact();
  EXPECT_EQ(component.EditContacts(kClerk, kShared, 5, u"", u""), 1);
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occured. Sub : Form_Load, Module: frmNewContact"),
            1);
}

// LoadFolders.

TEST_F(EditorOperationsTest, LoadFoldersOpensAnEditorThatCannotSave) {
  screen.PlayModal([this](controls::Form& form) {
    auto& editor = dynamic_cast<forms::frmSelectFolder&>(form);
    EXPECT_EQ(editor.Caption(), u"Add Folder");
    EXPECT_FALSE(ConnectionIsOpen());
    editor.txtFolderName.SetText(u"Friends");
    editor.cmdOK.UserClicks();
    EXPECT_TRUE(editor.IsLoaded());
    editor.cmdCancel.UserClicks();
  });
  session.FolderType = TypeOfFolder::SharedRemoteFolder;
  EXPECT_EQ(component.LoadFolders(kClerk), 1);
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occurred. Sub:Save_Data(), Module: "
                         u"frmSelectFolder"),
            1);
  EXPECT_TRUE(database.Rows(u"SELECT ID FROM SMS_ABFOLDERS").empty());
  EXPECT_EQ(session.FolderType, TypeOfFolder::LocalFolder);
  EXPECT_EQ(session.SessionUserId, kClerk);
}

// The guards.

TEST_F(EditorOperationsTest, BeforeInitEachLogsItsOwnLine) {
  session.InitDone = 0;
  EXPECT_EQ(component.AddContacts(kClerk, kLocal, u"", u""), 0);
  EXPECT_EQ(component.EditContacts(kClerk, kLocal, 5, u"", u""), 0);
  EXPECT_EQ(component.LoadFolders(kClerk), 0);
  EXPECT_EQ(Log(),
            u"KTRVAddressBook: Could not load add contacts because initialisation routine not "
            u"completed....\r\n"
            u"KTRVAddressBook: Could not load edit contacts because initialisation routine not "
            u"completed....\r\n"
            u"KTRVAddressBook: Could not load edit group because initialisation routine not "
            u"completed....\r\n");
  EXPECT_EQ(screen.Messages.size(), 3u);
  EXPECT_EQ(screen.LastMessage().Text,
            u"Initialisation routine for AddressBook DLL has not been done.");
  EXPECT_EQ(screen.LastMessage().Style, 16);
}

TEST_F(EditorOperationsTest, StrangersAreRefused) {
  EXPECT_EQ(component.AddContacts(kDisabled, kLocal, u"", u""), 0);
  EXPECT_EQ(component.LoadFolders(kDeleted), 0);
  EXPECT_EQ(component.AddContacts(99, kLocal, u"", u""), 0);
  EXPECT_EQ(screen.LastMessage().Text, u"User has been either deleted or disabled");
  EXPECT_EQ(screen.Messages.size(), 3u);
  EXPECT_TRUE(screen.Log.empty());
  EXPECT_FALSE(ConnectionIsOpen());
}

TEST_F(EditorOperationsTest, EditContactsAloneLeavesTheConnectionOpenForAStranger) {
  EXPECT_EQ(component.EditContacts(kDeleted, kLocal, 5, u"", u""), 0);
  EXPECT_TRUE(ConnectionIsOpen());
}

TEST_F(EditorOperationsTest, ADatabaseThatCannotBeReachedIsLogged) {
  UseFakeDriver();
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"no server"));
  EXPECT_EQ(component.AddContacts(kClerk, kLocal, u"", u""), 0);
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook:  Error occured. Sub: AddContacts, Module: clsMain"), 1);
  EXPECT_EQ(component.LoadFolders(kClerk), 0);
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occured. Sub: LoadFolders, Module: clsMain"), 1);
}

TEST_F(EditorOperationsTest, TheEndOfAnotherComponentObjectLeavesTheDialogOpen) {
  auto other = std::make_unique<clsMain>(session, dialogs);
  PlayContact([&](forms::frmNewContact& form) {
    other.reset();
    EXPECT_TRUE(form.IsLoaded());
    form.cmdCancel.UserClicks();
  });
  EXPECT_EQ(component.AddContacts(kClerk, kLocal, u"", u""), 1);
}

}  // namespace
}  // namespace ktrv::tests
