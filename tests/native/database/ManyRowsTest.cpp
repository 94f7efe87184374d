#include "database/ManyRows.h"

#include <gtest/gtest.h>

namespace ktrv::database {
namespace {

TEST(ManyRowsTest, RepeatsTheRow) {
  EXPECT_EQ(InsertOfRows(u"INSERT INTO T (A, B) VALUES (?, 'x')", 3),
            u"INSERT INTO T (A, B) VALUES (?, 'x'), (?, 'x'), (?, 'x')");
  EXPECT_EQ(InsertOfRows(u"insert into T values(F(?), ')')", 2),
            u"insert into T values(F(?), ')'), (F(?), ')')");
  EXPECT_EQ(InsertOfRows(u"INSERT INTO T VALUES (?)", 1), u"INSERT INTO T VALUES (?)");
}

TEST(ManyRowsTest, LeavesOtherStatements) {
  for (const StringView text :
       {u"", u"DELETE FROM T WHERE ID = ?", u"INSERT INTO T SELECT ?", u"INSERT INTO T VALUES",
        u"INSERT INTO T VALUES (?", u"INSERT INTO T VALUES (?), (?)",
        u"INSERT INTO T VALUES (?) RETURNING ID", u"INSERT INTO T VALUES ?",
        u"WITH X AS (SELECT ?) INSERT INTO T VALUES (?)",
        u"INSERT INTO T (A) SELECT ? UNION VALUES (?)"}) {
    EXPECT_EQ(InsertOfRows(text, 2), u"") << ToUtf8(text);
  }
}

}  // namespace
}  // namespace ktrv::database
