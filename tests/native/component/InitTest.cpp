#include "tests/native/component/EntryFixture.h"

namespace ktrv::tests {
namespace {

using InitTest = EntryFixture;

constexpr StringView kContext = u"KTRVAddressBook: Error occured. Sub: Init, Module: clsMain";

TEST_F(InitTest, LogsItsStartAndItsEnd) {
  Initialise();
  EXPECT_EQ(Log(),
            u"KTRVAddressBook: Starting initialization routine...\r\n"
            u"KTRVAddressBook: Initialization routine completed.....\r\n");
}

TEST_F(InitTest, ItsLinesAreOnTheDiskAtOnceAndThoseOfARefusalAreNot) {
  EXPECT_EQ(main.LoadAddressBook(1), 0);
  EXPECT_EQ(system.Flushes, 0);
  Initialise();
  EXPECT_EQ(system.Flushes, 2);
  EXPECT_EQ(main.LoadAddressBook(99), 0);
  EXPECT_EQ(system.Flushes, 2);
}

TEST_F(InitTest, OpensTheRemoteDatabaseAndLeavesItClosed) {
  EXPECT_EQ(main.Init(u"DSN=Client", kConnection, kClient, u"SQL", kLog), 1);
  EXPECT_EQ(driver.Opened(), std::vector<String>{String(kConnection)});
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(InitTest, KeepsItsArgumentsInTheSession) {
  EXPECT_EQ(main.Init(u"", kConnection, kServer, u" Sql ", kLog), 1);
  EXPECT_EQ(session.DbType, u" Sql ");
  EXPECT_EQ(session.RunAt, RunApplicationAt::RuntAtServer);
  EXPECT_EQ(session.InitDone, 1);
  EXPECT_EQ(main.RemoteDBString(), kConnection);
}

TEST_F(InitTest, ABlankLogFileIsTheOneBesideTheComponent) {
  main.Init(u"", kConnection, kClient, u"SQL", u"   ");
  EXPECT_NE(system.TextOf(u"C:\\Component\\AddressBook.log"), u"");
}

TEST_F(InitTest, BlanksAroundTheLogFileAreNoPartOfIt) {
  main.Init(u"", kConnection, kClient, u"SQL", u"  C:\\x\\y.log ");
  EXPECT_NE(system.TextOf(u"C:\\x\\y.log"), u"");
}

TEST_F(InitTest, NeitherReadsNorWritesTheStoredProperties) {
  main.SetLogFile(u"C:\\other.log");
  main.SetClientDBString(u"DSN=Mine");
  main.Init(u"DSN=Client", kConnection, kClient, u"SQL", kLog);
  EXPECT_EQ(main.LogFile(), u"C:\\other.log");
  EXPECT_EQ(main.ClientDBString(), u"DSN=Mine");
  EXPECT_EQ(system.TextOf(u"C:\\other.log"), u"");
}

TEST_F(InitTest, AnOpenThatFailsIsAnErrorRecordAndTheResult0) {
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"No such server"));
  EXPECT_EQ(main.Init(u"", kConnection, kServer, u"SQL", kLog), 0);
  EXPECT_TRUE(LoggedError(kContext, ErrorNumber::DriverFailure));
  EXPECT_EQ(session.InitDone, 0);
  EXPECT_EQ(session.RunAt, RunApplicationAt::RuntAtClient);
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(InitTest, AConnectionThatStaysClosedIsTheRefusalsLineAndTheResult0) {
  driver.OpenNothing();
  EXPECT_EQ(main.Init(u"", kConnection, kServer, u"SQL", kLog), 0);
  EXPECT_EQ(Log(),
            u"KTRVAddressBook: Starting initialization routine...\r\n"
            u"KTRVAddressBook: Could not connect the remote database with the specified "
            u"parameters.\r\n");
  EXPECT_EQ(session.RunAt, RunApplicationAt::RuntAtClient);
}

TEST_F(InitTest, ASecondInitWhoseConnectionStaysClosedBlocksAllOperations) {
  Initialise();
  driver.OpenNothing();
  EXPECT_EQ(main.Init(u"", kConnection, kClient, u"SQL", kLog), 0);
  EXPECT_EQ(session.InitDone, 0);
  EXPECT_EQ(main.LoadAddressBook(1), 0);
  EXPECT_EQ(screen.Messages.back().Text,
            u"Initialisation routine for AddressBook DLL has not been done.");
}

TEST_F(InitTest, AFailedOpenAfterASuccessLeavesInitDoneAndRunAt) {
  Initialise(kServer);
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"No such server"));
  EXPECT_EQ(main.Init(u"", kConnection, kClient, u"SQL", kLog), 0);
  EXPECT_EQ(session.InitDone, 1);
  EXPECT_EQ(session.RunAt, RunApplicationAt::RuntAtServer);
}

TEST_F(InitTest, ASecondInitClosesWhatAnOperationLeftOpen) {
  Initialise();
  ASSERT_EQ(main.EditContacts(9, 0, 5, {}, {}), 0);  // the refusal that leaves it open
  ASSERT_TRUE(IsConnected());
  Initialise();
  EXPECT_FALSE(IsConnected());
}

TEST_F(InitTest, ALogThatCannotBeWrittenStopsNothing) {
  system.FailsToAppend = true;
  EXPECT_EQ(main.Init(u"", kConnection, kClient, u"SQL", kLog), 1);
}

TEST_F(InitTest, AllObjectsOfAThreadShareTheSession) {
  Initialise();
  clsMain second(session, dialogs);
  EXPECT_EQ(second.RemoteDBString(), kConnection);
  second.SetRemoteDBString(u"DSN=Other");
  ASSERT_EQ(main.LoadAddressBook(2), 1);
  EXPECT_EQ(driver.Opened().back(), u"DSN=Other");
}

TEST_F(InitTest, PropertiesGiveWhatTheSessionHolds) {
  session.EditContactId = u"12";
  session.SharedMode = TypeOfContact::SharedContact;
  session.GroupId = u"34";
  session.GroupName = u"Friends";
  session.GroupType = TypeOfGroup::SharedGroup;
  session.ContactsName = u"A;B";
  EXPECT_EQ(main.NewContactId(), u"12");
  EXPECT_EQ(main.NewContactType(), u"1");
  EXPECT_EQ(main.NewGroupId(), u"34");
  EXPECT_EQ(main.NewGroupName(), u"Friends");
  EXPECT_EQ(main.NewGroupType(), u"1");
  EXPECT_EQ(main.strContactsName(), u"A;B");
  EXPECT_EQ(main.SelectedRecipients()->Count(), 0);
  EXPECT_EQ(main.SelectedMobileNos()->Count(), 0);
}

}  // namespace
}  // namespace ktrv::tests
