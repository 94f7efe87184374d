#include "tests/native/component/EntryFixture.h"

// Operations whose dialog gets no window.
namespace ktrv {
namespace {

constexpr std::int32_t kAdministrator = 1;

struct FailedShowTest : tests::EntryFixture {
  FailedShowTest() {
    driver.Answer(u"FROM SMS_ABCONTACTS WHERE ID  = 5", {{u"FNAME"}}, {{u"Ann"}});
    driver.Answer(u"FROM SMS_ABGROUPS WHERE ID", {{u"NAME"}}, {{u"Crew"}});
    Initialise(kServer);
    screen.RealiseFailure = Error(ErrorNumber::OutOfMemory, u"No window");
  }

  void ExpectLogged(StringView context) {
    EXPECT_TRUE(LoggedError(context, ErrorNumber::OutOfMemory)) << ToUtf8(Log());
    EXPECT_TRUE(screen.Log.empty());
    EXPECT_TRUE(session.Services.Modal.Open().empty());
  }
};

TEST_F(FailedShowTest, AddContactsTellsNoHostThatItWorked) {
  EXPECT_EQ(main.AddContacts(kAdministrator, 1, {}, {}), 0);
  ExpectLogged(u"KTRVAddressBook:  Error occured. Sub: AddContacts, Module: clsMain");
}

TEST_F(FailedShowTest, EditContactsTellsNoHostThatItWorked) {
  EXPECT_EQ(main.EditContacts(kAdministrator, 1, 5, {}, {}), 0);
  ExpectLogged(u"KTRVAddressBook: Error occured. Sub: EditContacts, Module: clsMain");
}

TEST_F(FailedShowTest, AddGroupTellsNoHostThatItWorked) {
  EXPECT_EQ(main.AddGroup(kAdministrator, u"4", 1, {}), 0);
  ExpectLogged(u"KTRVAddressBook:  Error occured. Sub: AddGroup, Module: clsMain");
}

TEST_F(FailedShowTest, EditGroupTellsNoHostThatItWorked) {
  EXPECT_EQ(main.EditGroup(kAdministrator, u"5", 1, {}), 0);
  ExpectLogged(u"KTRVAddressBook:  Error occured. Sub: EditGroup, Module: clsMain");
}

TEST_F(FailedShowTest, LoadAddressBookTellsNoHostThatItWorked) {
  EXPECT_EQ(main.LoadAddressBook(kAdministrator), 0);
  ExpectLogged(u"KTRVAddressBook: Error occured. Sub: LoadAddressbook, Module: clsMain");
}

TEST_F(FailedShowTest, LoadRecipientsTellsNoHostThatItWorked) {
  EXPECT_EQ(main.LoadRecipients(kAdministrator, false), 0);
  ExpectLogged(u"KTRVAddressBook: Error occured. Sub: LoadRecipients, Module: clsMain");
}

TEST_F(FailedShowTest, LoadFoldersTellsNoHostThatItWorked) {
  EXPECT_EQ(main.LoadFolders(kAdministrator), 0);
  ExpectLogged(u"KTRVAddressBook: Error occured. Sub: LoadFolders, Module: clsMain");
}

TEST_F(FailedShowTest, TheNextCallShowsADialogAgain) {
  EXPECT_EQ(main.LoadFolders(kAdministrator), 0);
  EXPECT_EQ(main.LoadAddressBook(kAdministrator), 0);
  screen.RealiseFailure.reset();
  CloseNextDialog();
  EXPECT_EQ(main.LoadFolders(kAdministrator), 1);
  EXPECT_EQ(main.LoadAddressBook(kAdministrator), 1);
  EXPECT_TRUE(dialogs.AddressBook().IsVisible());
}

}  // namespace
}  // namespace ktrv
