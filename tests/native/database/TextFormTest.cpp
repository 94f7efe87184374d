#include "database/odbc/TextForm.h"

#include <gtest/gtest.h>

namespace ktrv::database::odbc {
namespace {

const Parameter kNarrow{u"NAME", DataType::VarChar, 50};
const Parameter kWide{u"NAME", DataType::VarWChar, 50};

TEST(TextForm, TextOutsideTheCodePageIsNotBoundNarrow) {
  EXPECT_EQ(TextForm::Of(kNarrow, u"नाम").InDatabase, SQL_WVARCHAR);
  EXPECT_EQ(TextForm::Of(kNarrow, u"Zoë").InDatabase, SQL_WVARCHAR);
  EXPECT_EQ(TextForm::Of(kNarrow, String(5000, u'Ω')).InDatabase, SQL_WLONGVARCHAR);
}

TEST(TextForm, TextThatEveryCodePageHasStaysNarrow) {
  EXPECT_EQ(TextForm::Of(kNarrow, u"").InDatabase, SQL_VARCHAR);
  EXPECT_EQ(TextForm::Of(kNarrow, u"Ann~\x7F").InDatabase, SQL_VARCHAR);
  EXPECT_EQ(TextForm::Of(kNarrow, String(5000, u'a')).InDatabase, SQL_LONGVARCHAR);
}

TEST(TextForm, WideParameterIsNeverNarrow) {
  EXPECT_EQ(TextForm::Of(kWide, u"Ann").InDatabase, SQL_WVARCHAR);
}

TEST(TextForm, SizeIsTheParametersUnlessTheTextIsLonger) {
  EXPECT_EQ(TextForm::Of(kNarrow, u"Ann").Size, 50u);
  EXPECT_EQ(TextForm::Of(kNarrow, String(51, u'a')).Size, 51u);
  EXPECT_EQ(TextForm::Of({u"NOTE", DataType::VarWChar, 0}, u"").Size, 1u);
}

TEST(TextForm, WideTextAmongNarrowOnesIsNotBoundNarrow) {
  const std::vector<String> texts = {u"Ann", u"नाम", String(60, u'a')};
  EXPECT_EQ(TextForm::OfAll(kNarrow, texts).InDatabase, SQL_WVARCHAR);
  EXPECT_EQ(TextForm::OfAll(kNarrow, texts).Size, 60u);
}

TEST(TextForm, LongTextAmongShortOnesIsNotBoundLimited) {
  const std::vector<String> texts = {String(5000, u'a'), u"Ann"};
  EXPECT_EQ(TextForm::OfAll(kNarrow, texts).InDatabase, SQL_LONGVARCHAR);
  EXPECT_EQ(TextForm::OfAll(kWide, texts).InDatabase, SQL_WLONGVARCHAR);
}

TEST(TextForm, NarrowTextsStayNarrow) {
  const std::vector<String> texts = {u"Ann", u"Bob"};
  EXPECT_EQ(TextForm::OfAll(kNarrow, texts).InDatabase, SQL_VARCHAR);
  EXPECT_EQ(TextForm::OfAll(kNarrow, texts).Size, 50u);
}

}  // namespace
}  // namespace ktrv::database::odbc
