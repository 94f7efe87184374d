#include "database/Transaction.h"

#include <gtest/gtest.h>

#include "common/Error.h"
#include "database/Command.h"
#include "tests/native/support/FakeDriver.h"

namespace ktrv::database {
namespace {

class TransactionTest : public testing::Test {
 protected:
  TransactionTest() {
    driver.Changes(u"INSERT", 1);
    connection.Open(u"x");
  }

  using Steps = std::vector<String>;

  tests::FakeDriver driver;
  Environment environment{[this](StringView) -> Driver& { return driver; }, [](const auto&) {}};
  Connection connection{environment};
};

TEST_F(TransactionTest, ThatIsLeftIsUndone) {
  { const Transaction transaction(connection); }
  EXPECT_EQ(driver.Transactions(), (Steps{u"begin", u"roll back"}));
}

TEST_F(TransactionTest, ThatIsCommittedIsNotUndone) {
  {
    Transaction transaction(connection);
    transaction.Commit();
    EXPECT_FALSE(transaction.RollBack()) << "what is stored was taken for undone";
  }
  EXPECT_EQ(driver.Transactions(), (Steps{u"begin", u"commit"}));
}

TEST_F(TransactionTest, WithinAnotherLeavesTheEndToThat) {
  Transaction outer(connection);
  {
    Transaction inner(connection);
    inner.Commit();
  }
  { const Transaction left(connection); }
  EXPECT_EQ(driver.Transactions(), (Steps{u"begin"}));
  EXPECT_TRUE(outer.RollBack());
}

TEST_F(TransactionTest, OfAnEngineWithoutThemIsNeverSurelyUndone) {
  driver.HaveNoTransactions();
  Transaction transaction(connection);
  EXPECT_FALSE(transaction.RollBack());
  EXPECT_EQ(driver.Transactions(), Steps{});
}

TEST_F(TransactionTest, WhoseCommitFailsIsInDoubtAndItsLinkIsNotUsedAgain) {
  Transaction transaction(connection);
  driver.FailCommit(Error(ErrorNumber::DriverFailure, u"lost"));
  EXPECT_THROW(transaction.Commit(), Error);
  EXPECT_FALSE(transaction.RollBack());
  connection.Execute(u"INSERT");
  EXPECT_EQ(driver.Opened().size(), 2u) << "a statement ran within the former transaction";
}

TEST_F(TransactionTest, ThatCannotBeUndoneLeavesALinkThatIsNotUsedAgain) {
  driver.FailRollBack(Error(ErrorNumber::DriverFailure, u"lost"));
  {
    Transaction transaction(connection);
    EXPECT_FALSE(transaction.RollBack());
  }
  connection.Execute(u"INSERT");
  EXPECT_EQ(driver.Opened().size(), 2u);
}

TEST_F(TransactionTest, KeepsItsLinkEvenWhenAStatementFailed) {
  Transaction transaction(connection);
  const auto link = connection.LiveLink();
  driver.Fail(u"UPDATE", Error(ErrorNumber::DriverFailure, u"refused"));
  EXPECT_THROW(connection.Execute(u"UPDATE"), Error);
  EXPECT_EQ(connection.LiveLink(), link);
}

}  // namespace
}  // namespace ktrv::database
