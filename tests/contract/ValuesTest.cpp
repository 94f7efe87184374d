#include "tests/contract/ContractTest.h"

namespace ktrv::tests {
namespace {

TEST_P(ContractTest, WholeNumberComesBack) {
  Insert(Null{}, Null{}, Null{}, Null{}, std::int64_t{-2147483648});
  EXPECT_EQ(Value(u"SELECT FOLDER_ID FROM CONTACTS"), Variant(std::int64_t{-2147483648}));
}

TEST_P(ContractTest, FractionComesBack) {
  Insert(Null{}, Null{}, 41.5);
  EXPECT_EQ(Value(u"SELECT AGE FROM CONTACTS"), Variant(41.5));
}

TEST_P(ContractTest, LargeFractionComesBack) {
  Insert(Null{}, Null{}, 1e300);
  EXPECT_EQ(Value(u"SELECT AGE FROM CONTACTS"), Variant(1e300));
}

TEST_P(ContractTest, DateComesBack) {
  const DateTime day = *ParseDateTime(u"1980-02-29");
  Insert(Null{}, Null{}, Null{}, day);
  EXPECT_EQ(Value(u"SELECT BIRTHDAY FROM CONTACTS"), Variant(day));
}

TEST_P(ContractTest, DateWithTimeOfDayComesBack) {
  const DateTime moment = *ParseDateTime(u"2024-12-31 23:59:58.250");
  Insert(Null{}, Null{}, Null{}, moment);
  EXPECT_EQ(Value(u"SELECT BIRTHDAY FROM CONTACTS"), Variant(moment));
}

TEST_P(ContractTest, NullComesBackInEveryType) {
  Insert(Null{});
  database::Recordset rows = Query(u"SELECT * FROM CONTACTS");
  for (const StringView name : {u"FNAME", u"NOTE", u"AGE", u"BIRTHDAY", u"FOLDER_ID"}) {
    EXPECT_TRUE(IsNull(rows.Field(name))) << ToUtf8(name);
  }
}

TEST_P(ContractTest, EmptyTextIsNotNull) {
  Insert(String());
  EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(String()));
}

TEST_P(ContractTest, TextsOfAllScriptsComeBack) {
  for (const String text :
       {u"Zoë Ångström", u"Привет", u"नमस्ते", u"日本語", u"😀👨‍👩‍👧", u"a\tb\r\nc",
        u"O'Brien \"x\" `y` [z] \\ % _ ; -- ?", u" blanks around "}) {
    Insert(text);
    EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(text)) << ToUtf8(text);
    connection.Execute(u"DELETE FROM CONTACTS");
  }
}

TEST_P(ContractTest, TextWrittenIntoTheQueryComesBack) {
  EXPECT_EQ(Value(u"SELECT 'नमस्ते 😀 + ISNULL(a,b) || '''"),
            Variant(String(u"नमस्ते 😀 + ISNULL(a,b) || '")));
}

TEST_P(ContractTest, LongTextIsNotShortened) {
  for (const std::size_t length : {511u, 512u, 513u, 4095u, 4096u, 4097u, 100000u}) {
    String text(length, u'x');
    text.back() = u'\x0928';
    Insert(Null{}, text);
    EXPECT_TRUE(Value(u"SELECT NOTE FROM CONTACTS") == Variant(text)) << length;
    connection.Execute(u"DELETE FROM CONTACTS");
  }
}

TEST_P(ContractTest, LongTextOfPairsIsNotShortened) {
  String text;
  while (text.size() < 20001) text += u"😀";
  Insert(Null{}, text);
  EXPECT_TRUE(Value(u"SELECT NOTE FROM CONTACTS") == Variant(text));
}

TEST_P(ContractTest, SeveralLongTextsInARowAreNotShortened) {
  const String note(3000, u'n');
  Insert(String(100, u'f'), note);
  database::Recordset rows = Query(u"SELECT NOTE, FNAME, NOTE AS AGAIN, ID FROM CONTACTS");
  EXPECT_TRUE(rows.Field(u"NOTE") == Variant(note));
  EXPECT_TRUE(rows.Field(u"AGAIN") == Variant(note));
  EXPECT_TRUE(rows.Field(u"FNAME") == Variant(String(100, u'f')));
  EXPECT_EQ(ToText(rows.Field(u"ID")), u"1");
}

TEST_P(ContractTest, TextWithAZeroIsKeptOrRefusedButNeverCut) {
  const String text(u"a\0b", 3);
  if (FailureOf([&] { Insert(text); }) == 0) {
    EXPECT_EQ(Value(u"SELECT FNAME FROM CONTACTS"), Variant(text));
  } else {
    EXPECT_EQ(Query(u"SELECT FNAME FROM CONTACTS").RecordCount(), 0);
  }
}

TEST_P(ContractTest, AFailuresTextDoesNotLoseItsLetters) {
  try {
    Query(u"SELECT * FROM \"na\u00EFve\u0928\"");
    ADD_FAILURE() << "there is no such table";
  } catch (const Error& error) {
    EXPECT_NE(error.Description().find(u"na\u00EFve\u0928"), String::npos)
        << ToUtf8(error.Description());
  }
}

TEST_P(ContractTest, UnpairedSurrogateIsKeptOrReplacedButItsNeighboursStay) {
  Insert(
      String(u"a\xD83D"
             u"b"));
  const String text = ToText(Value(u"SELECT FNAME FROM CONTACTS"));
  EXPECT_EQ(text.front(), u'a');
  EXPECT_EQ(text.back(), u'b');
}

TEST_P(ContractTest, NumbersAndTextsUnitedInOneColumnBothComeThrough) {
  Insert(String(u"Ann"));
  database::Recordset rows = Query(
      u"SELECT TO_CHAR(ID) AS ID, FNAME AS NAME FROM CONTACTS UNION SELECT 'C-17', 'Zoe' "
      u"ORDER BY NAME");
  EXPECT_EQ(rows.CellText(0, 0), u"1");
  EXPECT_EQ(rows.CellText(1, 0), u"C-17");
}

TEST_P(ContractTest, JoinWithPlusIsNullWhenAPartIsNull) {
  Insert(String(u"Ann"));
  EXPECT_EQ(Value(u"SELECT FNAME + ' ' + NOTE FROM CONTACTS"), Variant(Null{}));
  EXPECT_EQ(Value(u"SELECT FNAME + ' ' + ISNULL(NOTE, '') FROM CONTACTS"),
            Variant(String(u"Ann ")));
}

TEST_P(ContractTest, JoinWithBarsTakesNullAsEmpty) {
  Insert(String(u"Ann"));
  EXPECT_EQ(Value(u"SELECT FNAME || ' ' || NOTE FROM CONTACTS"), Variant(String(u"Ann ")));
  EXPECT_EQ(Value(u"SELECT LTRIM(NVL(NOTE, '') || ' ') || FNAME FROM CONTACTS"),
            Variant(String(u"Ann")));
}

}  // namespace
}  // namespace ktrv::tests
