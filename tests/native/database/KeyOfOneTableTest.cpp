#include "database/KeyOfOneTable.h"

#include <gtest/gtest.h>

namespace ktrv::database {
namespace {

using Names = std::vector<String>;

const std::vector<KeyLine> kTwoSchemas = {
    {u"BOOK", u"archive", u"YEAR"}, {u"BOOK", u"archive", u"ID"}, {u"BOOK", u"dbo", u"CODE"}};

TEST(KeyOfOneTable, IsThatOfTheFirstSchemaThatIsListed) {
  EXPECT_EQ(KeyOfOneTable(kTwoSchemas, u"T"), (Names{u"YEAR", u"ID"}));
}

TEST(KeyOfOneTable, IsThatOfTheSchemaInTheTablesName) {
  EXPECT_EQ(KeyOfOneTable(kTwoSchemas, u"DBO.T"), Names{u"CODE"});
  EXPECT_EQ(KeyOfOneTable(kTwoSchemas, u"Book.dbo.T"), Names{u"CODE"});
}

TEST(KeyOfOneTable, IsThatOfTheCatalogueInTheTablesNameWithoutSchemas) {
  const std::vector<KeyLine> lines = {{u"old", u"", u"ID"}, {u"book", u"", u"CODE"}};
  EXPECT_EQ(KeyOfOneTable(lines, u"book.T"), Names{u"CODE"});
}

TEST(KeyOfOneTable, IsTheFirstWhereTheSchemaIsNotListed) {
  EXPECT_EQ(KeyOfOneTable({{u"", u"", u"ID"}}, u"main.T"), Names{u"ID"});
}

TEST(KeyOfOneTable, OfATableWithoutAKeyIsEmpty) {
  EXPECT_EQ(KeyOfOneTable({}, u"T"), Names{});
}

}  // namespace
}  // namespace ktrv::database
