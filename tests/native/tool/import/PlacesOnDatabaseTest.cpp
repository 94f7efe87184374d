#include "data/GroupQueries.h"
#include "tests/native/support/OtherUser.h"
#include "tests/native/support/WatchedDriver.h"
#include "tests/native/tool/import/ImportFixture.h"
#include "tool/ContactColumns.h"

namespace ktrv::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
namespace ContactColumns = tool::ContactColumns;

/// A file like our export, of contacts with these folders and groups.
class Exported {
 public:
  Exported() {
    for (const StringView name : ContactColumns::kNames) text_ += ToUtf8(name) + ",";
    text_ += "FOLDER,GROUPS\r\n";
  }
  Exported& Add(const std::string& name, int number, const std::string& folder,
                const std::string& group) {
    for (std::size_t column = 0; column < ContactColumns::kNames.size(); ++column) {
      if (column == ContactColumns::FirstName) text_ += name;
      if (column == ContactColumns::MobileNo) text_ += std::to_string(number);
      text_ += ',';
    }
    text_ += folder + ',' + group + "\r\n";
    return *this;
  }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

class PlacesOnDatabaseTest : public ImportFixture {
 protected:
  /// Imports the file. Another user, whose statements have run when its first transaction begins,
  /// stores them a little later.
  int ImportBeside(const std::vector<String>& statements, const std::vector<String>& last) {
    WatchedDriver driver(Database.Driver());
    std::optional<OtherUser> other;
    driver.BeforeBegin = [&] {
      driver.BeforeBegin = nullptr;
      other.emplace(Database, statements, last);
    };
    database::Connection watched(
        {[&](StringView) -> database::Driver& { return driver; }, [](const auto&) {}});
    watched.Open(Database.ConnectionString());
    const int result = Import(watched);
    EXPECT_TRUE(other);
    return result;
  }
};

/// Some engines ignore the case of names, and blanks behind them.
TEST_F(PlacesOnDatabaseTest, AreThoseThatTheDatabaseFindsByTheName) {
  EXPECT_EQ(Import(Exported()
                       .Add("Anna", 1, "Staff", "Team")
                       .Add("Bert", 2, "STAFF", "TEAM")
                       .Add("Cora", 3, "Staff ", "team")
                       .Text()),
            0)
      << Messages.str();
  EXPECT_EQ(Names().size(), 3U);
  for (const StringView name : {u"Staff", u"STAFF", u"Staff "}) {
    EXPECT_THAT(Rows(u"SELECT COUNT(*) FROM SMS_ABFOLDERS WHERE NAME = '" + String(name) + u"'"),
                ElementsAre(u"1"));
  }
  for (const StringView name : {u"Team", u"TEAM", u"team"}) {
    EXPECT_THAT(Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPS WHERE NAME = '" + String(name) + u"'"),
                ElementsAre(u"1"));
  }
}

TEST_F(PlacesOnDatabaseTest, WithTooLongNamesRejectTheRow) {
  EXPECT_EQ(Import(Exported()
                       .Add("Anna", 1, std::string(101, 'f'), "Team")
                       .Add("Bert", 2, "Staff", std::string(101, 'g'))
                       .Add("Cora", 3, std::string(100, 'f'), std::string(100, 'g'))
                       .Text()),
            1);
  EXPECT_THAT(Names(), ElementsAre(u"Cora|null|3"));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:2: The name of the folder has 101 characters; "
                                        "at most 100 are allowed"));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:3: The name of the group has 101 characters; "
                                        "at most 100 are allowed"));
}

/// As after a program that ends all lines of our export with CR LF.
TEST_F(PlacesOnDatabaseTest, AreNamedBetweenAnyLineBreaks) {
  Database.Run({u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (9, 'Team')"});
  EXPECT_EQ(Import(Exported().Add("Anna", 1, "", "\"Team\r\nCrew\r\n\"").Text()), 0)
      << Messages.str();
  EXPECT_THAT(Rows(u"SELECT NAME FROM SMS_ABGROUPS ORDER BY NAME"), ElementsAre(u"Crew", u"Team"));
  EXPECT_THAT(Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 9"), ElementsAre(u"1"));
}

TEST_F(PlacesOnDatabaseTest, WithControlCharactersRejectTheRow) {
  EXPECT_EQ(Import(Exported()
                       .Add("Anna", 1, std::string("St\0aff", 6), "Team")
                       .Add("Bert", 2, "Staff", "\"Te\ram\"")
                       .Add("Cora", 3, "Staff", std::string("Te\0am", 5))
                       .Add("Dora", 4, "Sta\tff", "Te\tam")
                       .Text()),
            1);
  EXPECT_THAT(Names(), ElementsAre(u"Dora|null|4"));
  EXPECT_THAT(Messages.str(),
              HasSubstr("people.csv:2: The name of the folder has control characters"));
  EXPECT_THAT(Messages.str(),
              HasSubstr("people.csv:3: The name of the group has control characters"));
  EXPECT_THAT(Messages.str(),
              HasSubstr("people.csv:5: The name of the group has control characters"));
}

TEST_F(PlacesOnDatabaseTest, OfRemoteContactsRejectTheRow) {
  Database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (7, 'R', 'Dealers')"});
  EXPECT_EQ(Import(Exported().Add("Anna", 1, "Dealers", "").Add("Bert", 2, "", "").Text()), 1);
  EXPECT_THAT(Names(), ElementsAre(u"Bert|null|2"));
  EXPECT_THAT(Rows(u"SELECT NAME FROM SMS_ABFOLDERS"), ElementsAre(u"Dealers"));
  EXPECT_THAT(Messages.str(), HasSubstr("The folder \"Dealers\" is not one of shared contacts"));
}

TEST_F(PlacesOnDatabaseTest, MakeMembersOfContactsOfFormerBlocks) {
  Options.RowsOfBlock = 1;
  EXPECT_EQ(Import(Exported()
                       .Add("Anna", 1, "", "")
                       .Add("Bert", 2, "", "")
                       .Add("Anna", 1, "", "Team")
                       .Add("Cora", 3, "", "")
                       .Add("Cora", 3, "", "Team")
                       .Text()),
            0);
  EXPECT_THAT(Rows(u"SELECT C.FNAME FROM SMS_ABGROUPMAPS M, SMS_ABCONTACTS C WHERE "
                   u"C.ID = M.CONTACT_ID ORDER BY C.ID"),
              ElementsAre(u"Anna", u"Cora"));
}

TEST_F(PlacesOnDatabaseTest, MakeMembersOfContactsThatAreWrittenOneByOne) {
  Database.Run({u"CREATE UNIQUE INDEX IX_ONCE ON SMS_ABCONTACTS (FNAME)"});
  EXPECT_EQ(Import(Exported()
                       .Add("Anna", 1, "", "")
                       .Add("Anna", 2, "", "")
                       .Add("Anna", 1, "", "Team")
                       .Text()),
            1);
  EXPECT_THAT(Rows(u"SELECT C.MOBILENO FROM SMS_ABGROUPMAPS M, SMS_ABCONTACTS C WHERE "
                   u"C.ID = M.CONTACT_ID"),
              ElementsAre(u"1"));
}

TEST_F(PlacesOnDatabaseTest, MakeNoMembersOfNewContactsThatAreGone) {
  Options.RowsOfBlock = 1;
  WatchedDriver driver(Database.Driver());
  database::Connection watched(
      {[&](StringView) -> database::Driver& { return driver; }, [](const auto&) {}});
  watched.Open(Database.ConnectionString());
  driver.AfterCommit = [&] { Database.Run({u"DELETE FROM SMS_ABCONTACTS"}); };
  Write("people.csv", Exported().Add("Anna", 1, "", "").Add("Anna", 1, "", "Team").Text());
  EXPECT_EQ(Import(watched), 1);
  EXPECT_THAT(Rows(u"SELECT CONTACT_ID FROM SMS_ABGROUPMAPS"), testing::IsEmpty());
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:3: Another user has deleted the contact"));
}

/// Its members are read and replaced there.
TEST_F(PlacesOnDatabaseTest, GetMembersOnceAnotherUsersSaveOfTheGroupIsStored) {
  Database.Run({u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (9, 'Team')"});
  Write("people.csv", Exported().Add("Anna", 1, "", "Team").Text());
  EXPECT_EQ(ImportBeside({data::GroupQueries::LockGroup(u"9")},
                         {u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 9"}),
            0)
      << Messages.str();
  EXPECT_THAT(Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"1"));
}

TEST_F(PlacesOnDatabaseTest, MakeNoMembersOfAGroupWhoseDeletionIsNotStoredYet) {
  Database.Run({u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (9, 'Team')"});
  Write("people.csv", Exported().Add("Anna", 1, "", "Team").Text());
  EXPECT_EQ(ImportBeside({u"DELETE FROM SMS_ABGROUPS WHERE ID = 9",
                          u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 9"},
                         {}),
            1);
  EXPECT_THAT(Rows(u"SELECT CONTACT_ID FROM SMS_ABGROUPMAPS"), testing::IsEmpty());
  EXPECT_THAT(Messages.str(), HasSubstr("Another user has deleted the group"));
}

/// Another user deletes what the import is about to use.
class DeletedPlacesOnDatabaseTest : public ImportFixture {
 protected:
  DeletedPlacesOnDatabaseTest() {
    Database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (7, 'S', 'Staff')",
                  u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (9, 'Team')",
                  u"INSERT INTO SMS_ABCONTACTS (ID, FNAME, MOBILENO, FOLDER_ID) VALUES "
                  u"(5, 'Anna', '1', 0)"});
  }
  int ImportWhile(StringView deletion, const std::string& bytes) {
    WatchedDriver driver(Database.Driver());
    database::Connection watched(
        {[&](StringView) -> database::Driver& { return driver; }, [](const auto&) {}});
    watched.Open(Database.ConnectionString());
    driver.BeforeBegin = [&, deletion = String(deletion)] {
      driver.BeforeBegin = nullptr;
      Database.Run({deletion});
    };
    Write("people.csv", bytes);
    return Import(watched);
  }
  database::Engine Engine() { return Connection.CurrentLink()->Get().EngineKind(); }
  /// Another user runs the statement right before the import's first one that begins so. \param
  /// snapshots whether MariaDB refuses to lock rows that changed since the transaction's first
  /// query
  int ImportDuring(StringView beginning, StringView statement, StringView snapshots) {
    WatchedDriver driver(Database.Driver());
    database::Connection watched(
        {[&](StringView) -> database::Driver& { return driver; }, [](const auto&) {}});
    watched.Open(Database.ConnectionString());
    if (Engine() == database::Engine::MySql) {
      watched.Execute(u"SET SESSION innodb_snapshot_isolation = " + String(snapshots));
    }
    driver.BeforeExecute = [&](StringView text) {
      if (!text.starts_with(beginning)) return;
      driver.BeforeExecute = nullptr;
      Database.Run({statement});
    };
    const int result = Import(watched);
    EXPECT_FALSE(driver.BeforeExecute) << "nobody was faster";
    return result;
  }
};

TEST_F(DeletedPlacesOnDatabaseTest, RejectRowsOfTheFolder) {
  EXPECT_EQ(ImportWhile(u"DELETE FROM SMS_ABFOLDERS",
                        Exported().Add("Bert", 2, "Staff", "").Add("Cora", 3, "", "").Text()),
            1);
  EXPECT_THAT(Names(), ElementsAre(u"Anna|null|1", u"Cora|null|3"));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:2: Another user has deleted the folder"));
}

/// Some engines show a transaction the rows as they were at its first query.
TEST_F(DeletedPlacesOnDatabaseTest, RejectRowsOfAFolderThatIsDeletedLater) {
  if (Engine() == database::Engine::Sqlite) GTEST_SKIP() << "others cannot write meanwhile";
  for (const StringView snapshots : {u"OFF", u"ON"}) {
    Options.OfDuplicates = tool::Duplicates::Merge;
    Write("people.csv", Exported().Add("Bert", 2, "Staff", "").Add("Cora", 3, "", "").Text());
    EXPECT_EQ(ImportDuring(u"INSERT INTO SMS_ABCONTACTS", u"DELETE FROM SMS_ABFOLDERS", snapshots),
              1);
    EXPECT_THAT(Names(), ElementsAre(u"Anna|null|1", u"Cora|null|3"));
    EXPECT_THAT(Messages.str(), HasSubstr("people.csv:2: Another user has deleted the folder"));
    Database.Run({u"DELETE FROM SMS_ABCONTACTS WHERE ID > 5",
                  u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (7, 'S', 'Staff')"});
  }
}

TEST_F(DeletedPlacesOnDatabaseTest, MergeIntoAContactThatIsChangedMeanwhile) {
  if (Engine() == database::Engine::Sqlite) GTEST_SKIP() << "others cannot write meanwhile";
  for (const StringView snapshots : {u"OFF", u"ON"}) {
    Options.OfDuplicates = tool::Duplicates::Merge;
    Write("people.csv", "First Name,Mobile,City\r\nAnna,1,Lund\r\nBert,2,Oslo\r\n");
    EXPECT_EQ(ImportDuring(u"UPDATE SMS_ABCONTACTS",
                           u"UPDATE SMS_ABCONTACTS SET CITY = 'Bergen' WHERE ID = 5", snapshots),
              0);
    EXPECT_THAT(Rows(u"SELECT FNAME, CITY FROM SMS_ABCONTACTS ORDER BY ID"),
                ElementsAre(u"Anna|Bergen", u"Bert|Oslo"));
    Database.Run(
        {u"DELETE FROM SMS_ABCONTACTS WHERE ID > 5", u"UPDATE SMS_ABCONTACTS SET CITY = NULL"});
  }
}

TEST_F(DeletedPlacesOnDatabaseTest, RejectRowsThoughTheTableOfGroupsDoesNotRollBack) {
  if (Engine() != database::Engine::MySql) GTEST_SKIP() << "only MariaDB has such tables";
  Database.Run({u"ALTER TABLE SMS_ABGROUPS ENGINE = MyISAM"});
  EXPECT_EQ(ImportWhile(u"DELETE FROM SMS_ABFOLDERS",
                        Exported().Add("Bert", 2, "Staff", "").Add("Cora", 3, "", "").Text()),
            1);
  EXPECT_THAT(Names(), ElementsAre(u"Anna|null|1", u"Cora|null|3"));
}

/// Another user's deletion locks the contact before its memberships.
TEST_F(DeletedPlacesOnDatabaseTest, DoNotWaitForADeletionThatWaitsForThem) {
  if (Engine() != database::Engine::MySql) GTEST_SKIP() << "the check waits for no lock";
  Options.OfDuplicates = tool::Duplicates::Merge;
  WatchedDriver driver(Database.Driver());
  std::future<void> deletion;
  driver.BeforeExecute = [&](StringView text) {
    if (!text.starts_with(u"INSERT INTO SMS_ABGROUPMAPS")) return;
    driver.BeforeExecute = nullptr;
    deletion = std::async(std::launch::async, [&] {
      OtherUser(Database, {u"DELETE FROM SMS_ABCONTACTS WHERE ID = 5"},
                {u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '5'"});
    });
    deletion.wait_for(std::chrono::milliseconds(100));  // to come to its first lock
  };
  database::Connection watched(
      {[&](StringView) -> database::Driver& { return driver; }, [](const auto&) {}});
  watched.Open(Database.ConnectionString());
  Write("people.csv", Exported().Add("Anna", 1, "", "Team").Text());
  EXPECT_EQ(Import(watched), 0) << Messages.str();
  ASSERT_TRUE(deletion.valid());
  deletion.wait();
  EXPECT_THAT(Rows(u"SELECT CONTACT_ID FROM SMS_ABGROUPMAPS"), testing::IsEmpty());
}

TEST_F(DeletedPlacesOnDatabaseTest, RejectRowsOfTheGroup) {
  EXPECT_EQ(ImportWhile(u"DELETE FROM SMS_ABGROUPS",
                        Exported().Add("Bert", 2, "", "Team").Add("Cora", 3, "", "").Text()),
            1);
  EXPECT_THAT(Names(), ElementsAre(u"Anna|null|1", u"Cora|null|3"));
  EXPECT_THAT(Rows(u"SELECT CONTACT_ID FROM SMS_ABGROUPMAPS"), testing::IsEmpty());
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:2: Another user has deleted the group"));
}

TEST_F(DeletedPlacesOnDatabaseTest, MakeNoMembersOfDeletedContacts) {
  EXPECT_EQ(ImportWhile(u"DELETE FROM SMS_ABCONTACTS",
                        Exported().Add("Anna", 1, "", "Team").Add("Cora", 3, "", "Team").Text()),
            1);
  EXPECT_THAT(Names(), ElementsAre(u"Cora|null|3"));
  EXPECT_THAT(Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"1"));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:2: Another user has deleted the contact"));
}

}  // namespace
}  // namespace ktrv::tests
