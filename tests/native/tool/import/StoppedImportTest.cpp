#include "common/Error.h"
#include "tests/native/support/WatchedDriver.h"
#include "tests/native/tool/import/ImportFixture.h"

namespace ktrv::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using tool::Duplicates;

/// Imports that fail on the way, with rows that a second run would add again.
class StoppedImportTest : public ImportFixture {
 protected:
  StoppedImportTest() { Options.OfDuplicates = Duplicates::Add; }
};

TEST_F(StoppedImportTest, TellsTheLineAmongRowsWrittenOneByOne) {
  Database.Run({u"CREATE UNIQUE INDEX IX_ONCE ON SMS_ABCONTACTS (CITY)",
                u"CREATE TRIGGER FAILING BEFORE INSERT ON SMS_ABCONTACTS WHEN NEW.FNAME = 'Dora' "
                u"BEGIN SELECT ABS(-9223372036854775807 - 1); END"});
  EXPECT_THROW(Import("First Name,Mobile,City\r\nAnna,1,Lund\r\nBert,2,Lund\r\nCora,3,Oslo\r\n"
                      "Dora,4,Rome\r\nEva,5,Ulm\r\n"),
               Error);
  EXPECT_THAT(Names(), ElementsAre(u"Anna||1", u"Cora||3"));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:3: "));
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:5: stopped here; rows above this line are "
                                        "stored, and none from here on\n"));
  EXPECT_EQ(Read("people.rejects.csv"),
            "\xEF\xBB\xBF"
            "First Name,Mobile,City\r\nBert,2,Lund\r\n");
}

TEST_F(StoppedImportTest, SaysThatACommitIsUncertain) {
  WatchedDriver driver(Database.Driver());
  database::Connection watched(
      {[&](StringView) -> database::Driver& { return driver; }, [](const auto&) {}});
  watched.Open(Database.ConnectionString());
  Options.RowsOfBlock = 2;
  int commits = 0;
  driver.AfterCommit = [&] {
    if (++commits == 2) throw Error(ErrorNumber::DriverFailure, u"lost");
  };
  Write("people.csv", "First Name,Mobile\r\nA,1\r\nB,2\r\nC,3\r\nD,4\r\nE,5\r\n");
  EXPECT_THROW(Import(watched), Error);
  EXPECT_EQ(Names().size(), 4U);
  EXPECT_THAT(Messages.str(), HasSubstr("people.csv:4: stopped here; rows above this line are "
                                        "stored; whether those from here to line 5 are, all or "
                                        "none of them, is unknown: look for them\n"));
}

}  // namespace
}  // namespace ktrv::tests
