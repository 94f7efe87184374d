#include <gmock/gmock.h>
#include <map>
#include <optional>
#include <thread>

#include "common/Error.h"
#include "data/AddressBookQueries.h"
#include "data/GroupQueries.h"
#include "database/Command.h"
#include "database/odbc/OdbcDriver.h"
#include "tests/failover/Pair.h"
#include "tests/native/support/SchemaScript.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::tests {
namespace {

using database::Command;
using database::Connection;
using database::EventStatus;
using database::Recordset;

/// Longer than statements of one task are apart: all of the loss may take less than that.
constexpr std::chrono::milliseconds kThinking{500};

/// What users saw of the loss of the server that they all worked with.
struct Disaster {
  std::vector<String> Confirmed;  ///< groups whose saving was confirmed, to any of them
  int SavedBefore = 0;
  int SavedAfter = 0;
  int Refused = 0;
  std::optional<Error> IdleUser;  ///< the failure of one who thought meanwhile, and then saved
  EventStatus Load = EventStatus::Ok;
  std::int64_t RowsOfNextLoad = -1;
  std::vector<String> Found;  ///< groups that the other server has afterwards
  std::size_t Ids = 0;        ///< different ids among them
};

/// One who saves groups, with the group editor's own command on a connection that stays open.
class User {
 public:
  User(const database::Environment& environment, StringView connectionString)
      : connection_(environment) {
    connection_.Open(connectionString);
    insert_.SetActiveConnection(&connection_);
    insert_.SetCommandText(String(data::GroupQueries::kInsertGroup));
    insert_.Append(u"NAME", database::DataType::VarWChar, 100);
    insert_.Append(u"FOLDER_ID", database::DataType::Integer);
  }
  void Save(const String& name, Disaster& disaster) {
    insert_.Execute({name, std::int64_t{0}});
    disaster.Confirmed.push_back(name);
  }

 private:
  Connection connection_;
  Command insert_;
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

/// Saves on while the server is lost, until enough was saved on the other one.
void SaveThroughIt(Pair& pair, User& user, Disaster& disaster) {
  constexpr int kBefore = 40;
  constexpr int kAfter = 20;
  std::thread losing;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  for (int number = 0; disaster.SavedAfter < kAfter; ++number) {
    if (std::chrono::steady_clock::now() > deadline) break;
    if (number == kBefore) {
      losing = std::thread([&] { pair.LoseFirst(); });
    }
    try {
      user.Save(u"Group " + ToDecimal(number), disaster);
      ++(disaster.Refused > 0 ? disaster.SavedAfter : disaster.SavedBefore);
    } catch (const Error&) {
      ++disaster.Refused;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
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
  idle.Save(u"First of the idle user", disaster);
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
  try {
    idle.Save(u"Second of the idle user", disaster);
  } catch (const Error& error) {
    disaster.IdleUser = error;
  }
  if (dispatcher.RunUntil([&] { return end.has_value(); })) disaster.Load = *end;
  load = Recordset(environment);
  load.Open(data::AddressBookQueries::RootItems(data::Dialect::Sql), book, {.Async = true});
  dispatcher.RunUntil([&] { return load.State() != database::ObjectState::Fetching; });
  disaster.RowsOfNextLoad = load.RecordCount();

  Recordset groups(environment);
  groups.Open(u"SELECT ID, NAME FROM SMS_ABGROUPS", pair.ConnectionStringOfSecond(u"book"));
  std::map<String, int> ids;
  for (; !groups.EndOfFile(); groups.MoveNext()) {
    disaster.Found.push_back(ToText(groups.Field(u"NAME")));
    ++ids[ToText(groups.Field(u"ID"))];
  }
  disaster.Ids = ids.size();
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
  EXPECT_GT(disaster.Refused, 0);
  EXPECT_EQ(disaster.SavedAfter, 20);
}

TEST_P(FailoverTest, NothingThatWasConfirmedIsLost) {
  EXPECT_THAT(disaster.Found, testing::IsSupersetOf(disaster.Confirmed));
}

TEST_P(FailoverTest, NothingIsSavedTwice) {
  EXPECT_EQ(disaster.Ids, disaster.Found.size());
  EXPECT_LE(disaster.Found.size(),
            disaster.Confirmed.size() + static_cast<std::size_t>(disaster.Refused));
}

TEST_P(FailoverTest, TheUserWhoThoughtMeanwhileNoticesNothing) {
  EXPECT_FALSE(disaster.IdleUser) << (disaster.IdleUser ? disaster.IdleUser->what() : "");
}

TEST_P(FailoverTest, ALoadThatRanEndsWithAFailureAndTheNextOneWorks) {
  EXPECT_EQ(disaster.Load, EventStatus::ErrorsOccurred);
  EXPECT_EQ(disaster.RowsOfNextLoad, static_cast<std::int64_t>(disaster.Found.size()));
}

INSTANTIATE_TEST_SUITE_P(, FailoverTest, testing::Values(PairKind::Galera, PairKind::PostgreSql),
                         [](const auto& each) {
                           return each.param == PairKind::Galera ? "Galera" : "PostgreSql";
                         });

}  // namespace
}  // namespace ktrv::tests
