#include "tests/contract/ServerTest.h"

namespace ktrv::tests {
namespace {

/// Several statements in one text, as a trigger's counts come before the statement's own on SQL
/// Server.
class FurtherResultsTest : public ServerTest {
 protected:
  FurtherResultsTest() {
    const bool mustBeAllowed = GetParam() == ServerKind::MariaDb;
    several.Open(database.ConnectionString() + (mustBeAllowed ? u";OPTION=67108864" : u""));
  }

  database::Connection several{environment};
};

TEST_P(FurtherResultsTest, FailureBehindTheFirstCountIsTold) {
  connection.Execute(u"INSERT INTO T (NAME) VALUES ('Ann')");
  try {
    several.Execute(u"UPDATE T SET NAME = 'Bob'; INSERT INTO T (ID) VALUES (1)");
    ADD_FAILURE() << "the second statement's failure was lost";
  } catch (const Error& error) {
    // MariaDB's driver has no state for it here, only the text.
    EXPECT_NE(ToUpperAscii(error.Description()).find(u"DUPLICATE"), String::npos)
        << ToUtf8(error.Description());
  }
}

TEST_P(FurtherResultsTest, TheLastCountIsTheStatementsAndTheSessionWorksOn) {
  connection.Execute(u"INSERT INTO T (NAME) VALUES ('Ann'), ('Bob')");
  EXPECT_EQ(several.Execute(u"UPDATE T SET NAME = 'Cid'; DELETE FROM T WHERE ID = 1"), 1);
  EXPECT_EQ(several.Execute(u"UPDATE T SET NAME = 'Dee'; DELETE FROM T WHERE ID = 99"), 0);
  EXPECT_EQ(several.Execute(u"DELETE FROM T"), 1);
}

INSTANTIATE_TEST_SUITE_P(, FurtherResultsTest,
                         testing::Values(ServerKind::MariaDb, ServerKind::PostgreSql),
                         NameOfServer);

}  // namespace
}  // namespace ktrv::tests
