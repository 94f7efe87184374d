#include "database/ado/Value.h"

#include <cmath>
#include <gtest/gtest.h>

#include "common/Error.h"
#include "database/ado/OleDate.h"

namespace ktrv::tests {
namespace {

using database::ado::CellTextOf;
using database::ado::FromOleDate;
using database::ado::ToOleDate;
using database::ado::Value;

template <class Set>
std::optional<String> TextOf(VARTYPE type, Set&& set) {
  Value value;
  set(value.Raw());
  V_VT(&value.Raw()) = type;  // last: a decimal fills the whole of the variant
  return CellTextOf(value.Raw());
}

TEST(AdoValueTest, NullAndEmptyAreNull) {
  EXPECT_EQ(TextOf(VT_NULL, [](VARIANT&) {}), std::nullopt);
  EXPECT_EQ(TextOf(VT_EMPTY, [](VARIANT&) {}), std::nullopt);
}

TEST(AdoValueTest, WholeNumbersOfEveryWidthKeepTheirEnds) {
  EXPECT_EQ(TextOf(VT_I1, [](VARIANT& raw) { V_I1(&raw) = -128; }), u"-128");
  EXPECT_EQ(TextOf(VT_UI1, [](VARIANT& raw) { V_UI1(&raw) = 255; }), u"255");
  EXPECT_EQ(TextOf(VT_I2, [](VARIANT& raw) { V_I2(&raw) = -32768; }), u"-32768");
  EXPECT_EQ(TextOf(VT_UI2, [](VARIANT& raw) { V_UI2(&raw) = 65535; }), u"65535");
  EXPECT_EQ(TextOf(VT_I4, [](VARIANT& raw) { V_I4(&raw) = LONG_MIN; }), u"-2147483648");
  EXPECT_EQ(TextOf(VT_UI4, [](VARIANT& raw) { V_UI4(&raw) = ULONG_MAX; }), u"4294967295");
  EXPECT_EQ(TextOf(VT_I8, [](VARIANT& raw) { V_I8(&raw) = LLONG_MIN; }), u"-9223372036854775808");
  EXPECT_EQ(TextOf(VT_UI8, [](VARIANT& raw) { V_UI8(&raw) = ULLONG_MAX; }),
            u"18446744073709551615");
}

TEST(AdoValueTest, FractionsHaveTheFewestDigitsThatMeanThem) {
  EXPECT_EQ(TextOf(VT_R4, [](VARIANT& raw) { V_R4(&raw) = 0.1f; }), u"0.1");
  EXPECT_EQ(TextOf(VT_R8, [](VARIANT& raw) { V_R8(&raw) = 0.1 + 0.2; }), u"0.30000000000000004");
}

TEST(AdoValueTest, TruthIsANumber) {
  EXPECT_EQ(TextOf(VT_BOOL, [](VARIANT& raw) { V_BOOL(&raw) = VARIANT_TRUE; }), u"1");
  EXPECT_EQ(TextOf(VT_BOOL, [](VARIANT& raw) { V_BOOL(&raw) = VARIANT_FALSE; }), u"0");
}

TEST(AdoValueTest, CurrencyHasNoIdleZeros) {
  const auto text = [](std::int64_t amount) {
    return TextOf(VT_CY, [&](VARIANT& raw) { V_CY(&raw).int64 = amount; });
  };
  EXPECT_EQ(text(0), u"0");
  EXPECT_EQ(text(125000), u"12.5");
  EXPECT_EQ(text(-1), u"-0.0001");
  EXPECT_EQ(text(1000000), u"100");
  EXPECT_EQ(text(LLONG_MIN), u"-922337203685477.5808");
}

TEST(AdoValueTest, DecimalKeepsAllItsDigits) {
  const auto text = [](ULONG high, ULONGLONG low, BYTE scale, BYTE sign) {
    return TextOf(VT_DECIMAL, [&](VARIANT& raw) {
      V_DECIMAL(&raw).Hi32 = high;
      V_DECIMAL(&raw).Lo64 = low;
      V_DECIMAL(&raw).scale = scale;
      V_DECIMAL(&raw).sign = sign;
    });
  };
  EXPECT_EQ(text(0, 0, 0, 0), u"0");
  EXPECT_EQ(text(0, 1250, 2, 0), u"12.50");
  EXPECT_EQ(text(0, 5, 3, DECIMAL_NEG), u"-0.005");
  EXPECT_EQ(text(ULONG_MAX, ULLONG_MAX, 0, 0), u"79228162514264337593543950335");
  EXPECT_EQ(text(ULONG_MAX, ULLONG_MAX, 28, DECIMAL_NEG), u"-7.9228162514264337593543950335");
}

TEST(AdoValueTest, TextKeepsItsZeros) {
  const String text(u"a\0b", 3);
  const Value value{StringView(text)};
  EXPECT_EQ(value.Text(), text);
  EXPECT_EQ(CellTextOf(value.Raw()), text);
}

TEST(AdoValueTest, TextWithoutABufferIsEmpty) {
  EXPECT_EQ(TextOf(VT_BSTR, [](VARIANT& raw) { V_BSTR(&raw) = nullptr; }), u"");
}

TEST(AdoValueTest, BytesAreHexadecimal) {
  Value value;
  SAFEARRAY* const bytes = SafeArrayCreateVector(VT_UI1, 0, 3);
  for (LONG place = 0; place < 3; ++place) {
    BYTE byte = static_cast<BYTE>(place * 127);
    SafeArrayPutElement(bytes, &place, &byte);
  }
  V_VT(&value.Raw()) = VT_ARRAY | VT_UI1;
  V_ARRAY(&value.Raw()) = bytes;
  EXPECT_EQ(CellTextOf(value.Raw()), u"007FFE");
}

TEST(AdoValueTest, ObjectIsNoCell) {
  EXPECT_THROW(TextOf(VT_DISPATCH, [](VARIANT& raw) { V_DISPATCH(&raw) = nullptr; }), Error);
}

TEST(AdoValueTest, NumberOfMoreThanFourBytesIsPassedWhole) {
  const Value value(Variant(std::int64_t{1} << 40));
  EXPECT_EQ(V_VT(&value.Raw()), VT_I8);
  EXPECT_EQ(V_I8(&value.Raw()), std::int64_t{1} << 40);
  const Value small(Variant(std::int64_t{-5}));
  EXPECT_EQ(V_VT(&small.Raw()), VT_I4);
  EXPECT_EQ(V_I4(&small.Raw()), -5);
}

TEST(OleDateTest, DatesOnBothSidesOfDayZeroComeBackToTheMillisecond) {
  for (const char16_t* text :
       {u"0100-01-01 00:00:00", u"1582-10-15 23:59:59.999", u"1899-12-29 06:00:00",
        u"1899-12-30 00:00:00", u"1899-12-30 06:00:00.001", u"1900-03-01 00:00:00",
        u"2024-02-29 23:59:59.999", u"9999-12-31 23:59:59.999"}) {
    const DateTime moment = *ParseDateTime(text);
    EXPECT_EQ(FromOleDate(ToOleDate(moment)), moment) << ToUtf8(text);
  }
}

TEST(OleDateTest, DatesAreTheSystems) {
  EXPECT_EQ(ToOleDate(*ParseDateTime(u"1899-12-31")), 1.0);
  EXPECT_EQ(ToOleDate(*ParseDateTime(u"1899-12-29 06:00:00")), -1.25);
  SYSTEMTIME time = {};
  time.wYear = 2026;
  time.wMonth = 11;
  time.wDay = 21;
  time.wHour = 18;
  double systems = 0;
  ASSERT_TRUE(SystemTimeToVariantTime(&time, &systems));
  EXPECT_EQ(ToOleDate(*ParseDateTime(u"2026-11-21 18:00:00")), systems);
}

TEST(OleDateTest, DatesThatAutomationDoesNotKnowAreRefused) {
  const auto number = [](auto&& action) {
    try {
      action();
    } catch (const Error& error) {
      return error.Number();
    }
    return 0;
  };
  EXPECT_EQ(number([] { ToOleDate(*ParseDateTime(u"0099-12-31 23:59:59")); }),
            ErrorNumber::DataConversion);
  for (const double date : {-657435.0, 2958466.0, 1e300, -1e300, std::nan("")}) {
    EXPECT_EQ(number([&] { FromOleDate(date); }), ErrorNumber::DataConversion) << date;
  }
}

TEST(OleDateTest, RoundingIntoTheNextDayIsTheNextDay) {
  EXPECT_EQ(FromOleDate(1.9999999999), *ParseDateTime(u"1900-01-01 00:00:00"));
}

}  // namespace
}  // namespace ktrv::tests
