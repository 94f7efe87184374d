#pragma once

#include <memory>
#include <vector>

#include "forms/Editors.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/DialogFixture.h"
#include "tests/native/support/WatchedDriver.h"

namespace ktrv::tests {

/// The group dialog for an administrator who works on shared groups, on a database that answers as
/// the test says.
class GroupsTest : public SessionFixture {
 protected:
  using Row = FakeDriver::Row;
  static constexpr StringView kSaveContext =
      u"KTRVAddressBook: Error occurred. Sub:Save_Data(), Module: frmGroupsNew()";

  GroupsTest();

  void WorkOn(TypeOfGroup type) { session.GroupType = type; }

  // Opening it. The dialog is loaded as if it were shown; nothing has come of its lists yet.
  forms::frmGroupsNew& OpenPicker();
  forms::frmGroupsNew& OpenToAdd(String folderId = u"0");
  forms::frmGroupsNew& OpenToModify(String groupId, String name);
  /// Makes the dialog as the door to the editors does, on the record's open connection if it has
  /// one, and loads it.
  forms::frmGroupsNew& Open(const forms::GroupRequest& request);
  /// The connection that the dialog works on.
  database::Connection& Link() const {
    return *form->Commands().At(forms::GroupCommand::Folder).ActiveConnection();
  }
  /// The host's record with what the dialog left once it has closed.
  Session& Left();
  /// What contact editors are opened for from here on; none is shown, and this is what they leave.
  void AnswerContacts(std::function<String(const forms::ContactRequest&)> editor);
  /// Waits until both lists are there. \return false when they are not in time.
  bool Complete();
  /// The source's rows, counted from 1, go into the members.
  void Take(std::vector<int> rows);
  /// Chooses the source of this name and waits for its rows. \return false when there is none.
  bool Choose(StringView source);

  std::vector<String> Column(const controls::FlexGrid& grid, StringView key) const;
  std::vector<String> Sources() const;
  String MemberCount() const { return form->lblMemberCount.Caption(); }
  static std::vector<String> Texts(const TextCollection& collection);

  /// Fetches in the background wait from now on until driver.OpenGate is opened.
  void HoldFetches();
  /// Lets those that wait go on until each asks for its first rows, which do not come.
  /// \return false when fewer than `fetches` did in time.
  bool HoldRows(int fetches);

  // What the scripted database answers.
  void Folders(std::vector<Row> rows);  ///< id, name, type, category
  void Counts(StringView query, std::int64_t count);
  /// Rows of every source from now on: id, name, mobile number, country code, kind, display.
  void Candidates(std::vector<Row> rows);
  void MembersAre(std::vector<Row> rows);
  /// The name that the group has; "Team" at first, and OpenToModify says it too.
  void GroupIs(StringView name);
  /// So many contacts, each with its own id.
  static std::vector<Row> Contacts(int count);

 private:
  void AreThere(const std::vector<Row>& rows);
  std::vector<Row> there_;  ///< ids of all contacts and remote contacts

 protected:
  forms::Editors editors{session};
  forms::GroupRequest opened;  ///< what the dialog was opened for
  std::unique_ptr<forms::frmGroupsNew> form;
};

struct OwnWatchedDatabase : OwnDatabase {
  WatchedDriver watched{database.Driver()};
};

/// The same on a real database. Contacts outside folders: 1 Anna (91, 98001), 2 Bert (no
/// country code, 98002), 3 Cora (null and null); in folder 1 "Friends": 4 Dora. Folder 2 "Dealers"
/// maps the category D of the remote contacts R1 Rita and R2 Rolf. Group 11 "Team" has the members
/// 1, 2 and R1; group 12 "Void" none.
class GroupsOnDatabase : protected OwnWatchedDatabase, public GroupsTest {
 protected:
  GroupsOnDatabase();

  void Run(StringView statement) { database.Run({statement}); }
  /// The first column of the rows, joined with commas.
  String Query(StringView text);
  /// The n-th statement from now on that starts with this text fails, once. \param first what is
  /// done before: the statement's own work where it works and is told as a failure.
  void FailOnce(StringView start, int n = 1, std::function<void()> first = {});
  /// "contact:letter" of the group's memberships in the order of their writing.
  String MembershipsOf(StringView groupId);
};

}  // namespace ktrv::tests
