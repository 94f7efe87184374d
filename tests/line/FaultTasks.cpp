#include "tests/line/FaultTasks.h"

#include "common/Variant.h"
#include "database/Recordset.h"

namespace ktrv::tests {
namespace {

using database::Connection;

std::int64_t Count(Connection& connection, const String& query) {
  database::Recordset rows(connection.Surroundings());
  rows.Open(query, connection);
  return ToInteger(rows.Field(u"N"));
}

std::string Expect(const char* what, std::int64_t found, std::int64_t least, std::int64_t most) {
  if (found >= least && found <= most) return {};
  return std::string(what) + " " + std::to_string(found) + " times; ";
}

std::string NothingWritten(Connection& connection, const Host&, int, bool) {
  return Expect("contacts are there",
                Count(connection, u"SELECT COUNT(*) AS N FROM SMS_ABCONTACTS WHERE ID <= 20000"),
                kContactsOfFaults, kContactsOfFaults) +
         Expect("memberships of Team are there",
                Count(connection, u"SELECT COUNT(*) AS N FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 1"),
                3, 3);
}

std::string CheckSaved(Connection& connection, const Host& host, int, bool confirmed) {
  database::Recordset rows(connection.Surroundings());
  rows.Open(u"SELECT CITY FROM SMS_ABCONTACTS WHERE ID = 1000", connection);
  const bool stored = ToText(rows.Field(u"CITY")) == u"City " + ToDecimal(host.Saves());
  return confirmed && !stored ? "what was saved is lost; " : "";
}

String NewName(int number) {
  return u"New " + ToDecimal(number);
}

std::string CheckNew(Connection& connection, const Host&, int number, bool confirmed) {
  return Expect("the new contact is there",
                Count(connection, u"SELECT COUNT(*) AS N FROM SMS_ABCONTACTS WHERE FNAME = '" +
                                      NewName(number) + u"'"),
                confirmed ? 1 : 0, 1);
}

String GroupName(int number) {
  return u"Big " + ToDecimal(number);
}

std::string CheckGroup(Connection& connection, const Host&, int number, bool confirmed) {
  const String name = u"(SELECT ID FROM SMS_ABGROUPS WHERE NAME = '" + GroupName(number) + u"')";
  const auto rows =
      Count(connection, u"SELECT COUNT(*) AS N FROM SMS_ABGROUPMAPS WHERE GROUP_ID IN " + name);
  const auto members = Count(connection,
                             u"SELECT COUNT(DISTINCT CONTACT_ID) AS N FROM SMS_ABGROUPMAPS WHERE "
                             u"GROUP_ID IN " +
                                 name);
  return Expect("the group is there",
                Count(connection, u"SELECT COUNT(*) AS N FROM SMS_ABGROUPS WHERE NAME = '" +
                                      GroupName(number) + u"'"),
                confirmed ? 1 : 0, 1) +
         Expect("members are there", rows, confirmed ? kContactsOfFaults : 0, kContactsOfFaults) +
         Expect("each member is there", rows - members + 1, 1, 1);
}

const auto kNothing = [](Host&, int) {};
const auto kCloseEditors = [](Host& host) { host.CloseEditors(); };
/// One that was opened incompletely is closed before.
const auto kOpenBook = [](Host& host, int) {
  host.CloseAddressBook();
  host.OpenAddressBook([] {});
};
const auto kCloseBook = [](Host& host) { host.CloseAddressBook(); };

}  // namespace

const std::vector<FaultTask>& FaultTasks() {
  static const std::vector<FaultTask> tasks = {
      {"OpenContact", kNothing, [](Host& host, int) { host.OpenContact(); }, kCloseEditors,
       NothingWritten},
      {"SaveContact", [](Host& host, int) { host.OpenContact(); },
       [](Host& host, int) { host.SaveContact(); }, kCloseEditors, CheckSaved},
      {"SaveNewContact", [](Host& host, int number) { host.OpenNewContact(NewName(number)); },
       [](Host& host, int) { host.SaveNewContact(); }, kCloseEditors, CheckNew},
      {"OpenAddressBook", kNothing, kOpenBook, kCloseBook, NothingWritten},
      {"ChooseNode", kOpenBook, [](Host& host, int) { host.ChooseNode(u"SFLD1", 100); }, kCloseBook,
       NothingWritten},
      {"OpenGroup", kNothing, [](Host& host, int) { host.OpenGroup(); }, kCloseEditors,
       NothingWritten},
      {"Expand", [](Host& host, int) { host.OpenPicker(); }, [](Host& host, int) { host.Expand(); },
       kCloseEditors, NothingWritten},
      {"SaveGroup", [](Host& host, int) { host.OpenNewGroup(); },
       [](Host& host, int number) { host.SaveGroup(GroupName(number)); }, kCloseEditors,
       CheckGroup},
  };
  return tasks;
}

}  // namespace ktrv::tests
