#include <gtest/gtest.h>

#include "common/Error.h"
#include "database/Conversion.h"
#include "database/Engines.h"
#include "tests/native/support/FakeDriver.h"

namespace ktrv::database {
namespace {

/// A session that says it is one with Oracle.
class OracleLink final : public Link {
 public:
  explicit OracleLink(tests::FakeDriver& driver) : link_(driver.Open(u"", u"", u"")) {}

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const Parameter> parameters) override {
    return link_->Prepare(text, parameters);
  }
  Engine EngineKind() const override { return Engine::Oracle; }
  std::vector<String> KeyColumns(StringView table) override { return link_->KeyColumns(table); }
  bool TellsInsertedId(StringView table, StringView column) override {
    return CanReadLastInsertedId(*this, table, column);
  }
  std::int64_t LastInsertedId(StringView table, StringView column) override {
    return ReadLastInsertedId(*this, table, column, u"Test");
  }
  bool Begin() override { return link_->Begin(); }
  void Commit() override { link_->Commit(); }
  void RollBack() override { link_->RollBack(); }

 private:
  std::unique_ptr<Link> link_;
};

struct LastInsertedIdTest : testing::Test {
  LastInsertedIdTest() {
    driver.Answer(u"SELECT SEQUENCE_NAME FROM USER_TAB_IDENTITY_COLS", {{u"SEQUENCE_NAME"}},
                  {{u"ISEQ$$_1"}});
  }
  void SequenceTells(DataType type, StringView cell) {
    driver.Answer(u"SELECT \"ISEQ$$_1\".CURRVAL FROM DUAL", {{u"CURRVAL", type}}, {{String(cell)}});
  }
  std::int64_t Id() { return OracleLink(driver).LastInsertedId(u"T", u"ID"); }

  tests::FakeDriver driver;
};

TEST_F(LastInsertedIdTest, MayComeAsAFraction) {
  SequenceTells(DataType::Double, *CellTextOf(100000.0));
  EXPECT_EQ(Id(), 100000);
  SequenceTells(DataType::Double, u"2e+05");
  EXPECT_EQ(Id(), 200000);
}

TEST_F(LastInsertedIdTest, MayComeAsAText) {
  SequenceTells(DataType::VarChar, u"100000");
  EXPECT_EQ(Id(), 100000);
}

TEST_F(LastInsertedIdTest, ThatIsNoNumberIsTheDriversFailure) {
  SequenceTells(DataType::VarChar, u"none");
  try {
    Id();
    FAIL() << "it was taken for an id";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::DriverFailure);
    EXPECT_EQ(error.Source(), u"Test");
  }
}

}  // namespace
}  // namespace ktrv::database
