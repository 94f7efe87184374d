#include "tool/formats/CsvReader.h"

#include <chrono>
#include <gmock/gmock.h>
#include <sstream>

namespace ktrv::tool {
namespace {

using testing::ElementsAre;

/// The records of a file in UTF-8.
struct CsvReaderTest : testing::Test {
  std::vector<CsvRecord> Read(std::string bytes, char16_t delimiter = 0) {
    std::istringstream stream(std::move(bytes));
    TextSource source(stream, Encoding::Utf8);
    CsvReader reader(source, delimiter);
    Delimiter = reader.Delimiter();
    std::vector<CsvRecord> records;
    for (CsvRecord record; reader.Next(record);) records.push_back(record);
    return records;
  }
  static std::vector<String> Texts(const CsvRecord& record) {
    std::vector<String> texts;
    for (std::size_t field = 0; field < record.Count(); ++field) {
      texts.emplace_back(record.Text(field));
    }
    return texts;
  }
  std::vector<std::vector<String>> Fields(std::string bytes, char16_t delimiter = 0) {
    std::vector<std::vector<String>> all;
    for (const CsvRecord& record : Read(std::move(bytes), delimiter)) {
      EXPECT_EQ(record.Problem, u"");
      all.push_back(Texts(record));
    }
    return all;
  }

  char16_t Delimiter = 0;
};

TEST_F(CsvReaderTest, SplitsRecordsIntoFields) {
  EXPECT_THAT(Fields("a,b,c\n1,2,3\n"),
              ElementsAre(ElementsAre(u"a", u"b", u"c"), ElementsAre(u"1", u"2", u"3")));
}

TEST_F(CsvReaderTest, TakesAnyLineBreak) {
  for (const char* bytes : {"a,b\nc,d", "a,b\r\nc,d\r\n", "a,b\rc,d\r", "a,b\n\n\r\n\rc,d\n\n"}) {
    EXPECT_THAT(Fields(bytes), ElementsAre(ElementsAre(u"a", u"b"), ElementsAre(u"c", u"d")))
        << testing::PrintToString(bytes);
  }
}

TEST_F(CsvReaderTest, KeepsEmptyFields) {
  EXPECT_THAT(Fields("a,,c\n,,\n"),
              ElementsAre(ElementsAre(u"a", u"", u"c"), ElementsAre(u"", u"", u"")));
  EXPECT_TRUE(Read(",,\n")[0].IsEmpty());
  EXPECT_FALSE(Read(",,x\n")[0].IsEmpty());
}

TEST_F(CsvReaderTest, OfAnEmptyFileHasNoRecords) {
  EXPECT_TRUE(Read("").empty());
  EXPECT_TRUE(Read("\xEF\xBB\xBF\r\n\r\n").empty());
}

TEST_F(CsvReaderTest, ReadsQuotedFields) {
  EXPECT_THAT(Fields("\"a,b\",\"say \"\"hi\"\"\",\"line 1\r\nline 2\"\nx,y,z"),
              ElementsAre(ElementsAre(u"a,b", u"say \"hi\"", u"line 1\r\nline 2"),
                          ElementsAre(u"x", u"y", u"z")));
}

TEST_F(CsvReaderTest, TellsAnEmptyTextFromNoValue) {
  const auto records = Read("\"\",,x\n");
  EXPECT_TRUE(records[0].IsQuoted(0));
  EXPECT_FALSE(records[0].IsQuoted(1));
  EXPECT_FALSE(records[0].IsQuoted(3));
  EXPECT_EQ(records[0].Text(3), u"");
}

TEST_F(CsvReaderTest, TakesAQuotationMarkInsideAFieldAsText) {
  EXPECT_THAT(Fields("5\" disk, \"x\"\n"), ElementsAre(ElementsAre(u"5\" disk", u" \"x\"")));
}

TEST_F(CsvReaderTest, AllowsBlanksBehindAQuotedField) {
  EXPECT_THAT(Fields("\"a\" ,\"b\"  \n"), ElementsAre(ElementsAre(u"a", u"b")));
}

TEST_F(CsvReaderTest, DetectsTheDelimiter) {
  EXPECT_THAT(Fields("a;b,c;d\n"), ElementsAre(ElementsAre(u"a", u"b,c", u"d")));
  EXPECT_THAT(Fields("a\tb\n"), ElementsAre(ElementsAre(u"a", u"b")));
  EXPECT_THAT(Fields("a|b\n"), ElementsAre(ElementsAre(u"a", u"b")));
  EXPECT_THAT(Fields("\n\n\"a,b,c,d\";b;\"x\ny,\"\n1,2,3,4,5\n"),
              ElementsAre(ElementsAre(u"a,b,c,d", u"b", u"x\ny,"), ElementsAre(u"1,2,3,4,5")));
  EXPECT_THAT(Fields("alone\n"), ElementsAre(ElementsAre(u"alone")));
  EXPECT_EQ(Delimiter, u',');
}

TEST_F(CsvReaderTest, ObeysALineThatNamesTheDelimiter) {
  EXPECT_THAT(Fields("sep=;\r\na,b;c\r\n"), ElementsAre(ElementsAre(u"a,b", u"c")));
  EXPECT_THAT(Fields("SEP=^\na^b\n"), ElementsAre(ElementsAre(u"a", u"b")));
  EXPECT_THAT(Fields("sep=;\na,b;c\n", u','), ElementsAre(ElementsAre(u"a", u"b;c")));
  EXPECT_THAT(Fields("sep=x1;b\n"), ElementsAre(ElementsAre(u"sep=x1", u"b")));
  EXPECT_EQ(Read("sep=;\na;b\n")[0].Line, 2);
  for (const char* bytes : {"sep=", "sep=;", "sep=\n", "sep=;\n"}) Read(bytes);
}

TEST_F(CsvReaderTest, UsesTheDelimiterOfTheCaller) {
  EXPECT_THAT(Fields("a;b,c\n", u','), ElementsAre(ElementsAre(u"a;b", u"c")));
  EXPECT_THAT(Fields("a^b\n", u'^'), ElementsAre(ElementsAre(u"a", u"b")));
  EXPECT_THAT(Fields("a b\n", u' '), ElementsAre(ElementsAre(u"a", u"b")));
}

TEST_F(CsvReaderTest, KnowsTheLineOfEachRecord) {
  const auto records = Read("a\n\n\"b\r\nb\rb\nb\"\r\nc\n");
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].Line, 1);
  EXPECT_EQ(records[1].Line, 3);
  EXPECT_EQ(records[2].Line, 7);
}

TEST_F(CsvReaderTest, KeepsTheRecordAsItWasWritten) {
  const auto records = Read("\"a \"\"1\"\"\n\" ,b,\r\nc\"d\n");
  EXPECT_EQ(records[0].Raw, u"\"a \"\"1\"\"\n\" ,b,");
  EXPECT_EQ(records[1].Raw, u"c\"d");
}

TEST_F(CsvReaderTest, ReportsAQuotationMarkThatIsNotClosed) {
  const auto records = Read("a,b\n1,\"2\n3,4\n");
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[1].Line, 2);
  EXPECT_EQ(records[1].Problem, u"A quotation mark is not closed before the end of the file");
  EXPECT_EQ(records[1].Raw, u"1,\"2\n3,4\n");
}

TEST_F(CsvReaderTest, ReportsTextBehindAQuotedField) {
  const auto records = Read("\"a\"b,c\nd,e\n");
  EXPECT_EQ(records[0].Problem, u"Text follows a closing quotation mark");
  EXPECT_THAT(Texts(records[0]), ElementsAre(u"ab", u"c"));
  EXPECT_EQ(records[1].Problem, u"");
}

TEST_F(CsvReaderTest, ReportsTooManyFields) {
  const auto records = Read(std::string(CsvReader::kMostFields, ',') + "\nd,e\n", u',');
  EXPECT_EQ(records[0].Problem, u"The record has too many fields");
  EXPECT_EQ(records[0].Count(), CsvReader::kMostFields);
  EXPECT_EQ(records[1].Problem, u"");
}

TEST_F(CsvReaderTest, ReadsTenMegabytesInOneField) {
  std::string field;
  while (field.size() < 10'000'000) field += "a \"\"word\"\", a line\r\n";
  const auto records = Read("h\n\"" + field + "\"\nnext\n");
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[1].Problem, u"");
  EXPECT_EQ(records[1].Text(0).size(), field.size() / 20 * 18);
  EXPECT_EQ(records[2].Line, 3 + static_cast<std::int64_t>(field.size() / 20));
}

TEST_F(CsvReaderTest, KeepsNoMoreThanItsLimitOfARecord) {
  const auto records = Read("\"" + std::string(CsvReader::kLongest + 10, 'x') + "\"\nd,e\n", u',');
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].Problem, u"The record is too long. A quotation mark may be missing");
  EXPECT_LE(records[0].Raw.size(), CsvReader::kLongest);
  EXPECT_EQ(records[1].Text(1), u"e");
}

TEST_F(CsvReaderTest, ReadsPartsThatEndAnywhere) {
  const std::string rows = "\"a\"\"\r\nb\",c\r\n,\"\"\r\n";
  for (std::size_t shift = 65530 - rows.size(); shift < 65540; ++shift) {
    const auto records = Read(std::string(shift, 'x') + "\n" + rows, u',');
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[1].Text(0), u"a\"\r\nb");
    EXPECT_EQ(records[1].Text(1), u"c");
    EXPECT_EQ(records[2].Line, 4);
    EXPECT_TRUE(records[2].IsQuoted(1));
  }
}

TEST_F(CsvReaderTest, TakesAnyBytes) {
  std::string bytes;
  std::uint32_t state = 1;
  for (int count = 0; count < 200'000; ++count) {
    state = state * 1664525 + 1013904223;
    bytes += (state >> 30) == 0 ? "\",;\n"[state >> 28 & 3] : static_cast<char>(state >> 24);
  }
  EXPECT_GT(Read(bytes).size(), 1U);
}

}  // namespace
}  // namespace ktrv::tool
