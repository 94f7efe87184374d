#include <thread>

#include "database/Transaction.h"
#include "tests/line/FaultFixture.h"
#include "tests/line/OwnServer.h"

namespace ktrv::tests {
namespace {

/// Sessions that the server ends between two uses, as when it is restarted. Nothing hangs, so the
/// limits are longer than the machine may be slow.
class EndedSessionsTest : public FaultFixture {
 protected:
  EndedSessionsTest() : FaultFixture({}, std::chrono::seconds(15)) {}
};

TEST_P(EndedSessionsTest, AUserWhoThoughtMeanwhileNoticesNothing) {
  Prepare();
  book.Database.EndSessions();
  Think();
  Suffer();
  if (!WasConfirmed()) Complain("it was refused: " + host->Log());
  Recover();
  Judge("all sessions ended", true);
  Report("ended sessions");
}

TEST_P(EndedSessionsTest, AUserWhoDidNotLosesNothing) {
  Prepare();
  book.Database.EndSessions();
  Suffer();
  Recover();
  Judge("all sessions ended at once", true);
  Report("ended sessions at once");
}

INSTANTIATE_TEST_SUITE_P(, EndedSessionsTest, EachTask(), NameOfTask);

/// Tables that somebody else holds.
class LockedTablesTest : public FaultFixture {};

TEST_P(LockedTablesTest, TheUserIsToldInTimeAndGoesOnLater) {
  Prepare();
  {
    database::Connection other(book.Database.Surroundings());
    other.Open(book.Database.ConnectionString());
    database::Transaction transaction(other);
    other.Execute(Kind() == ServerKind::MariaDb
                      ? u"LOCK TABLES SMS_ABCONTACTS WRITE, SMS_ABGROUPMAPS WRITE"
                      : u"LOCK TABLE SMS_ABCONTACTS, SMS_ABGROUPMAPS IN ACCESS EXCLUSIVE MODE");
    Suffer();
    if (WasConfirmed()) Complain("it was done in spite of the lock");
  }
  Recover();
  Judge("locked tables", true);
  Report("locked tables");
}

INSTANTIATE_TEST_SUITE_P(, LockedTablesTest, EachTask(), NameOfTask);

struct OnOwnServer {
  const OwnServer server{std::get<0>(FaultFixture::GetParam())};
};

/// A server that hangs, and goes on with what it was told.
class PausedServerTest : protected OnOwnServer, public FaultFixture {
 protected:
  PausedServerTest() : FaultFixture(server.Port()) {}
  ~PausedServerTest() override { server.Resume(); }
};

TEST_P(PausedServerTest, TheUserIsToldInTimeAndGoesOnLater) {
  Prepare();
  server.Pause();
  Suffer();
  if (WasConfirmed()) Complain("it was done without a server");
  server.Resume();
  Recover();
  Judge("paused server", true);
  Report("paused server");
}

TEST_P(PausedServerTest, InTheMidstOfTheTask) {
  constexpr int kMost = 32;
  for (int delay = TriesAllFaults() ? 1 : kMost; delay <= kMost; delay *= 2) {
    Prepare();
    std::thread pausing([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(delay / 4));
      server.Pause();
    });
    Suffer();
    pausing.join();
    server.Resume();
    Recover();
    Judge("paused server after " + std::to_string(delay / 4) + " ms", !WasConfirmed());
  }
}

INSTANTIATE_TEST_SUITE_P(, PausedServerTest, EachTask(), NameOfTask);

}  // namespace
}  // namespace ktrv::tests
