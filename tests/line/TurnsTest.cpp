#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <thread>

#include "database/Engines.h"
#include "database/Recordset.h"
#include "tests/line/Book.h"

namespace ktrv::tests {
namespace {

/// One is enough for all cases of an engine, whose users come one after the other.
Book& BookOn(ServerKind kind) {
  if (kind == ServerKind::MariaDb) {
    static Book book(kind);
    return book;
  }
  static Book book(kind);
  return book;
}

/// The turns that each task of a user takes when it was done once before.
class TurnsTest : public testing::TestWithParam<ServerKind> {
 protected:
  /// Does the task a few times, each after the user thought for a while. \return the fewest turns:
  /// where this process is held up between two statements, one more asks whether the link still
  /// works
  template <class Task, class Undo>
  int Turns(Task&& task, Undo&& undo, int rounds = 4) {
    int fewest = std::numeric_limits<int>::max();
    for (int round = 0; round < rounds; ++round) {
      std::this_thread::sleep_for(database::kIdle * 3 / 2);
      const int before = book.Way.Turns();
      task();
      fewest = std::min(fewest, book.Way.Turns() - before);
      undo();
    }
    RecordProperty("turns", fewest);
    return fewest;
  }
  /// What the engine's driver needs.
  static int Of(int mariaDb, int postgreSql) {
    return GetParam() == ServerKind::MariaDb ? mariaDb : postgreSql;
  }

  Book& book = BookOn(GetParam());
  Host host{book.Way.Through(book.Database.ConnectionString())};
};

TEST_P(TurnsTest, OpeningAContact) {
  EXPECT_LE(Turns([&] { host.OpenContact(); }, [] {}), 2);
}

TEST_P(TurnsTest, SavingAContact) {
  host.OpenContact();
  // Three of them are the transaction: without it a refused save could not be told from a lost one.
  EXPECT_LE(Turns([&] { host.SaveContact(); }, [&] { host.OpenContact(); }), 7);
}

TEST_P(TurnsTest, OpeningTheAddressBook) {
  EXPECT_LE(Turns([&] { host.OpenAddressBook([] {}); }, [&] { host.CloseAddressBook(); }), 9);
}

TEST_P(TurnsTest, ChoosingANode) {
  host.OpenAddressBook([] {});
  EXPECT_LE(Turns([&] { host.ChooseNode(u"SFLD1", 100); }, [&] { host.ChooseNode(u"SHGR1", 3); }),
            5);
}

TEST_P(TurnsTest, OpeningAGroup) {
  EXPECT_LE(Turns([&] { host.OpenGroup(); }, [&] { host.CloseGroup(); }), 10);
}

TEST_P(TurnsTest, ExpandingAHundredGroups) {
  host.OpenPicker();
  EXPECT_LE(Turns([&] { host.Expand(); }, [&] { host.OpenPicker(); }), Of(203, 209));
}

TEST_P(TurnsTest, SavingAGroupOfTenThousand) {
  int number = 0;
  host.OpenNewGroup();
  EXPECT_LE(Turns([&] { host.SaveGroup(u"Big " + ToDecimal(++number)); },
                  [&] { host.OpenNewGroup(); }, 1),
            110);
}

TEST_P(TurnsTest, AMemberThatIsRefusedLeavesThoseBeforeIt) {
  database::Connection connection(book.Database.Surroundings());
  connection.Open(book.Database.ConnectionString());
  connection.Execute(u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '1234'");
  connection.Execute(
      u"ALTER TABLE SMS_ABGROUPMAPS ADD CONSTRAINT REFUSED CHECK (CONTACT_ID <> '1234')");
  host.OpenNewGroup();
  const int place = host.PlaceOfMember(u"1234");
  EXPECT_THROW(host.SaveGroup(u"Refused"), std::runtime_error);
  database::Recordset stored(book.Database.Surroundings());
  stored.Open(
      u"SELECT COUNT(*) AS N, COUNT(DISTINCT CONTACT_ID) AS D FROM SMS_ABGROUPMAPS WHERE GROUP_ID "
      u"IN (SELECT ID FROM SMS_ABGROUPS WHERE NAME = 'Refused')",
      connection);
  EXPECT_EQ(ToText(stored.Field(u"N")), ToDecimal(place - 1));
  EXPECT_EQ(ToText(stored.Field(u"D")), ToDecimal(place - 1));
  connection.Execute(u"ALTER TABLE SMS_ABGROUPMAPS DROP CONSTRAINT REFUSED");
}

TEST_P(TurnsTest, ADayMakesNoMoreConnectionsThanAreUsedAtOnce) {
  const int before = book.Way.Connections();
  host.OpenAddressBook([] {});
  for (int round = 0; round < 4; ++round) {
    host.OpenContact();
    host.SaveContact();
    host.ChooseNode(u"SFLD1", 100);
    host.OpenGroup();
    host.CloseGroup();
  }
  // The window's, the dialog's, and those of the dialog's two lists, which may come side by side.
  constexpr int kAtOnce = 4;
  EXPECT_LE(book.Way.Connections() - before, kAtOnce);
}

INSTANTIATE_TEST_SUITE_P(, TurnsTest, testing::Values(ServerKind::MariaDb, ServerKind::PostgreSql),
                         [](const auto& each) {
                           return each.param == ServerKind::MariaDb ? "MariaDb" : "PostgreSql";
                         });

}  // namespace
}  // namespace ktrv::tests
