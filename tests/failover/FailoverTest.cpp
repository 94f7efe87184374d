#include <algorithm>
#include <gmock/gmock.h>
#include <map>
#include <optional>
#include <thread>

#include "common/Error.h"
#include "data/AddressBookQueries.h"
#include "data/ContactQueries.h"
#include "database/Recordset.h"
#include "database/odbc/OdbcDriver.h"
#include "tests/failover/Pair.h"
#include "tests/native/support/SchemaScript.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::tests {
namespace {

using database::Connection;
using database::EventStatus;
using database::Recordset;

/// Longer than statements of one task are apart: all of the loss may take less than that.
constexpr std::chrono::milliseconds kThinking{500};

const String kFirstOfIdle = u"First of the idle user";
const String kSecondOfIdle = u"Second of the idle user";

/// What users saw of the loss of the server that they all worked with. Each attempt to save has a
/// token of its own, which is the name of the contact that it makes; nothing in the table keeps a
/// token from standing there twice.
struct Disaster {
  std::map<String, int> Confirmed;  ///< how often each token's saving was confirmed, to any user
  std::vector<String> Contacts;     ///< the contacts that users wanted, each saved until confirmed
  std::map<String, int> Confirmations;  ///< of each contact
  int SavedBefore = 0;
  int SavedAfter = 0;
  std::vector<String> Refused;    ///< tokens whose saving failed
  std::optional<Error> IdleUser;  ///< the failure of one who thought meanwhile, and then saved
  EventStatus Load = EventStatus::Ok;
  std::int64_t RowsOfNextLoad = -1;
  std::map<String, int> Found;             ///< how often the other server has each token afterwards
  std::map<String, int> FoundAfterFaults;  ///< and when one was dropped there, and one doubled
};

// The attempts of one user, without any that was refused so early.
const String kDropped = u"Contact 3/4";
const String kDoubled = u"Contact 5/6";

int CountOf(const std::map<String, int>& counts, const String& token) {
  const auto count = counts.find(token);
  return count == counts.end() ? 0 : count->second;
}

/// How often each token is there.
std::map<String, int> Count(const database::Environment& environment,
                            const String& connectionString) {
  std::map<String, int> counts;
  Recordset contacts(environment);
  contacts.Open(u"SELECT FNAME FROM SMS_ABCONTACTS", connectionString);
  for (; !contacts.EndOfFile(); contacts.MoveNext()) ++counts[ToText(contacts.Field(u"FNAME"))];
  return counts;
}

/// The confirmed tokens that are not there just once.
std::vector<String> LostOrTwice(const Disaster& disaster, const std::map<String, int>& found) {
  std::vector<String> tokens;
  for (const auto& [token, times] : disaster.Confirmed) {
    if (CountOf(found, token) != 1) tokens.push_back(token);
  }
  return tokens;
}

/// One who saves contacts, as the contact editor does, on a connection that stays open.
class User {
 public:
  User(const database::Environment& environment, StringView connectionString)
      : environment_(environment), connection_(environment) {
    connection_.Open(connectionString);
  }
  /// One attempt. \throws Error
  void Save(const String& contact, Disaster& disaster) {
    const String token = contact + u"/" + ToDecimal(++attempts_);
    try {
      Recordset row(environment_);
      row.Location = database::CursorLocation::Client;
      row.Open(data::ContactQueries::kNone, connection_,
               {.Cursor = database::CursorType::Dynamic, .Lock = database::LockType::Optimistic});
      row.AddNew();
      row.SetField(u"FOLDER_ID", std::int64_t{0});
      row.SetField(u"FNAME", token);
      row.SetField(u"MOBILENO", String(u"91"));
      row.Update();
    } catch (const Error&) {
      disaster.Refused.push_back(token);
      throw;
    }
    ++disaster.Confirmed[token];
    ++disaster.Confirmations[contact];
  }

 private:
  database::Environment environment_;
  Connection connection_;
  int attempts_ = 0;
};

void MakeAddressBook(const Pair& pair, PairKind kind, const database::Environment& environment) {
  const bool galera = kind == PairKind::Galera;
  Connection connection(environment);
  connection.Open(pair.ConnectionString(galera ? u"mysql" : u"postgres"));
  connection.Execute(u"CREATE DATABASE book");
  connection.Close();
  connection.Open(pair.ConnectionString(u"book"));
  RunSchemaScript(connection, galera ? "mysql.sql" : "postgresql.sql");
  RunSchemaScript(connection, galera ? "mysql-host.sql" : "postgresql-host.sql");
}

/// Saves contact after contact while the server is lost, each until it is confirmed, until enough
/// were saved on the other one.
void SaveThroughIt(Pair& pair, User& user, Disaster& disaster) {
  constexpr int kBefore = 40;
  constexpr int kAfter = 20;
  std::thread losing;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(120);
  const auto isTooLate = [&] { return std::chrono::steady_clock::now() > deadline; };
  for (int number = 0; disaster.SavedAfter < kAfter && !isTooLate(); ++number) {
    if (number == kBefore) {
      losing = std::thread([&] { pair.LoseFirst(); });
    }
    disaster.Contacts.push_back(u"Contact " + ToDecimal(number));
    for (bool confirmed = false; !confirmed && !isTooLate();) {
      try {
        user.Save(disaster.Contacts.back(), disaster);
        confirmed = true;
      } catch (const Error&) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
      }
    }
    ++(disaster.Refused.empty() ? disaster.SavedBefore : disaster.SavedAfter);
  }
  if (losing.joinable()) losing.join();
}

Disaster Happen(PairKind kind) {
  Disaster disaster;
  Pair pair(kind);
  database::OdbcDriver driver;
  TestDispatcher dispatcher;
  const database::Environment environment{[&](StringView) -> database::Driver& { return driver; },
                                          dispatcher.Post()};
  MakeAddressBook(pair, kind, environment);
  const String book = pair.ConnectionString(u"book");

  User idle(environment, book);
  idle.Save(kFirstOfIdle, disaster);
  Recordset load(environment);
  std::optional<EventStatus> end;
  load.FetchComplete = [&](const Error*, EventStatus status) { end = status; };
  load.Open(
      kind == PairKind::Galera
          ? u"SELECT COUNT(*) FROM seq_1_to_1000000 A, seq_1_to_1000000 B"
          : u"SELECT COUNT(*) FROM generate_series(1, 1000000) A, generate_series(1, 1000000)",
      book, {.Async = true});
  User busy(environment, book);
  SaveThroughIt(pair, busy, disaster);

  std::this_thread::sleep_for(kThinking);
  disaster.Contacts.insert(disaster.Contacts.end(), {kFirstOfIdle, kSecondOfIdle});
  try {
    idle.Save(kSecondOfIdle, disaster);
  } catch (const Error& error) {
    disaster.IdleUser = error;
  }
  if (dispatcher.RunUntil([&] { return end.has_value(); })) disaster.Load = *end;
  load = Recordset(environment);
  load.Open(data::AddressBookQueries::RootItems(data::Dialect::Sql), book, {.Async = true});
  dispatcher.RunUntil([&] { return load.State() != database::ObjectState::Fetching; });
  disaster.RowsOfNextLoad = load.RecordCount();

  const String second = pair.ConnectionStringOfSecond(u"book");
  disaster.Found = Count(environment, second);
  Connection faults(environment);
  faults.Open(second);
  faults.Execute(u"DELETE FROM SMS_ABCONTACTS WHERE FNAME = '" + kDropped + u"'");
  faults.Execute(u"INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME) VALUES (0, '" + kDoubled + u"')");
  disaster.FoundAfterFaults = Count(environment, second);
  return disaster;
}

class FailoverTest : public testing::TestWithParam<PairKind> {
 protected:
  /// It happens once for all tests.
  static const Disaster& Of(PairKind kind) {
    static std::map<PairKind, Disaster> disasters;
    auto known = disasters.find(kind);
    if (known == disasters.end()) known = disasters.emplace(kind, Happen(kind)).first;
    return known->second;
  }
  const Disaster& disaster = Of(GetParam());
};

TEST_P(FailoverTest, TheUserWhoSavesMeanwhileIsRefusedForAWhileAndThenGoesOn) {
  EXPECT_GE(disaster.SavedBefore, 40);
  EXPECT_FALSE(disaster.Refused.empty());
  EXPECT_EQ(disaster.SavedAfter, 20);
}

TEST_P(FailoverTest, NoContactIsGivenUpOrConfirmedTwice) {
  ASSERT_GE(disaster.Contacts.size(), 60U);
  for (const String& contact : disaster.Contacts) {
    const auto confirmed = disaster.Confirmations.find(contact);
    ASSERT_NE(confirmed, disaster.Confirmations.end()) << ToUtf8(contact);
    EXPECT_EQ(confirmed->second, 1) << ToUtf8(contact);
  }
}

TEST_P(FailoverTest, NothingThatWasConfirmedIsLostOrTwice) {
  for (const auto& [token, times] : disaster.Confirmed) EXPECT_EQ(times, 1) << ToUtf8(token);
  for (const String& token : LostOrTwice(disaster, disaster.Found)) {
    ADD_FAILURE() << ToUtf8(token) << " is there " << CountOf(disaster.Found, token) << " times";
  }
}

TEST_P(FailoverTest, ARowThatIsLostAndOneThatIsTwiceAreNotOverlooked) {
  EXPECT_THAT(LostOrTwice(disaster, disaster.FoundAfterFaults),
              testing::ElementsAre(kDropped, kDoubled));
  EXPECT_EQ(CountOf(disaster.FoundAfterFaults, kDropped), 0);
  EXPECT_EQ(CountOf(disaster.FoundAfterFaults, kDoubled), 2);
}

TEST_P(FailoverTest, NoAttemptThatFailedIsRepeatedBehindTheUsersBack) {
  for (const String& token : disaster.Refused) {
    EXPECT_EQ(disaster.Confirmed.count(token), 0U) << ToUtf8(token);
    // Whether the server had done it already when it was lost cannot be known.
    EXPECT_LE(CountOf(disaster.Found, token), 1) << ToUtf8(token);
  }
}

TEST_P(FailoverTest, NothingIsThereThatNobodyTried) {
  for (const auto& [token, times] : disaster.Found) {
    EXPECT_TRUE(disaster.Confirmed.count(token) != 0 ||
                std::ranges::find(disaster.Refused, token) != disaster.Refused.end())
        << ToUtf8(token);
  }
}

TEST_P(FailoverTest, TheUserWhoThoughtMeanwhileNoticesNothing) {
  EXPECT_FALSE(disaster.IdleUser) << (disaster.IdleUser ? disaster.IdleUser->what() : "");
}

TEST_P(FailoverTest, ALoadThatRanEndsWithAFailureAndTheNextOneWorks) {
  EXPECT_EQ(disaster.Load, EventStatus::ErrorsOccurred);
  std::int64_t rows = 0;
  for (const auto& [token, times] : disaster.Found) rows += times;
  EXPECT_EQ(disaster.RowsOfNextLoad, rows);
}

INSTANTIATE_TEST_SUITE_P(, FailoverTest, testing::Values(PairKind::Galera, PairKind::PostgreSql),
                         [](const auto& each) {
                           return each.param == PairKind::Galera ? "Galera" : "PostgreSql";
                         });

}  // namespace
}  // namespace ktrv::tests
