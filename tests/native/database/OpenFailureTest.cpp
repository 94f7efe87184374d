#include <gtest/gtest.h>

#include "database/Connection.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::database {
namespace {

TEST(OpenFailureTest, NoPasswordIsInTheFailureOfAnOpen) {
  tests::FakeDriver driver;
  tests::TestDispatcher dispatcher;
  const Environment environment{[&](StringView) -> Driver& { return driver; }, dispatcher.Post()};
  driver.FailOpen(Error(ErrorNumber::LoginFailed, u"no user sms/s3cret, nor with 'given'",
                        u"driver of PWD=s3cret", 87));
  Connection connection(environment);
  try {
    connection.Open(u"DSN=Book;UID=sms;PWD={s3cret}", u"sms", u"given");
    FAIL() << "it opened";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::LoginFailed);
    EXPECT_EQ(error.Description(), u"no user sms/***, nor with '***'");
    EXPECT_EQ(error.Source(), u"driver of PWD=***");
    EXPECT_EQ(error.LastSystemError(), 87U);
  }
}

}  // namespace
}  // namespace ktrv::database
