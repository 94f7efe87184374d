#include "database/UnionColumns.h"

#include <gtest/gtest.h>

namespace ktrv::database {
namespace {

std::string United(StringView sql) {
  return ToUtf8(UniteUnlikeColumns(sql));
}

TEST(UnionColumns, OfDifferentNamesAreTexts) {
  EXPECT_EQ(United(u"SELECT A.ID AS ID, N FROM T A UNION SELECT CODE , N FROM V ORDER BY N"),
            "SELECT CAST(A.ID AS VARCHAR) AS ID, N FROM T A UNION SELECT CAST(CODE AS VARCHAR) , N "
            "FROM V ORDER BY N");
}

TEST(UnionColumns, OfEveryBranchAreTexts) {
  EXPECT_EQ(United(u"SELECT A UNION ALL SELECT B UNION SELECT A"),
            "SELECT CAST(A AS VARCHAR) UNION ALL SELECT CAST(B AS VARCHAR) UNION SELECT CAST(A AS "
            "VARCHAR)");
}

TEST(UnionColumns, RightBehindAWordStayApartFromIt) {
  EXPECT_EQ(United(u"SELECT\"A\"FROM T UNION SELECT[B]FROM U"),
            "SELECT CAST(\"A\" AS VARCHAR)FROM T UNION SELECT CAST([B] AS VARCHAR)FROM U");
}

TEST(UnionColumns, OfOneNameStay) {
  for (const StringView sql :
       {u"SELECT ID, NAME FROM A UNION SELECT T.id, Name FROM T",
        u"SELECT ID , FNAME , '' , 1 FROM A UNION SELECT ID, 'x', M, 2 FROM B",
        u"SELECT (SELECT A FROM X UNION SELECT B FROM Y) FROM Z",
        u"SELECT A FROM T WHERE B IN (SELECT C FROM U)",
        u"SELECT A, B FROM T UNION SELECT C FROM U", u"", u"UNION"}) {
    EXPECT_EQ(United(sql), ToUtf8(sql));
  }
}

TEST(UnionColumns, OfSelectsThatAreNotUnitedStay) {
  for (const StringView sql :
       {u"SELECT ID FROM A; SELECT CODE FROM B", u"SELECT ID FROM A EXCEPT SELECT CODE FROM B",
        u"SELECT ID FROM A UNION SELECT ID FROM B; SELECT CODE FROM C", u"SELECT A SELECT B"}) {
    EXPECT_EQ(United(sql), ToUtf8(sql));
  }
}

TEST(UnionOrder, StandsBeforeACommentAtTheEnd) {
  EXPECT_EQ(WithOrderOfUnion(u"SELECT A FROM T UNION SELECT B FROM U -- those too"),
            u"SELECT A FROM T UNION SELECT B FROM U ORDER BY 1 -- those too");
}

TEST(UnionOrder, IsTheFirstColumnsUnlessThereIsOne) {
  EXPECT_EQ(WithOrderOfUnion(u"SELECT A FROM T UNION SELECT B FROM (SELECT B FROM U ORDER BY B)"),
            u"SELECT A FROM T UNION SELECT B FROM (SELECT B FROM U ORDER BY B) ORDER BY 1");
  for (const StringView sql :
       {u"SELECT A FROM T", u"SELECT A FROM T UNION SELECT B FROM U ORDER BY 2",
        u"SELECT A FROM T UNION ALL SELECT B FROM U",
        u"SELECT A FROM T UNION SELECT B FROM U WHERE C = 'open",
        u"SELECT A FROM T UNION SELECT B FROM U WHERE \"open",
        u"SELECT A FROM T UNION SELECT B FROM U; SELECT C FROM V",
        u"SELECT A FROM T WHERE A IN (SELECT B FROM U UNION SELECT C FROM V)", u""}) {
    EXPECT_EQ(ToUtf8(WithOrderOfUnion(sql)), ToUtf8(sql));
  }
}

}  // namespace
}  // namespace ktrv::database
