#pragma once

#include <functional>
#include <memory>

#include "component/clsMain.h"
#include "database/KeepingDriver.h"
#include "database/odbc/OdbcDriver.h"
#include "forms/contact/frmNewContact.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {

/// The book that the tasks work on: 10,000 contacts outside folders, the group "Team" (1) of three
/// of them, and the folder "Lists" (1) with 100 groups of two.
void FillBook(database::Connection& connection);

/// A host's thread with the component on the database that a connection string names, and its user,
/// an administrator, on a screen that shows nothing. Each task is what the user waits for.
class Host {
 public:
  explicit Host(const String& connectionString);
  ~Host();

  void OpenContact();
  /// The one that is open, with another city. \throws std::runtime_error, as the others, when the
  /// task was not done
  void SaveContact();
  /// Until the list is there. \param seen called when its first rows are
  void OpenAddressBook(const std::function<void()>& seen);
  /// The node of this key, which lists so many rows.
  void ChooseNode(StringView key, int rows);
  void CloseAddressBook();
  /// Team's, until both lists are there.
  void OpenGroup();
  void CloseGroup();
  /// The picker, with all groups of Lists taken.
  void OpenPicker();
  /// Each group taken becomes its members.
  void Expand();
  /// A new group's, with all contacts outside folders taken.
  void OpenNewGroup();
  void SaveGroup(const String& name);
  /// Of the group that is open, from 1.
  int PlaceOfMember(StringView id) const;

 private:
  void ShowGroup(const forms::GroupRequest& request);
  void CompleteGroup();
  void Require(bool done, const char* what) const;

  database::OdbcDriver odbc_;
  database::KeepingDriver driver_{odbc_};
  ScriptedScreen screen_;
  FakeOperatingSystem system_;
  Session session_;
  std::unique_ptr<Dialogs> dialogs_;
  std::unique_ptr<clsMain> main_;
  std::unique_ptr<forms::frmNewContact> contact_;
  std::unique_ptr<forms::frmGroupsNew> group_;
  int saves_ = 0;
};

}  // namespace ktrv::tests
