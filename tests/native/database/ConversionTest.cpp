#include "database/Conversion.h"

#include <gtest/gtest.h>

#include "common/Error.h"

namespace ktrv::database {
namespace {

TEST(CellValue, ReadsTheTextAsItsColumnsType) {
  EXPECT_EQ(CellValue(DataType::Integer, u"-7"), Variant(std::int64_t{-7}));
  EXPECT_EQ(CellValue(DataType::Double, u"1.0e+300"), Variant(1e300));
  EXPECT_EQ(CellValue(DataType::Boolean, u"1"), Variant(true));
  EXPECT_EQ(CellValue(DataType::Boolean, u"f"), Variant(false));
  EXPECT_EQ(CellValue(DataType::Date, u"1980-05-01"), Variant(*ParseDateTime(u"1980-05-01")));
  EXPECT_EQ(CellValue(DataType::VarChar, u"7"), Variant(String(u"7")));
}

TEST(CellValue, TextThatDoesNotReadAsTheTypeComesAsText) {
  for (const DataType type :
       {DataType::Integer, DataType::Double, DataType::Boolean, DataType::Date}) {
    EXPECT_EQ(CellValue(type, u"C-17"), Variant(String(u"C-17")));
  }
}

TEST(CellValue, NullIsNullInEveryType) {
  EXPECT_EQ(CellValue(DataType::Integer, std::nullopt), Variant(Null{}));
}

TEST(CellTextOf, GivesWhatCellValueReadsAgain) {
  const DateTime moment = *ParseDateTime(u"2024-12-31 00:00:00.007");
  EXPECT_EQ(CellTextOf(moment), u"2024-12-31 00:00:00.007");
  EXPECT_EQ(CellValue(DataType::Date, *CellTextOf(moment)), Variant(moment));
  const double third = 1.0 / 3;
  EXPECT_EQ(CellValue(DataType::Double, *CellTextOf(third)), Variant(third));
  EXPECT_EQ(CellTextOf(true), u"1");
  EXPECT_EQ(CellTextOf(Null{}), std::nullopt);
}

TEST(ConvertTo, TakesWhatReadsAsTheType) {
  EXPECT_EQ(ConvertTo(DataType::Integer, String(u" 12 ")), Variant(std::int64_t{12}));
  EXPECT_EQ(ConvertTo(DataType::Double, std::int64_t{3}), Variant(3.0));
  EXPECT_EQ(ConvertTo(DataType::VarWChar, std::int64_t{3}), Variant(String(u"3")));
  EXPECT_EQ(ConvertTo(DataType::Date, String(u"1980-05-01")),
            Variant(*ParseDateTime(u"1980-05-01")));
  EXPECT_EQ(ConvertTo(DataType::Integer, Null{}), Variant(Null{}));
}

TEST(ConvertTo, RefusesWhatDoesNot) {
  const auto fails = [](DataType type, const Variant& value, std::int64_t size, bool narrow) {
    try {
      ConvertTo(type, value, size, narrow);
      return false;
    } catch (const Error& error) {
      return error.Number() == ErrorNumber::DataConversion;
    }
  };
  EXPECT_TRUE(fails(DataType::Integer, String(u"abc"), 0, false));
  EXPECT_TRUE(fails(DataType::Integer, std::int64_t{1} << 31, 0, true));
  EXPECT_FALSE(fails(DataType::Integer, std::int64_t{1} << 31, 0, false));
  EXPECT_TRUE(fails(DataType::Integer, 1e30, 0, false));
  EXPECT_TRUE(fails(DataType::VarChar, String(u"abcd"), 3, false));
  EXPECT_TRUE(fails(DataType::Date, String(u"tomorrow"), 0, false));
}

}  // namespace
}  // namespace ktrv::database
