#include "common/Error.h"
#include "tests/native/support/WatchedDriver.h"
#include "tests/native/tool/import/ImportFixture.h"

namespace ktrv::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tool::Duplicates;

using ImportOnDatabaseTest = ImportFixture;

const std::string kHead = "First Name,Last Name,Mobile,E-mail\r\n";

TEST_F(ImportOnDatabaseTest, AddsContacts) {
  EXPECT_EQ(Import(kHead + "Anna,Ek,+46 70 1,anna@ek.se\r\nBert,,98002,\r\n"), 0);
  EXPECT_THAT(Names(), ElementsAre(u"Anna|Ek|46701", u"Bert||98002"));
  EXPECT_EQ(Out.str(), "added 2, skipped 0 duplicates, rejected 0\n");
  EXPECT_THAT(Rows(u"SELECT FOLDER_ID, MNAME, AGE, SEX, BIRTHDAY FROM SMS_ABCONTACTS"),
              ElementsAre(u"0||null|null|null", u"0||null|null|null"));
}

TEST_F(ImportOnDatabaseTest, WritesRejectsThatCanBeMended) {
  const std::string rows = "Anna,Ek,98001,\r\nBert,Al,,bert@al\r\n,,98003,\r\n\"Co\r\nra\",,x,\r\n";
  EXPECT_EQ(Import(kHead + rows), 1);
  EXPECT_THAT(Names(), ElementsAre(u"Anna|Ek|98001"));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:3: Please enter the Mobile No."));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:4: Please enter the First Name."));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:5: Enter a proper Mobile No. \"x\""));
  std::string rejects = Read("people.rejects.csv");
  EXPECT_EQ(rejects, "\xEF\xBB\xBF" + kHead + rows.substr(rows.find("Bert")));
  rejects.replace(rejects.find(",x"), 2, ",98004");
  Write("mended.csv", rejects);
  Options.File = Path("mended.csv");
  EXPECT_EQ(Import(), 1);
  EXPECT_THAT(Names(), ElementsAre(u"Anna|Ek|98001", u"Co\r\nra||98004"));
}

TEST_F(ImportOnDatabaseTest, NeverReplacesAFileByRejects) {
  Write("people.rejects.csv", "mine");
  EXPECT_EQ(Import(kHead + ",,,\"x\r\n"), 1);
  EXPECT_EQ(Read("people.rejects.csv"), "mine");
  EXPECT_EQ(Read("people.rejects-2.csv"), "\xEF\xBB\xBF" + kHead + ",,,\"x\r\n");
  Options.Rejects = Path("people.rejects.csv");
  EXPECT_THROW(Import(), Error);
  Options.Rejects = Options.File;
  EXPECT_THROW(Import(), Error);
}

TEST_F(ImportOnDatabaseTest, SkipsNumbersThatAreThereHoweverWritten) {
  Import(kHead + "Anna,Ek,4670 1,\r\n");
  Database.Run({u"UPDATE SMS_ABCONTACTS SET COUNTRYCODE = '46', MOBILENO = '701'"});
  EXPECT_EQ(Import(kHead + "Anna Ek,,+46 (0)70-1,\r\nX,,0046701,\r\nBert,,702,\r\nB.,,7-0-2,\r\n"),
            0);
  EXPECT_THAT(Names(), ElementsAre(u"Anna|Ek|701", u"Bert||702"));
  EXPECT_EQ(Out.str(), "added 1, skipped 3 duplicates, rejected 0\n");
}

TEST_F(ImportOnDatabaseTest, SkipsTheSameNameAndEmail) {
  Import(kHead + "Anna,Ek,1,anna@ek.se\r\n");
  Import(kHead + "ANNA,ek ,2,Anna@Ek.se\r\nAnna,Al,3,anna@ek.se\r\nAnna,Ek,4,\r\nAnna,Ek,5,\r\n");
  EXPECT_THAT(Names(), ElementsAre(u"Anna|Ek|1", u"Anna|Al|3", u"Anna|Ek|4", u"Anna|Ek|5"));
}

TEST_F(ImportOnDatabaseTest, TellsForWhomAnotherNameWasTaken) {
  Import(kHead + "Anna,Ek,1,\r\nBert,,2,\r\n");
  const std::string people =
      kHead + "ANNA EK,,1,\r\nCora,,+2,\r\nDora,,3,\r\nEva,,3,\r\nDora,,3,\r\n";
  EXPECT_EQ(Import(people), 0);
  EXPECT_EQ(Out.str(), "added 1, skipped 4 duplicates, rejected 0\n");
  const std::string file = Options.File;
  EXPECT_EQ(Messages.str(), file + ":3: taken for the contact \"Bert\"\n" + file +
                                ":5: taken for the contact of line 4\n5 read\n");
  Json = true;
  Import(people);
  EXPECT_THAT(Out.str(), HasSubstr("],\n\"notes\": [\n"
                                   "{\"line\": 3, \"text\": \"taken for the contact "
                                   "\\\"Bert\\\"\"},\n{\"line\": 5, "));
}

TEST_F(ImportOnDatabaseTest, AddsDuplicatesIfAsked) {
  Options.OfDuplicates = Duplicates::Add;
  Import(kHead + "Anna,Ek,1,\r\nAnna,Ek,1,\r\n");
  EXPECT_EQ(Names().size(), 2U);
}

TEST_F(ImportOnDatabaseTest, MergesIntoTheGapsOfAContact) {
  Import("First Name,Mobile,City,Age\r\nAnna,1,Lund,\r\n");
  Options.OfDuplicates = Duplicates::Merge;
  Import(
      "First Name,Last Name,Mobile,City,Age,Birthday\r\nA.,Ek,1,Oslo,30,\r\n"
      "Bert,,2,Bergen,,\r\nB.,Al,+2,,40,1985-05-17\r\nA.,,01,,31,1990-01-01\r\n");
  EXPECT_THAT(Rows(u"SELECT FNAME, LNAME, CITY, AGE, BIRTHDAY FROM SMS_ABCONTACTS ORDER BY ID"),
              ElementsAre(u"Anna|Ek|Lund|30|1990-01-01", u"Bert|Al|Bergen|40|1985-05-17"));
  EXPECT_EQ(Out.str(), "added 1, merged 3, skipped 0 duplicates, rejected 0\n");
}

/// The number of the file is the same, with its country code divided from it.
TEST_F(ImportOnDatabaseTest, MergesNoCountryCodeIntoANumber) {
  const std::string head = "First Name,Last Name,Country Code,Mobile,City,E-mail\r\n";
  Import(head + "Anna,,,46701,,\r\nBert,Al,,4980,,bert@al.de\r\n");
  Options.OfDuplicates = Duplicates::Merge;
  const std::string people = head +
                             "Anna,,46,701,Lund,\r\nBert,Al,46,702,Oslo,bert@al.de\r\n"
                             "Cora,,,46703,,\r\nC.,,46,703,Ulm,\r\n";
  const auto numbers = [&] {
    return Rows(u"SELECT COUNTRYCODE, MOBILENO, CITY FROM SMS_ABCONTACTS ORDER BY ID");
  };
  EXPECT_EQ(Import(people), 0);
  EXPECT_THAT(numbers(), ElementsAre(u"|46701|Lund", u"|4980|Oslo", u"|46703|Ulm"));
  EXPECT_EQ(Import(people), 0);
  EXPECT_EQ(Out.str(), "added 0, merged 4, skipped 0 duplicates, rejected 0\n");
  EXPECT_THAT(numbers(), ElementsAre(u"|46701|Lund", u"|4980|Oslo", u"|46703|Ulm"));
}

TEST_F(ImportOnDatabaseTest, MergesANumberWithItsCountryCode) {
  const std::string head = "First Name,Country Code,Mobile,E-mail\r\n";
  Import(head + "Anna,,1,anna@ek.se\r\nBert,,2,bert@al.de\r\nCora,,3,cora@by.no\r\n");
  Database.Run({u"UPDATE SMS_ABCONTACTS SET MOBILENO = NULL",
                u"UPDATE SMS_ABCONTACTS SET COUNTRYCODE = '49' WHERE FNAME <> 'Anna'"});
  Options.OfDuplicates = Duplicates::Merge;
  const std::string people =
      head + "Anna,46,701,anna@ek.se\r\nBert,46,702,bert@al.de\r\nCora,,47703,cora@by.no\r\n";
  const auto numbers = [&] {
    return Rows(u"SELECT COUNTRYCODE, MOBILENO FROM SMS_ABCONTACTS ORDER BY ID");
  };
  EXPECT_EQ(Import(people), 0);
  EXPECT_THAT(numbers(), ElementsAre(u"46|701", u"46|702", u"|47703"));
  EXPECT_EQ(Import(people), 0);
  EXPECT_EQ(Out.str(), "added 0, merged 3, skipped 0 duplicates, rejected 0\n");
  EXPECT_THAT(numbers(), ElementsAre(u"46|701", u"46|702", u"|47703"));
}

TEST_F(ImportOnDatabaseTest, PutsContactsIntoTheFolderAndTheGroup) {
  Database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (7, 'S', 'Staff')",
                u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (9, 'Team')"});
  Import(kHead + "Anna,Ek,1,\r\nBert,,2,\r\n");
  Options.Folder = "Staff";
  Options.Group = "Team";
  const std::string people = kHead + "Bert,,2,\r\nCora,,3,\r\nCora,,3,\r\nDora,,4,\r\n";
  Import(people);
  const auto members = [&] {
    return Rows(
        u"SELECT C.FNAME, C.FOLDER_ID, M.CONTACT_TYPE FROM SMS_ABGROUPMAPS M, SMS_ABCONTACTS C "
        u"WHERE C.ID = M.CONTACT_ID AND M.GROUP_ID = 9 ORDER BY C.ID");
  };
  EXPECT_THAT(members(), ElementsAre(u"Bert|0|S", u"Cora|7|S", u"Dora|7|S"));
  Import(people);
  EXPECT_EQ(members().size(), 3U);
}

TEST_F(ImportOnDatabaseTest, RefusesAFolderOfRemoteContacts) {
  Database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (7, 'R', 'Dealers')"});
  Options.Folder = "Dealers";
  EXPECT_THROW(Import(kHead + "Anna,Ek,1,\r\n"), Error);
  Options.Folder = "None";
  EXPECT_THROW(Import(), Error);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(ImportOnDatabaseTest, OnADryRunWritesNothing) {
  Import(kHead + "Anna,Ek,1,\r\n");
  Options.DryRun = true;
  EXPECT_EQ(Import(kHead + "Anna,Ek,1,\r\nBert,,2,\r\nB,,2,\r\n,,3,\r\n"), 1);
  EXPECT_EQ(Out.str(), "would add 1, skipped 2 duplicates, rejected 1\n");
  EXPECT_THAT(Names(), ElementsAre(u"Anna|Ek|1"));
  EXPECT_FALSE(Exists("people.rejects.csv"));
}

/// The row that a dry run would add is not in the database.
TEST_F(ImportOnDatabaseTest, OnADryRunKnowsPeopleOfFormerBlocks) {
  Database.Run({u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (9, 'Team')"});
  Options.Group = "Team";
  Options.RowsOfBlock = 1;
  Options.DryRun = true;
  EXPECT_EQ(Import(kHead + "Anna,Ek,1,\r\nAnna,Ek,1,\r\n"), 0);
  EXPECT_EQ(Out.str(), "would add 1, skipped 1 duplicates, rejected 0\n");
  EXPECT_THAT(Names(), IsEmpty());
  Options.DryRun = false;
  EXPECT_EQ(Import(), 0);
  EXPECT_EQ(Out.str(), "added 1, skipped 1 duplicates, rejected 0\n");
}

TEST_F(ImportOnDatabaseTest, ReportsAsJson) {
  Json = true;
  Import(kHead + "Anna,Ek,1,\r\n,,\"\"\"\",\r\n,,2,\r\n");
  EXPECT_EQ(Out.str(),
            "{\"rejected\": [\n{\"line\": 3, \"reason\": \"Please enter the First Name.\"},\n"
            "{\"line\": 4, \"reason\": \"Please enter the First Name.\"}],\n\"notes\": [],\n"
            "\"added\": 1, \"merged\": 0, \"skipped\": 0}\n");
}

TEST_F(ImportOnDatabaseTest, SaysWhichHeadingsAreMissing) {
  try {
    Import("Vorname,Handy\r\nAnna,1\r\n");
    FAIL();
  } catch (const Error& error) {
    EXPECT_THAT(error.what(), HasSubstr("as that of a name"));
    EXPECT_THAT(error.what(), HasSubstr("Vorname, Handy"));
  }
  Options.Format.Mapped = {"Vorname=FNAME", "Telefon=MOBILENO"};
  EXPECT_THROW(Import(), Error);
  Options.Format.Mapped = {"Vorname=FNAME", "Handy=NUMBER"};
  EXPECT_THROW(Import(), Error);
  Options.Format.Mapped = {"Vorname=FNAME", "Handy=MOBILENO"};
  EXPECT_EQ(Import(), 0);
}

TEST_F(ImportOnDatabaseTest, ReportsAFileThatCannotBeRead) {
  EXPECT_THROW(Import(), Error);
  Options.File = Folder.string();
  EXPECT_THROW(Import(), Error);
  Options.File = Path("people.csv");
  EXPECT_THROW(Import(""), Error);
}

TEST_F(ImportOnDatabaseTest, NoticesRejectsThatCannotBeWrittenBeforeItBegins) {
  Options.Rejects = Path("none/rejects.csv");
  EXPECT_THROW(Import(kHead + "Anna,Ek,1,\r\n,,2,\r\n"), Error);
  Options.Rejects = Path("none/rejects.csv");
  EXPECT_THROW(Import(kHead + "Anna,Ek,1,\r\n"), Error);
  EXPECT_THAT(Names(), IsEmpty());
  Options.Rejects = Path("rejects.csv");
  EXPECT_EQ(Import(), 0);
  EXPECT_FALSE(Exists("rejects.csv"));
}

/// It is read more than once.
TEST_F(ImportOnDatabaseTest, RefusesWhatIsNoRegularFile) {
  Options.File = Folder.string();
  try {
    Import();
    FAIL();
  } catch (const Error& error) {
    EXPECT_THAT(error.what(), HasSubstr("not a regular file"));
  }
}

TEST_F(ImportOnDatabaseTest, RejectsInvalidBytesAndTooLongTexts) {
  Options.Format.Encoding = tool::Encoding::Utf8;
  EXPECT_EQ(Import(kHead + "M\xFCller,,1,\r\n" + std::string(51, 'x') + ",,2,\r\nAnna,,3,\r\n"), 1);
  EXPECT_THAT(Names(), ElementsAre(u"Anna||3"));
}

TEST_F(ImportOnDatabaseTest, ImportsSeveralBlocksOnce) {
  std::string people = kHead;
  for (int row = 0; row < 2500; ++row) {
    people += "P" + std::to_string(row) + ",,46" + std::to_string(10000 + row) + ",\r\n";
  }
  EXPECT_EQ(Import(people), 0);
  EXPECT_THAT(Rows(u"SELECT COUNT(*) FROM SMS_ABCONTACTS"), ElementsAre(u"2500"));
  EXPECT_EQ(Import(people + "New,,5,\r\n"), 0);
  EXPECT_EQ(Out.str(), "added 1, skipped 2500 duplicates, rejected 0\n");
  EXPECT_THAT(Rows(u"SELECT COUNT(*) FROM SMS_ABCONTACTS"), ElementsAre(u"2501"));
}

/// The database has a rule that the editor does not know.
TEST_F(ImportOnDatabaseTest, RejectsRowsThatTheDatabaseRefuses) {
  Database.Run({u"CREATE UNIQUE INDEX IX_ONCE ON SMS_ABCONTACTS (CITY)"});
  Database.Run({u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (9, 'Team')"});
  Options.Group = "Team";
  EXPECT_EQ(Import("First Name,Mobile,City\r\nAnna,1,Lund\r\nBert,2,Lund\r\nB,2,\r\nCora,3,Oslo\r\n"
                   "C,3,\r\n"),
            1);
  EXPECT_THAT(Names(), ElementsAre(u"Anna||1", u"Cora||3"));
  EXPECT_THAT(Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS"), ElementsAre(u"2"));
  EXPECT_EQ(Read("people.rejects.csv"),
            "\xEF\xBB\xBF"
            "First Name,Mobile,City\r\nBert,2,Lund\r\nB,2,\r\n");
  EXPECT_THAT(Out.str(), HasSubstr("added 2, skipped 1 duplicates, rejected 2"));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:4: It is the same contact as in line 3"));
}

TEST_F(ImportOnDatabaseTest, StopsIfRefusedRowsMayBeStored) {
  if (Connection.CurrentLink()->Get().EngineKind() != database::Engine::MySql) GTEST_SKIP();
  Database.Run({u"ALTER TABLE SMS_ABCONTACTS ENGINE = MyISAM",
                u"CREATE UNIQUE INDEX IX_ONCE ON SMS_ABCONTACTS (CITY)"});
  EXPECT_THROW(Import("First Name,Mobile,City\r\nAnna,1,Lund\r\nBert,2,Lund\r\n"), Error);
  EXPECT_THAT(Names(), ElementsAre(u"Anna||1"));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:2: stopped here"));
}

/// The same number came from elsewhere while a block was rolled back.
TEST_F(ImportOnDatabaseTest, DoesNotTakeANumberOfAnotherUserForItsOwn) {
  Database.Run({u"CREATE UNIQUE INDEX IX_ONCE ON SMS_ABCONTACTS (CITY)"});
  WatchedDriver driver(Database.Driver());
  database::Connection watched(
      {[&](StringView) -> database::Driver& { return driver; }, [](const auto&) {}});
  watched.Open(Database.ConnectionString());
  driver.AfterRollBack = [&] {
    driver.AfterRollBack = nullptr;
    Database.Run(
        {u"INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, LNAME, MOBILENO) "
         u"VALUES (0, 'Other', '', '1')"});
  };
  Write("people.csv", "First Name,Mobile,City\r\nAnna,1,Lund\r\nBert,2,Lund\r\nCora,3,Oslo\r\n");
  EXPECT_EQ(Import(watched), 1);
  EXPECT_THAT(Names(), ElementsAre(u"Other||1", u"Anna||1", u"Cora||3"));
}

}  // namespace
}  // namespace ktrv::tests
