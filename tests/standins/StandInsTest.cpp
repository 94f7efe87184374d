#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

#include "common/Error.h"
#include "data/AddressBookQueries.h"
#include "data/ContactQueries.h"
#include "data/EditorQueries.h"
#include "data/FolderQueries.h"
#include "data/GroupQueries.h"
#include "data/ItemQueries.h"
#include "data/UserQueries.h"
#include "database/Connection.h"
#include "database/odbc/OdbcStatement.h"
#include "tests/native/support/DatabaseServer.h"
#include "tests/native/support/SqliteFile.h"
#include "tests/standins/PlainStart.h"

namespace ktrv::tests {
namespace {

using database::DataType;
using database::Parameter;

struct StandIn {
  const char* Name;
  data::Dialect Dialect;
  StringView Mode;     ///< of H2
  const char* Script;  ///< of data/schema, without its ending
};

void PrintTo(const StandIn& standIn, std::ostream* out) {
  *out << standIn.Name;
}

const StandIn kStandIns[] = {{"SqlServer", data::Dialect::Sql, u"MSSQLServer", "sqlserver"},
                             {"Oracle", data::Dialect::Oracle, u"Oracle", "oracle"}};

using Rows = std::vector<std::string>;

/// All rows, with the cells joined.
Rows RowsOf(database::Statement& statement, bool emptyIsNull) {
  Rows rows;
  while (!statement.Columns().empty()) {
    const auto block = statement.Fetch(100);
    if (!block) break;
    for (std::size_t row = 0; row < block->Rows(); ++row) {
      std::string text;
      for (std::size_t column = 0; column < block->Columns(); ++column) {
        const auto cell = block->Cell(row, column);
        const bool isNull = !cell || (emptyIsNull && cell->empty());
        text += isNull ? "(null)|" : ToUtf8(*cell) + "|";
      }
      rows.push_back(text);
    }
  }
  return rows;
}

/// The schema script's statements, but for what H2 has no word for.
std::vector<String> Statements(const std::string& name) {
  std::ifstream file(KTRV_SCHEMA_FOLDER "/" + name);
  EXPECT_TRUE(file) << name;
  std::string script;
  for (std::string line; std::getline(file, line);) {
    if (line == "GO") continue;
    script += line.substr(0, line.find("--")) + "\n";
  }
  if (const auto at = script.find("CLUSTERED "); at != std::string::npos) script.erase(at, 10);
  std::vector<String> statements;
  std::istringstream parts(script);
  for (std::string statement; std::getline(parts, statement, ';');) {
    if (statement.find_first_not_of(" \r\n\t") != std::string::npos) {
      statements.push_back(FromUtf8(statement));
    }
  }
  return statements;
}

/// The same tables and rows on the stand-in, where each text goes out to the letter, and on SQLite,
/// where the driver rewrites it.
class StandInsTest : public testing::TestWithParam<StandIn> {
 protected:
  StandInsTest() : link_(ConnectionString(), u"sa", u"sa") {
    RunOnStandIn(u"SET MODE " + String(GetParam().Mode));
    for (const char* ending : {".sql", "-host.sql"}) {
      for (const String& each : Statements(GetParam().Script + std::string(ending))) {
        RunOnStandIn(each);
      }
    }
    database::Connection connection(file_.Surroundings());
    connection.Open(file_.ConnectionString());
    connection.Execute(u"PRAGMA synchronous = OFF");
    for (const char* script : {"sqlite.sql", "sqlite-host.sql"}) {
      for (const String& each : Statements(script)) connection.Execute(each);
    }
    beside_ = driver_.Open(file_.ConnectionString(), u"", u"");
    RunBeside(u"PRAGMA synchronous = OFF", {}, {});
    for (const StringView each : kData) {
      RunOnStandIn(each);
      RunBeside(each, {}, {});
    }
  }

  /// A database in memory, which goes with this session.
  String ConnectionString() {
    std::random_device random;
    return u"Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=" + ToDecimal(plainStart_.Port()) +
           u";Database=mem:t" + ToDecimal(random()) + u";BoolsAsChar=0";
  }

  Rows RunOnStandIn(StringView text, const std::vector<Parameter>& parameters = {},
                    const std::vector<Variant>& values = {}) {
    // Past the link's own Prepare, which would bring the text into the dialect of the engine whose
    // protocol is spoken.
    database::odbc::OdbcStatement statement(link_, String(text), parameters);
    statement.Execute(values);
    return RowsOf(statement, EmptyIsNull());
  }
  Rows RunBeside(StringView text, const std::vector<Parameter>& parameters,
                 const std::vector<Variant>& values) {
    const auto statement = beside_->Prepare(text, parameters);
    statement->Execute(values);
    return RowsOf(*statement, EmptyIsNull());
  }
  bool EmptyIsNull() const { return GetParam().Dialect == data::Dialect::Oracle; }

  /// Runs the text on both. \return the rows of the stand-in
  Rows Same(StringView text, const std::vector<Parameter>& parameters = {},
            const std::vector<Variant>& values = {}) {
    SCOPED_TRACE(ToUtf8(text));
    Rows here;
    try {
      here = RunOnStandIn(text, parameters, values);
    } catch (const Error& error) {
      ADD_FAILURE() << "refused: " << ToUtf8(error.Description());
      return {};
    }
    Rows sorted = here;
    Rows there = RunBeside(text, parameters, values);
    std::sort(sorted.begin(), sorted.end());
    std::sort(there.begin(), there.end());
    EXPECT_EQ(sorted, there);
    return here;
  }

  /// All tables that the component writes are the same on both.
  void ExpectSameTables() {
    for (const StringView table :
         {u"SMS_ABFOLDERS", u"SMS_ABCONTACTS", u"SMS_ABGROUPS", u"SMS_ABGROUPMAPS"}) {
      Same(u"SELECT * FROM " + String(table));
    }
  }

  // Names with and without their parts, texts that are empty and that are null. A group's members
  // have codes that are numbers, because both servers turn the text to a number to compare it.
  static constexpr StringView kData[] = {
      u"INSERT INTO SMS_USERS (ID, NAME, ADMIN, DISABLED, DELETED) VALUES (1, 'a', 1, 0, 0)",
      u"INSERT INTO SMS_USERS (ID, NAME, ADMIN, DISABLED, DELETED) VALUES (2, 'b', 0, 1, 0)",
      u"INSERT INTO ZUL$CONTACTS_CATEGORY (CATEGORY) VALUES ('Dealers')",
      u"INSERT INTO ZUL$CONTACTS_CATEGORY (CATEGORY) VALUES ('Others')",
      u"INSERT INTO ZUL$CONTACTS VALUES ('900', 'North', '91', 'n@x.org', 'Dealers')",
      u"INSERT INTO ZUL$CONTACTS VALUES ('901', 'South', NULL, NULL, 'Dealers')",
      u"INSERT INTO ZUL$CONTACTS VALUES ('902', 'West', '93', '', 'Others')",
      u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, USER_ID) VALUES (1, 'S', 'Shared', 1)",
      u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, USER_ID, REMOTE_CONTACTS_CATEGORY) VALUES "
      u"(2, 'R', 'Remote', 1, 'Dealers')",
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, "
      u"EMAIL, ADDRESS, ORGANISATION) VALUES (1, 0, 'Ann', 'B', 'Lee', '44', '77', 'a@x.org', "
      u"'Street 1', 'Acme')",
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO) "
      u"VALUES (2, 0, 'Bob', '', '', '', '78')",
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) VALUES (3, 0, 'Cid', '79')",
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO) "
      u"VALUES (4, 1, 'Dot', 'E', 'Fox', '46', '80')",
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME) VALUES (5, 1, 'नाम')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (1, 'Night', 0)",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (2, 'Day', 1)",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (1, '1', 'S')",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (1, '5', 'S')",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (1, '900', 'R')",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (2, '2', 'S')",
  };

 private:
  PlainStart plainStart_{PortOf(ServerKind::H2)};
  database::odbc::OdbcLink link_;
  SqliteFile file_;
  database::OdbcDriver driver_;
  std::unique_ptr<database::Link> beside_;
};

const Parameter kNumber{u"N", DataType::Integer, 0};
Parameter Narrow(std::int64_t size) {
  return {u"T", DataType::VarChar, size};
}
Parameter Wide(std::int64_t size) {
  return {u"T", DataType::VarWChar, size};
}

TEST_P(StandInsTest, NoListOfTheAddressBookIsRefusedOrDiffers) {
  namespace Queries = data::AddressBookQueries;
  const auto dialect = GetParam().Dialect;
  EXPECT_EQ(Same(Queries::kSharedFolders).size(), 1u);
  EXPECT_EQ(Same(Queries::kRemoteFolders).size(), 1u);
  EXPECT_EQ(Same(Queries::kGroups).size(), 2u);
  EXPECT_EQ(Same(Queries::RootItems(dialect)).size(), 4u);
  EXPECT_EQ(Same(Queries::FolderItems(dialect, u"1")).size(), 3u);
  EXPECT_EQ(Same(Queries::RemoteFolderItems(u"2")).size(), 2u);
  EXPECT_EQ(Same(Queries::GroupItems(dialect, u"1")).size(), 3u);
  EXPECT_EQ(Same(Queries::GroupItems(dialect, u"2")).size(), 1u);
}

TEST_P(StandInsTest, NoListOfTheGroupEditorIsRefusedOrDiffers) {
  namespace Queries = data::GroupQueries;
  const auto dialect = GetParam().Dialect;
  for (const auto purpose : {Queries::Purpose::EditGroup, Queries::Purpose::PickRecipients}) {
    for (const StringView folder : {u"0", u"1"}) {
      EXPECT_GE(Same(Queries::SharedCandidates(dialect, purpose, folder)).size(), 2u);
    }
    EXPECT_EQ(Same(Queries::RemoteCandidates(dialect, purpose, u"2")).size(), 2u);
  }
  for (const StringView group : {u"1", u"2"}) {
    EXPECT_GE(Same(Queries::Members(dialect, group)).size(), 1u);
  }
}

TEST_P(StandInsTest, NoTextWithANumberIsRefusedOrDiffers) {
  namespace Groups = data::GroupQueries;
  namespace Book = data::AddressBookQueries;
  for (const StringView text :
       {Book::kCountFolderContacts, Book::kCountRemoteContacts, Book::kCountFolderGroups,
        Book::kCountGroupMembers, Groups::kCountMembers, Groups::kCountFolderGroups,
        Groups::kCountFolderContacts, Groups::kCountRemoteContacts, Groups::kContact}) {
    for (const Variant& value : {Variant(std::int64_t{1}), Variant(std::int64_t{2}),
                                 Variant(std::int64_t{7}), Variant(Null{})}) {
      Same(text, {kNumber}, {value});
    }
  }
  const std::vector<String> texts = {data::UserQueries::Rights(1), data::UserQueries::Rights(2),
                                     data::EditorQueries::ContactName(u"1"),
                                     data::EditorQueries::GroupName(u"1"),
                                     data::EditorQueries::FolderType(u"2")};
  for (const String& text : texts) Same(text);
  EXPECT_EQ(Same(data::ContactQueries::ById(u"1")).size(), 1u);
  EXPECT_EQ(Same(data::ContactQueries::kNone).size(), 0u);
}

TEST_P(StandInsTest, NoTextWithATextIsRefusedOrDiffers) {
  namespace Groups = data::GroupQueries;
  const std::vector<Variant> texts = {String(u"Night"), String(u"नाम"), String(u"none"), String(),
                                      Null{}};
  for (const Variant& text : texts) {
    // On Oracle an empty text is null, and equal to nothing.
    for (const Parameter& parameter : {Narrow(100), Wide(100)}) {
      Same(Groups::kGroupIdByName, {parameter}, {text});
      Same(Groups::kNameTaken, {parameter}, {text});
      Same(Groups::kNameTakenByAnother, {parameter, kNumber}, {text, std::int64_t{1}});
      Same(Groups::kNameTakenByAnother, {parameter, kNumber}, {text, std::int64_t{2}});
    }
  }
  Same(Groups::kFolders);
  Same(Groups::kFolder, {Narrow(100)}, {String(u"2")});
}

TEST_P(StandInsTest, NoTextOfTheFolderEditorIsRefusedOrDiffers) {
  for (const auto& command : data::FolderQueries::All()) {
    const bool changes = command.Text.substr(0, 6) != u"SELECT";
    for (const StringView text : {u"Remote", u"Dealers", u"नाम", u""}) {
      if (changes) continue;
      std::vector<Parameter> parameters;
      std::vector<Variant> values;
      for (const auto& each : command.Parameters) {
        const bool isNumber = each.Kind == data::ParameterKind::Integer;
        const bool isId = each.Name == u"ID";
        const bool isNarrow = each.Kind == data::ParameterKind::NarrowText;
        parameters.push_back(isNumber ? kNumber : isNarrow ? Narrow(each.Size) : Wide(each.Size));
        values.push_back(isNumber ? Variant(std::int64_t{1}) : Variant(String(isId ? u"2" : text)));
      }
      Same(command.Text, parameters, values);
    }
  }
}

TEST_P(StandInsTest, MembersOfBothKindsAreExpanded) {
  if (GetParam().Dialect != data::Dialect::Oracle)
    return;  // the text has TO_CHAR, which it has not
  const auto rows = Same(data::GroupQueries::kExpandedMembers, {kNumber, kNumber},
                         {std::int64_t{1}, std::int64_t{1}});
  EXPECT_EQ(rows.size(), 3u);
}

TEST_P(StandInsTest, WhatIsWrittenIsTheSameOnBoth) {
  namespace Groups = data::GroupQueries;
  Same(Groups::kRenameGroup, {Narrow(100), kNumber}, {String(u"Late"), std::int64_t{1}});
  Same(Groups::kRenameGroup, {Narrow(100), kNumber}, {String(u"देर"), std::int64_t{2}});
  Same(Groups::LockGroup(u"1"));
  Same(Groups::kClearMembers, {kNumber}, {std::int64_t{2}});
  Same(Groups::kInsertMember, {kNumber, Narrow(50), Narrow(1)},
       {std::int64_t{2}, String(u"3"), String(u"S")});
  const auto& folders = data::FolderQueries::All();
  const auto update = static_cast<std::size_t>(data::FolderQueries::Name::UpdateFolder);
  Same(folders[update].Text, {Wide(100), Wide(100), kNumber},
       {String(u"नाम"), Null{}, std::int64_t{1}});
  Same(folders[update].Text, {Wide(100), Wide(100), kNumber},
       {String(u"Remote"), String(), std::int64_t{2}});
  ExpectSameTables();
  Same(data::ItemQueries::InsertMember(u"2", u"4"));
  Same(data::ItemQueries::DeleteMemberships(u"3"));
  Same(data::ItemQueries::DeleteContact(u"3"));
  Same(data::ItemQueries::DeleteFolderContacts(u"1"));
  Same(data::ItemQueries::DeleteMembers(u"1"));
  Same(data::ItemQueries::DeleteGroup(u"1"));
  Same(data::ItemQueries::DeleteFolder(u"2"));
  ExpectSameTables();
}

TEST_P(StandInsTest, NewRowsGetAnIdFromTheEngine) {
  namespace Groups = data::GroupQueries;
  RunOnStandIn(u"ALTER TABLE SMS_ABGROUPS ALTER COLUMN ID RESTART WITH 50");
  RunOnStandIn(u"ALTER TABLE SMS_ABFOLDERS ALTER COLUMN ID RESTART WITH 60");
  RunOnStandIn(Groups::kInsertGroup, {Wide(100), kNumber}, {String(u"नया"), std::int64_t{0}});
  EXPECT_EQ(RunOnStandIn(Groups::kGroupIdByName, {Narrow(100)}, {String(u"नया")}), Rows{"50|"});
  const auto& folders = data::FolderQueries::All();
  const auto insert = static_cast<std::size_t>(data::FolderQueries::Name::InsertFolder);
  const auto byName = static_cast<std::size_t>(data::FolderQueries::Name::FolderByName);
  RunOnStandIn(folders[insert].Text, {Narrow(1), Wide(100), kNumber, Wide(50)},
               {String(u"S"), String(u"New"), std::int64_t{1}, String()});
  const Rows found = RunOnStandIn(folders[byName].Text, {Wide(100)}, {String(u"New")});
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].substr(0, 9), "60|New|S|");
}

INSTANTIATE_TEST_SUITE_P(, StandInsTest, testing::ValuesIn(kStandIns),
                         [](const auto& each) { return std::string(each.param.Name); });

}  // namespace
}  // namespace ktrv::tests
