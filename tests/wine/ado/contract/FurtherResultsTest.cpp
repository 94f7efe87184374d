#include <gtest/gtest.h>

#include "database/ado/AdoDriver.h"
#include "tests/contract/ServerTest.h"

namespace ktrv::tests {
namespace {

/// Several statements in one text, by ADO, which tells of each only when its result is asked for.
class FurtherResultsByAdoTest : public ServerTest {
 protected:
  FurtherResultsByAdoTest() {
    const bool mustBeAllowed = GetParam() == ServerKind::MariaDb;
    several.Open(u"Provider=MSDASQL;" + database.ConnectionString() +
                 (mustBeAllowed ? u";OPTION=67108864" : u""));
  }

  database::AdoDriver ado;
  database::Environment byAdo{[this](StringView) -> database::Driver& { return ado; },
                              dispatcher.Post()};
  database::Connection several{byAdo};
};

TEST_P(FurtherResultsByAdoTest, FailureBehindTheFirstCountDoesNotGoUnnoticed) {
  connection.Execute(u"INSERT INTO T (NAME) VALUES ('Ann')");
  EXPECT_THROW(several.Execute(u"UPDATE T SET NAME = 'Bob'; INSERT INTO T (ID) VALUES (1)"), Error);
}

TEST_P(FurtherResultsByAdoTest, TheLastCountIsTheStatementsAndTheSessionWorksOn) {
  connection.Execute(u"INSERT INTO T (NAME) VALUES ('Ann'), ('Bob')");
  EXPECT_EQ(several.Execute(u"UPDATE T SET NAME = 'Cid'; DELETE FROM T WHERE ID = 1"), 1);
  EXPECT_EQ(several.Execute(u"UPDATE T SET NAME = 'Dee'; DELETE FROM T WHERE ID = 99"), 0);
  EXPECT_EQ(several.Execute(u"DELETE FROM T"), 1);
}

INSTANTIATE_TEST_SUITE_P(, FurtherResultsByAdoTest,
                         testing::Values(ServerKind::MariaDb, ServerKind::PostgreSql),
                         NameOfServer);

}  // namespace
}  // namespace ktrv::tests
