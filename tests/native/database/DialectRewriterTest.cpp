#include "database/DialectRewriter.h"

#include <gtest/gtest.h>

#include "common/Error.h"
#include "database/SqlTokenizer.h"

namespace ktrv::database {
namespace {

struct Case {
  const char16_t* Written;
  const char16_t* Sqlite;
  const char16_t* MySql;
  const char16_t* PostgreSql;
};

class DialectRewriterTest : public testing::TestWithParam<Case> {};

TEST_P(DialectRewriterTest, SpeaksTheEnginesOwnSql) {
  const Case& of = GetParam();
  EXPECT_EQ(ToUtf8(RewriteForEngine(of.Written, Engine::Sqlite)), ToUtf8(of.Sqlite));
  EXPECT_EQ(ToUtf8(RewriteForEngine(of.Written, Engine::MySql)), ToUtf8(of.MySql));
  EXPECT_EQ(ToUtf8(RewriteForEngine(of.Written, Engine::PostgreSql)), ToUtf8(of.PostgreSql));
}

TEST_P(DialectRewriterTest, LeavesEnginesThatKnowTheirFamilyAlone) {
  for (const Engine engine : {Engine::SqlServer, Engine::Oracle, Engine::Other}) {
    EXPECT_EQ(RewriteForEngine(GetParam().Written, engine), GetParam().Written);
  }
}

constexpr Case kRewritten[] = {
    {u"SELECT ISNULL(A,'') FROM T", u"SELECT COALESCE(A,'') FROM T",
     u"SELECT COALESCE(A,'') FROM T", u"SELECT COALESCE(A,'') FROM T"},
    {u"SELECT nvl ( A , '' )", u"SELECT COALESCE( A , '' )", u"SELECT COALESCE( A , '' )",
     u"SELECT COALESCE( A , '' )"},
    {u"TO_CHAR(ID)", u"CAST(ID AS TEXT)", u"CONCAT(ID)", u"CAST(ID AS VARCHAR)"},
    {u"A + ' ' + B", u"A || ' ' || B", u"CONCAT(A, ' ', B)", u"A || ' ' || B"},
    {u"A || ' ' || B", u"COALESCE(A, '') || ' ' || COALESCE(B, '')", u"CONCAT_WS('', A, ' ', B)",
     u"CONCAT(A, ' ', B)"},
    {u"(LTRIM(ISNULL(CC ,'') + ' ') + ISNULL(M,'')) as MOBILENO",
     u"(LTRIM(COALESCE(CC ,'') || ' ') || COALESCE(M,'')) as MOBILENO",
     u"(CONCAT(LTRIM(CONCAT(COALESCE(CC ,''), ' ')), COALESCE(M,''))) as MOBILENO",
     u"(LTRIM(COALESCE(CC ,'') || ' ') || COALESCE(M,'')) as MOBILENO"},
    {u"(A + B) || C", u"COALESCE((A || B), '') || COALESCE(C, '')",
     u"CONCAT_WS('', (CONCAT(A, B)), C)", u"CONCAT((A || B), C)"},
    {u"A + B || C", u"COALESCE(A || B, '') || COALESCE(C, '')", u"CONCAT_WS('', CONCAT(A, B), C)",
     u"CONCAT(A || B, C)"},
    {u"T.A+T.B", u"T.A || T.B", u"CONCAT(T.A, T.B)", u"T.A || T.B"},
    {u"? + 'x'", u"? || 'x'", u"CONCAT(?, 'x')", u"? || 'x'"},
    {u"x IN (A + B) AND C = D + 'e'", u"x IN (A || B) AND C = D || 'e'",
     u"x IN (CONCAT(A, B)) AND C = CONCAT(D, 'e')", u"x IN (A || B) AND C = D || 'e'"},
    {u"SELECT(A)||B", u"SELECT COALESCE((A), '') || COALESCE(B, '')",
     u"SELECT CONCAT_WS('', (A), B)", u"SELECT CONCAT((A), B)"},
    {u"5.(A)||B", u"5. COALESCE((A), '') || COALESCE(B, '')", u"5. CONCAT_WS('', (A), B)",
     u"5. CONCAT((A), B)"},
    {u"T.5.? || B", u"T.5. COALESCE(?, '') || COALESCE(B, '')", u"T.5. CONCAT_WS('', ?, B)",
     u"T.5. CONCAT(?, B)"},
    {u"CASE(A)+B WHEN'x'||C THEN 1 END", u"CASE(A) || B WHEN'x' || COALESCE(C, '') THEN 1 END",
     u"CASE CONCAT((A), B) WHEN CONCAT_WS('', 'x', C) THEN 1 END",
     u"CASE(A) || B WHEN CONCAT('x', C) THEN 1 END"},
    {u"CASE WHEN A + B = 'c' THEN NVL(D, 'x') END + 'y'",
     u"CASE WHEN A || B = 'c' THEN COALESCE(D, 'x') END || 'y'",
     u"CONCAT(CASE WHEN CONCAT(A, B) = 'c' THEN COALESCE(D, 'x') END, 'y')",
     u"CASE WHEN A || B = 'c' THEN COALESCE(D, 'x') END || 'y'"},
};

INSTANTIATE_TEST_SUITE_P(Rewritten, DialectRewriterTest, testing::ValuesIn(kRewritten),
                         [](const auto& each) { return std::to_string(each.index); });

class UntouchedTextTest : public testing::TestWithParam<const char16_t*> {};

TEST_P(UntouchedTextTest, StaysToTheLetter) {
  for (const Engine engine : {Engine::Sqlite, Engine::MySql, Engine::PostgreSql}) {
    EXPECT_EQ(ToUtf8(RewriteForEngine(GetParam(), engine)), ToUtf8(GetParam()));
  }
}

constexpr const char16_t* kUntouched[] = {
    u"",
    u"SELECT 'ISNULL(a,b) + c || d' FROM T",
    u"SELECT 'it''s + \"' , \"a + b\", [c || d], `NVL(x,y)` FROM T",
    u"SELECT A -- B + C\n FROM T /* NVL(D, E) || F */ WHERE 1 = 2",
    u"SELECT COUNT(*), T.* FROM T",
    u"UPDATE T SET N = N + 1",
    u"SELECT 1 + A, A - B + C, A + B - C, A * B + C, -1, +1, 5 + -A",
    u"SELECT ISNULL(A), TO_CHAR(D, 'yyyy'), NVL2(A, B, C)",
    u"SELECT ISNULL FROM NVL WHERE TO_CHAR = 'x'",
    u"INSERT INTO SMS_ABFOLDERS (TYPE, NAME, PARENTFOLDERID ) VALUES(?, ?, 0)",
    u"SELECT CODE FROM V_ZUL$REMOTE_CONTACTS WHERE C =  (SELECT A FROM B WHERE ID = 5)",
    u"SELECT 'not closed",
    u"SELECT A || 'not closed",
    u"SELECT A + \"not closed",
    u"SELECT (A",
    u") , (",
    u"CASE WHEN A",
};

INSTANTIATE_TEST_SUITE_P(, UntouchedTextTest, testing::ValuesIn(kUntouched),
                         [](const auto& each) { return std::to_string(each.index); });

String Nested(std::size_t depth, StringView open, StringView close) {
  String text;
  for (std::size_t level = 0; level < depth; ++level) text += open;
  text += u"A";
  for (std::size_t level = 0; level < depth; ++level) text += close;
  return text;
}

constexpr std::pair<StringView, StringView> kNests[] = {
    {u"(", u")"}, {u"NVL(A, ", u")"}, {u"CASE WHEN ", u" END"}};

TEST(DialectRewriterDepthTest, DeepNestingIsAnErrorAndNotTheEndOfTheStack) {
  for (const auto& [open, close] : kNests) {
    const String deep = Nested(30000, open, close);
    for (const Engine engine : {Engine::Sqlite, Engine::MySql, Engine::PostgreSql}) {
      try {
        RewriteForEngine(deep, engine);
        ADD_FAILURE() << ToUtf8(open);
      } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::SyntaxOrPermission);
      }
    }
    EXPECT_EQ(RewriteForEngine(deep, Engine::SqlServer), deep);
  }
}

TEST(DialectRewriterDepthTest, WhatIsWrittenByHandIsNotDeep) {
  for (const auto& [open, close] : kNests) {
    EXPECT_NO_THROW(RewriteForEngine(Nested(100, open, close), Engine::Sqlite)) << ToUtf8(open);
  }
}

TEST(SqlTokenizerTest, AnEmptyCommentHidesNothingBehindIt) {
  for (const StringView sql : {u"A/**/B", u"A--\nB"}) {
    const auto tokens = TokenizeSql(sql);
    ASSERT_EQ(tokens.size(), 3U) << ToUtf8(sql);
    EXPECT_EQ(tokens[2].Text, u"B");
  }
}

}  // namespace
}  // namespace ktrv::database
