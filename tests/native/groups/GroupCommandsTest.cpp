#include "forms/groups/GroupCommands.h"

#include "data/GroupQueries.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

using database::DataType;
namespace Queries = data::GroupQueries;

struct GroupCommandsTest : tests::GroupsTest {
  /// "NAME:type(size) ..." of the command's parameters.
  static std::string Parameters(const GroupCommands& commands, GroupCommand command) {
    std::string text;
    for (const auto& parameter : commands.At(command).Parameters()) {
      if (!text.empty()) text += " ";
      text += ToUtf8(parameter.Name) + ":" + std::to_string(static_cast<int>(parameter.Type)) +
              "(" + std::to_string(parameter.Size) + ")";
    }
    return text;
  }

  GroupCommands commands{session.Database};
};

TEST_F(GroupCommandsTest, HaveTheirTextsInOrder) {
  commands.Prepare(Queries::Commands());
  const String contacts = Queries::ContactsAmong(Queries::kAmong);
  const String remoteContacts = Queries::RemoteContactsAmong(Queries::kAmong);
  const String manyContacts = Queries::ContactsAmong(Queries::kAmongMany);
  const String manyRemoteContacts = Queries::RemoteContactsAmong(Queries::kAmongMany);
  const StringView texts[] = {Queries::kFolder,
                              Queries::kFolders,
                              Queries::kCountMembers,
                              Queries::kCountFolderGroups,
                              Queries::kGroupIdByName,
                              Queries::kInsertGroup,
                              Queries::kRenameGroup,
                              Queries::kClearMembers,
                              Queries::kNameTaken,
                              Queries::kCountFolderContacts,
                              Queries::kCountRemoteContacts,
                              Queries::kNameTakenByAnother,
                              Queries::kInsertMember,
                              Queries::kContact,
                              Queries::kExpandedMembers,
                              Queries::kGroup,
                              Queries::kMemberships,
                              contacts,
                              remoteContacts,
                              manyContacts,
                              manyRemoteContacts,
                              Queries::kFullName};
  ASSERT_EQ(Queries::Commands().size(), std::size(texts));
  for (std::size_t index = 0; index < std::size(texts); ++index) {
    EXPECT_EQ(commands.At(static_cast<GroupCommand>(index)).CommandText(), texts[index]);
    EXPECT_TRUE(commands.At(static_cast<GroupCommand>(index)).Prepared);
  }
}

TEST_F(GroupCommandsTest, HaveTheirParametersWithTypesAndSizes) {
  commands.Prepare(Queries::Commands());
  const std::pair<GroupCommand, const char*> expected[] = {
      {GroupCommand::Folder, "ID:200(100)"},
      {GroupCommand::Folders, ""},
      {GroupCommand::CountMembers, "GROUP_ID:3(0)"},
      {GroupCommand::CountFolderGroups, "ID:3(0)"},
      {GroupCommand::GroupIdByName, "NAME:200(100)"},
      {GroupCommand::InsertGroup, "NAME:202(100) FOLDER_ID:3(0)"},
      {GroupCommand::RenameGroup, "NAME:200(100) ID:3(0)"},
      {GroupCommand::ClearMembers, "GROUP_ID:3(0)"},
      {GroupCommand::NameTaken, "NAME:200(100)"},
      {GroupCommand::CountFolderContacts, "FOLDER_ID:3(0)"},
      {GroupCommand::CountRemoteContacts, "FOLDER_ID:3(0)"},
      {GroupCommand::NameTakenByAnother, "NAME:200(100) ID:3(0)"},
      {GroupCommand::InsertMember, "GROUP_ID:3(0) CONTACT_ID:200(50) CONTACT_TYPE:200(1)"},
      {GroupCommand::Contact, "ID:3(0)"},
      {GroupCommand::ExpandedMembers, "GROUP_ID_1:3(0) GROUP_ID_2:3(0)"},
      {GroupCommand::Group, "ID:3(0)"},
      {GroupCommand::Memberships, "GROUP_ID:3(0)"},
  };
  for (const auto& [command, parameters] : expected) {
    EXPECT_EQ(Parameters(commands, command), parameters);
  }
}

TEST_F(GroupCommandsTest, NarrowOnlyTheNewNameForMySqlInAnyCase) {
  session.DbType = u"MySql";
  commands.Prepare(Queries::Commands());
  EXPECT_EQ(Parameters(commands, GroupCommand::InsertGroup), "NAME:200(100) FOLDER_ID:3(0)");
}

TEST_F(GroupCommandsTest, HaveAnOpenConnectionForSharedGroupsOnly) {
  WorkOn(TypeOfGroup::LocalGroup);
  OpenToAdd();
  EXPECT_EQ(Link().State(), database::ObjectState::Closed);
  WorkOn(TypeOfGroup::SharedGroup);
  OpenToAdd();
  EXPECT_EQ(Link().State(), database::ObjectState::Open);
}

TEST_F(GroupCommandsTest, SendNothingToTheDatabaseBeforeTheyRun) {
  commands.Prepare(Queries::Commands());
  EXPECT_TRUE(driver.Executed().empty());
}

TEST_F(GroupCommandsTest, RunAgainAfterTheConnectionWasClosed) {
  commands.Prepare(Queries::Commands());
  EXPECT_EQ(commands.Count(GroupCommand::CountMembers, String(u"5")), 0);
  session.SessionConnection->Close();
  Counts(Queries::kCountMembers, 3);
  EXPECT_EQ(commands.Count(GroupCommand::CountMembers, String(u"5")), 3);
}

TEST_F(GroupCommandsTest, RefuseAnIdOfMoreThan50Units) {
  commands.Prepare(Queries::Commands());
  EXPECT_NO_THROW(
      commands.Execute(GroupCommand::InsertMember, {String(u"1"), String(50, u'x'), String(u"S")}));
  EXPECT_THROW(
      commands.Execute(GroupCommand::InsertMember, {String(u"1"), String(51, u'x'), String(u"S")}),
      Error);
}

}  // namespace
}  // namespace ktrv::forms
