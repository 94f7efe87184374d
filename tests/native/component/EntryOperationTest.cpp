#include "component/EntryOperation.h"

#include "tests/native/component/EntryFixture.h"

namespace ktrv::tests {
namespace {

using Call = std::int32_t (*)(clsMain&, std::int32_t userId);

struct OperationCase {
  const char* Name;
  Call Run;
  StringView NotInitialised;
  StringView Context;
  bool KeepsConnection = false;
};

constexpr StringView kEditGroupLine =
    u"KTRVAddressBook: Could not load edit group because initialisation routine not completed....";

const OperationCase kOperations[] = {
    {"EditContacts",
     [](clsMain& main, std::int32_t user) { return main.EditContacts(user, 1, 5, {}, {}); },
     u"KTRVAddressBook: Could not load edit contacts because initialisation routine not "
     u"completed....",
     u"KTRVAddressBook: Error occured. Sub: EditContacts, Module: clsMain", true},
    {"AddContacts",
     [](clsMain& main, std::int32_t user) { return main.AddContacts(user, 0, {}, {}); },
     u"KTRVAddressBook: Could not load add contacts because initialisation routine not "
     u"completed....",
     u"KTRVAddressBook:  Error occured. Sub: AddContacts, Module: clsMain"},
    {"AddGroup", [](clsMain& main, std::int32_t user) { return main.AddGroup(user, u"0", 0, {}); },
     u"KTRVAddressBook: Could not load add group because initialisation routine not completed....",
     u"KTRVAddressBook:  Error occured. Sub: AddGroup, Module: clsMain"},
    {"EditGroup",
     [](clsMain& main, std::int32_t user) { return main.EditGroup(user, u"3", 1, {}); },
     kEditGroupLine, u"KTRVAddressBook:  Error occured. Sub: EditGroup, Module: clsMain"},
    {"LoadAddressBook", [](clsMain& main, std::int32_t user) { return main.LoadAddressBook(user); },
     kEditGroupLine, u"KTRVAddressBook: Error occured. Sub: LoadAddressbook, Module: clsMain"},
    {"LoadRecipients",
     [](clsMain& main, std::int32_t user) { return main.LoadRecipients(user, false); },
     kEditGroupLine, u"KTRVAddressBook: Error occured. Sub: LoadRecipients, Module: clsMain"},
    {"LoadFolders", [](clsMain& main, std::int32_t user) { return main.LoadFolders(user); },
     kEditGroupLine, u"KTRVAddressBook: Error occured. Sub: LoadFolders, Module: clsMain"},
};

class EveryOperation : public EntryFixture, public testing::WithParamInterface<OperationCase> {
 protected:
  std::int32_t Run(std::int32_t user) { return GetParam().Run(main, user); }
};

INSTANTIATE_TEST_SUITE_P(Operations, EveryOperation, testing::ValuesIn(kOperations),
                         [](const auto& param) { return std::string(param.param.Name); });

TEST_P(EveryOperation, IsRefusedBeforeInit) {
  session.LogFilePath = kLog;
  EXPECT_EQ(Run(1), 0);
  EXPECT_EQ(Log(), String(GetParam().NotInitialised) + u"\r\n");
  EXPECT_EQ(screen.LastMessage().Text,
            u"Initialisation routine for AddressBook DLL has not been done.");
  EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
  EXPECT_EQ(screen.LastMessage().Style, 16);
  EXPECT_TRUE(driver.Opened().empty());
}

TEST_P(EveryOperation, RefusesAUserWhoIsNotThere) {
  Initialise();
  EXPECT_EQ(Run(99), 0);
  EXPECT_EQ(screen.LastMessage().Text, u"User has been either deleted or disabled");
  EXPECT_EQ(screen.LastMessage().Style, 16);
  EXPECT_TRUE(Logged(u"KTRVAddressBook: User has been either deleted or disabled."));
  EXPECT_EQ(IsConnected(), GetParam().KeepsConnection);
  EXPECT_TRUE(screen.Log.empty()) << "a window was made";
}

TEST_P(EveryOperation, AsksForTheUsersRightsInExactlyTheseWords) {
  Initialise();
  Run(99);
  EXPECT_EQ(LastQuery(),
            "SELECT ADMIN FROM SMS_USERS WHERE  DISABLED = 0 AND DELETED =  0  AND ID = 99");
}

TEST_P(EveryOperation, LogsAFailureOfTheDatabaseAndShowsNothing) {
  Initialise();
  driver.Fail(u"SMS_USERS", Error(ErrorNumber::TableNotFound, u"No table", u"driver"));
  EXPECT_EQ(Run(1), 0);
  EXPECT_TRUE(LoggedError(GetParam().Context, ErrorNumber::TableNotFound));
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_P(EveryOperation, LogsThatTheDatabaseCannotBeReopened) {
  Initialise();
  driver.FailOpen(Error(ErrorNumber::LoginFailed, u"Refused"));
  EXPECT_EQ(Run(1), 0);
  EXPECT_TRUE(LoggedError(GetParam().Context, ErrorNumber::LoginFailed));
}

/// What the rights check makes of a user's row, whoever asks.
class RightsTest : public EntryFixture {
 protected:
  bool Check(const EntryOperation& operation, std::int32_t user) {
    session.SessionUserId = user;
    return CheckRights(session, operation);
  }
};

TEST_F(RightsTest, AnAdministratorIsOneAndAGeneralUserIsNone) {
  Initialise();
  EXPECT_TRUE(Check(EntryOperations::kLoadFolders, 1));
  EXPECT_EQ(session.IsAdmin, UserType::Administrator);
  EXPECT_TRUE(Check(EntryOperations::kLoadFolders, 2));
  EXPECT_EQ(session.IsAdmin, UserType::GeneralUser);
}

TEST_F(RightsTest, AnyOtherAdminLeavesWhatTheUserWas) {
  Initialise();
  KnowUser(3, u"2");
  KnowUser(4, std::nullopt);
  Check(EntryOperations::kLoadFolders, 1);
  EXPECT_TRUE(Check(EntryOperations::kLoadFolders, 3));
  EXPECT_EQ(session.IsAdmin, UserType::Administrator);
  EXPECT_TRUE(Check(EntryOperations::kLoadFolders, 4));
  EXPECT_EQ(session.IsAdmin, UserType::Administrator);
}

TEST_F(RightsTest, AnAdminBetweenTheTwoIsNeither) {
  Initialise();
  KnowUser(3, u"0.4");
  KnowUser(4, u"0.6");
  KnowUser(5, u"1.4");
  for (const int user : {1, 2}) {
    Check(EntryOperations::kLoadFolders, user);
    const auto before = session.IsAdmin;
    for (const int odd : {3, 4, 5}) {
      EXPECT_TRUE(Check(EntryOperations::kLoadFolders, odd));
      EXPECT_EQ(session.IsAdmin, before) << odd;
    }
  }
}

TEST_F(RightsTest, AnAdminThatIsNoNumberRefusesNobody) {
  Initialise();
  for (const int user : {1, 2}) {
    Check(EntryOperations::kLoadFolders, user);
    const auto before = session.IsAdmin;
    for (const StringView odd : {u"", u"yes", u"1x", u"0x1", u"1e300", u"-1e300", u"nan"}) {
      driver.Answer(u"FROM SMS_USERS WHERE  DISABLED = 0 AND DELETED =  0  AND ID = 3",
                    {{u"ADMIN"}}, {{String(odd)}});
      EXPECT_TRUE(Check(EntryOperations::kLoadFolders, 3)) << ToUtf8(odd);
      EXPECT_EQ(session.IsAdmin, before) << ToUtf8(odd);
    }
  }
}

TEST_F(RightsTest, OnlyAnAdministratorAtTheServerGetsSharedContacts) {
  Initialise(kServer);
  Check(EntryOperations::kAddContacts, 2);
  EXPECT_EQ(session.SharedMode, TypeOfContact::LocalContact);
  Check(EntryOperations::kAddContacts, 1);
  EXPECT_EQ(session.SharedMode, TypeOfContact::SharedContact);
  EXPECT_EQ(session.GroupType, TypeOfGroup::LocalGroup);
}

TEST_F(RightsTest, AnAdministratorAtTheClientKeepsWhatTheHostAskedFor) {
  Initialise(kClient);
  Check(EntryOperations::kLoadAddressBook, 1);
  Check(EntryOperations::kEditGroup, 1);
  EXPECT_EQ(session.SharedMode, TypeOfContact::LocalContact);
  EXPECT_EQ(session.GroupType, TypeOfGroup::LocalGroup);
}

TEST_F(RightsTest, TheGroupOperationsShareTheGroupInstead) {
  Initialise(kServer);
  Check(EntryOperations::kEditGroup, 1);
  EXPECT_EQ(session.GroupType, TypeOfGroup::SharedGroup);
  EXPECT_EQ(session.SharedMode, TypeOfContact::LocalContact);
}

TEST_F(RightsTest, TwoOperationsChangeNothing) {
  Initialise(kServer);
  Check(EntryOperations::kEditContacts, 1);
  Check(EntryOperations::kLoadFolders, 1);
  EXPECT_EQ(session.SharedMode, TypeOfContact::LocalContact);
  EXPECT_EQ(session.GroupType, TypeOfGroup::LocalGroup);
}

TEST_F(RightsTest, AGeneralUserAddsLocalGroupsAndEditsTheOnesAskedFor) {
  Initialise();
  session.GroupType = TypeOfGroup::SharedGroup;
  Check(EntryOperations::kEditGroup, 2);
  EXPECT_EQ(session.GroupType, TypeOfGroup::SharedGroup);
  Check(EntryOperations::kAddGroup, 2);
  EXPECT_EQ(session.GroupType, TypeOfGroup::LocalGroup);
}

}  // namespace
}  // namespace ktrv::tests
