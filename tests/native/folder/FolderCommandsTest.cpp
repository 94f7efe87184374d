#include "tests/native/folder/FolderFixture.h"

namespace ktrv::tests {
namespace {

using forms::FolderCommand;

struct FolderCommandsTest : FolderFixture {
  /// "name type size" of the parameters, types as data objects number them.
  std::vector<String> Parameters(FolderCommand command) {
    std::vector<String> lines;
    for (const auto& parameter : form->Commands().At(command).Parameters()) {
      lines.push_back(parameter.Name + u" " + ToDecimal(static_cast<std::int64_t>(parameter.Type)) +
                      u" " + ToDecimal(parameter.Size));
    }
    return lines;
  }
  const String& Text(FolderCommand command) { return form->Commands().At(command).CommandText(); }
};

TEST_F(FolderCommandsTest, EveryTextIsToTheLetter) {
  Add();
  EXPECT_EQ(Text(FolderCommand::InsertFolder),
            u"INSERT INTO SMS_ABFOLDERS (TYPE, NAME, PARENTFOLDERID, USER_ID, "
            u"REMOTE_CONTACTS_CATEGORY ) VALUES(?, ?, 0, ?, ?)");
  EXPECT_EQ(Text(FolderCommand::UpdateFolder),
            u"UPDATE SMS_ABFOLDERS SET NAME = ?, REMOTE_CONTACTS_CATEGORY = ? WHERE ID = ?");
  EXPECT_EQ(Text(FolderCommand::NameExists), u"SELECT 1 FROM SMS_ABFOLDERS WHERE NAME = ?");
  EXPECT_EQ(Text(FolderCommand::NameExistsOther),
            u"SELECT 1 FROM SMS_ABFOLDERS WHERE NAME = ? AND ID <> ?");
  EXPECT_EQ(Text(FolderCommand::CategoryMapped),
            u"SELECT * FROM SMS_ABFOLDERS WHERE REMOTE_CONTACTS_CATEGORY = ?");
  EXPECT_EQ(Text(FolderCommand::CategoryMappedOther),
            u"SELECT * FROM SMS_ABFOLDERS WHERE REMOTE_CONTACTS_CATEGORY = ? AND ID <> ?");
  EXPECT_EQ(Text(FolderCommand::FolderById),
            u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ? ");
  EXPECT_EQ(Text(FolderCommand::FolderByName),
            u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE NAME = ? ");
  EXPECT_EQ(Text(FolderCommand::Categories), u"SELECT CATEGORY FROM ZUL$CONTACTS_CATEGORY");
}

TEST_F(FolderCommandsTest, EveryCommandIsPreparedOnTheOneConnection) {
  Add();
  const auto* connection = form->Commands().At(FolderCommand::InsertFolder).ActiveConnection();
  EXPECT_EQ(connection->State(), database::ObjectState::Open);
  for (std::size_t index = 0; index < data::FolderQueries::All().size(); ++index) {
    const auto& command = form->Commands().At(static_cast<FolderCommand>(index));
    EXPECT_TRUE(command.Prepared) << index;
    EXPECT_EQ(command.ActiveConnection(), connection) << index;
  }
}

struct Dialect {
  StringView Word;
  StringView Type;  // of the texts that follow the dialect
};

class FolderParametersTest : public FolderCommandsTest,
                             public testing::WithParamInterface<Dialect> {};

TEST_P(FolderParametersTest, NamesAndCategoriesFollowTheDialectAndTheRestStays) {
  session.DbType = GetParam().Word;
  Add();
  const String type(GetParam().Type);
  const String name = u"NAME " + type + u" 100";
  const String id = u"ID 3 0";
  const String narrowCategory = u"REMOTE_CONTACTS_CATEGORY 200 50";
  using Lines = std::vector<String>;
  EXPECT_EQ(
      Parameters(FolderCommand::InsertFolder),
      (Lines{u"TYPE 200 1", name, u"USER_ID 3 0", u"REMOTE_CONTACTS_CATEGORY " + type + u" 50"}));
  EXPECT_EQ(Parameters(FolderCommand::UpdateFolder),
            (Lines{name, u"REMOTE_CONTACTS_CATEGORY " + type + u" 100", id}));
  EXPECT_EQ(Parameters(FolderCommand::NameExists), (Lines{name}));
  EXPECT_EQ(Parameters(FolderCommand::NameExistsOther), (Lines{name, id}));
  EXPECT_EQ(Parameters(FolderCommand::CategoryMapped), (Lines{narrowCategory}));
  EXPECT_EQ(Parameters(FolderCommand::CategoryMappedOther), (Lines{narrowCategory, id}));
  EXPECT_EQ(Parameters(FolderCommand::FolderById), (Lines{u"ID 200 100"}));
  EXPECT_EQ(Parameters(FolderCommand::FolderByName), (Lines{name}));
  EXPECT_EQ(Parameters(FolderCommand::Categories), Lines{});
}

INSTANTIATE_TEST_SUITE_P(Dialects, FolderParametersTest,
                         testing::Values(Dialect{u"mysql", u"200"}, Dialect{u"MYSQL", u"200"},
                                         Dialect{u"MySql", u"200"}, Dialect{u"SQL", u"202"},
                                         Dialect{u"ORACLE", u"202"}, Dialect{u"", u"202"}));

}  // namespace
}  // namespace ktrv::tests
