#include "tool/import/Cleaning.h"

#include <gtest/gtest.h>

namespace ktrv::tool {
namespace {

using data::ContactText;

RawContact Anna() {
  RawContact raw;
  raw[FieldOf(ContactText::FirstName)] = u"Anna";
  raw[FieldOf(ContactText::MobileNo)] = u"98001";
  return raw;
}

String RefusalOf(Field field, String text) {
  RawContact raw = Anna();
  raw[field] = std::move(text);
  return CheckContact(raw, DateOrder::MonthFirst).Refusal;
}

TEST(CleaningTest, LeavesDigitsOfANumber) {
  EXPECT_EQ(CleanNumber(u"+46 (0)70-174.06/11"), u"46701740611");
  EXPECT_EQ(CleanNumber(u"0171\u00A01234"), u"01711234");
  EXPECT_EQ(CleanNumber(u"'0171"), u"0171");
  EXPECT_EQ(CleanNumber(u"4.9171E+11"), u"4.9171E+11");
  EXPECT_EQ(CleanNumber(u"555 x12"), u"555 x12");
  EXPECT_EQ(CleanNumber(u""), u"");
}

TEST(CleaningTest, RefusesWhatTheContactEditorRefuses) {
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::FirstName), u"  "), u"Please enter the First Name.");
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::MobileNo), u""), u"Please enter the Mobile No.");
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::MobileNo), u"000"),
            u"Enter a proper Mobile No. \"000\"");
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::MobileNo), u"98001x1"),
            u"Enter a proper Mobile No. \"98001x1\"");
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::Email), u"nobody"),
            u"Enter a valid Email Id \"nobody\"");
  EXPECT_EQ(RefusalOf(Field::Age, u"old"),
            u"The age \"old\" is not a number of up to three digits");
  EXPECT_EQ(RefusalOf(Field::Age, u"1000"),
            u"The age \"1000\" is not a number of up to three digits");
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::City), String(51, u'x')),
            u"City has 51 characters; at most 50 are allowed");
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::City), String(50, u'x')), u"");
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::City), String(1, u'\0')), u"City has a zero character");
  EXPECT_EQ(RefusalOf(FieldOf(ContactText::City), String(1, char16_t{0xDCFC})),
            u"City has characters that are not valid in the encoding of the file");
  EXPECT_EQ(RefusalOf(Field::Birthday, u"31.2.1990"), u"The birthday \"31.2.1990\" is no date");
  EXPECT_EQ(RefusalOf(Field::Birthday, u"17/5/1990"),
            u"The birthday \"17/5/1990\" is no date (month/day/year; see --dates)");
}

TEST(CleaningTest, ShortensALongNumberOfAnotherKind) {
  RawContact raw = Anna();
  raw[FieldOf(ContactText::HomePhone)] = u"+49 (0) 221 / 123 456 - 0";
  raw[FieldOf(ContactText::Fax)] = u"08-465 00 12";
  const CheckedContact checked = CheckContact(raw, DateOrder::MonthFirst);
  EXPECT_EQ(checked.Refusal, u"");
  EXPECT_EQ(checked.Cleaned.Text(ContactText::HomePhone), u"492211234560");
  EXPECT_EQ(checked.Cleaned.Text(ContactText::Fax), u"08-465 00 12");
}

TEST(CleaningTest, StoresEmptyTextsAsTheEditorDoes) {
  const CheckedContact checked = CheckContact(Anna(), DateOrder::MonthFirst);
  EXPECT_EQ(checked.Cleaned.Texts[static_cast<std::size_t>(ContactText::City)], u"");
  EXPECT_FALSE(checked.Cleaned.Age);
  EXPECT_FALSE(checked.Cleaned.Sex);
}

/// Spreadsheets make them of our export's.
TEST(CleaningTest, RefusesANumberWithLettersInOurExport) {
  RawContact raw = Anna();
  raw.IsOwn = true;
  raw[FieldOf(ContactText::MobileNo)] = u"4.67017E+10";
  EXPECT_EQ(CheckContact(raw, DateOrder::MonthFirst).Refusal,
            u"Enter a proper Mobile No. \"4.67017E+10\"");
}

TEST(CleaningTest, KeepsValuesOfOurExport) {
  RawContact raw = Anna();
  raw.IsOwn = true;
  raw[FieldOf(ContactText::MobileNo)] = u" +98 001 ";
  raw[FieldOf(ContactText::LastName)] = u" two ";
  const CheckedContact checked = CheckContact(raw, DateOrder::MonthFirst);
  EXPECT_EQ(checked.Refusal, u"");
  EXPECT_EQ(checked.Cleaned.Text(ContactText::LastName), u" two ");
  EXPECT_EQ(checked.Cleaned.Text(ContactText::MobileNo), u" +98 001 ");
  EXPECT_FALSE(checked.Cleaned.Texts[static_cast<std::size_t>(ContactText::City)]);
}

/// Apple and Android write the year 1604 for no year; some databases have none before 1753.
TEST(CleaningTest, LeavesOutDatesOfYearsThatCannotBeMeant) {
  const auto noteOf = [](String birthday) {
    RawContact raw = Anna();
    raw[Field::Birthday] = std::move(birthday);
    const CheckedContact checked = CheckContact(raw, DateOrder::MonthFirst);
    EXPECT_EQ(checked.Refusal, u"");
    EXPECT_EQ(checked.Cleaned.Birthday.has_value(), checked.Notes.empty());
    return checked.Notes.empty() ? String() : checked.Notes.front();
  };
  EXPECT_EQ(noteOf(u"1604-05-09"), u"The birthday \"1604-05-09\" has no year and is left out");
  EXPECT_EQ(noteOf(u"16040229"), u"The birthday \"16040229\" has no year and is left out");
  EXPECT_EQ(noteOf(u"1752-12-31"), u"The birthday \"1752-12-31\" is before 1753 and is left out");
  EXPECT_EQ(noteOf(u"1753-01-01"), u"");
}

TEST(CleaningTest, KeepsOldDatesOfOurExport) {
  RawContact raw = Anna();
  raw.IsOwn = true;
  raw[Field::Birthday] = u"1604-05-09";
  const CheckedContact checked = CheckContact(raw, DateOrder::MonthFirst);
  EXPECT_TRUE(checked.Cleaned.Birthday);
  EXPECT_TRUE(checked.Notes.empty());
}

TEST(CleaningTest, ParsesDates) {
  const auto parsed = [](StringView text, DateOrder order = DateOrder::MonthFirst) {
    const auto date = ParseDate(text, order);
    return date ? ToText(*date) : String(u"none");
  };
  for (const StringView text : {u"1985-05-17", u"19850517", u"1985/5/17", u"17.5.1985",
                                u"5/17/1985", u"1985-05-17T14:00:00Z", u" 1985-05-17 14:00 "}) {
    EXPECT_EQ(parsed(text), u"1985-05-17") << ToUtf8(text);
  }
  EXPECT_EQ(parsed(u"4/5/1985"), u"1985-04-05");
  EXPECT_EQ(parsed(u"4/5/1985", DateOrder::DayFirst), u"1985-05-04");
  for (const StringView text : {u"", u"17", u"5/17/85", u"1985-13-01", u"1985-02-30", u"0000-01-01",
                                u"1985-05", u"a.b.c", u"99999999999999999999-1-1", u"--05-17"}) {
    EXPECT_EQ(parsed(text), u"none") << ToUtf8(text);
  }
}

}  // namespace
}  // namespace ktrv::tool
