#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "component/clsMain.h"
#include "database/KeepingDriver.h"
#include "database/LimitedDriver.h"
#include "database/odbc/OdbcDriver.h"
#include "forms/contact/frmNewContact.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {

inline constexpr int kContacts = 10000;

/// The book that the tasks work on: so many contacts outside folders, the group "Team" (1) of three
/// of them, and the folder "Lists" (1) with 100 groups of two.
void FillBook(database::Connection& connection, int contacts = kContacts);

/// What a host is told beside its connection string.
struct HostSettings {
  int Contacts = kContacts;  ///< of its book
  database::TimeLimits Limits = {};
  std::chrono::milliseconds Patience = std::chrono::seconds(20);  ///< of its user
  /// Another driver that uses the one it is given.
  std::function<database::Driver&(database::Driver&)> Through =
      [](database::Driver& driver) -> database::Driver& { return driver; };
};

/// A host's thread with the component on the database that a connection string names, and its user,
/// an administrator, on a screen that shows nothing. Each task is what the user waits for.
class Host {
 public:
  /// \throws std::runtime_error when the component was not initialised
  explicit Host(const String& connectionString, HostSettings settings = {});
  ~Host();

  void OpenContact();
  /// The one that is open, with another city. \throws std::runtime_error, as the others, when the
  /// task was not done
  void SaveContact();
  /// The editor of a new one, and its OK.
  void OpenNewContact(const String& name);
  void SaveNewContact();
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

  /// What failed before is forgotten.
  void Forgive();
  void CloseEditors();
  /// Of the editor that is open.
  bool HasSavedContact() const { return !contact_->IsLoaded(); }
  bool HasSavedGroup() const { return !group_; }
  int Saves() const { return saves_; }
  std::string Log() const { return ToUtf8(system_.TextOf(u"log")).substr(forgiven_); }

 private:
  bool WaitUntil(const std::function<bool()>& condition);
  void ShowGroup(const forms::GroupRequest& request);
  void CompleteGroup();
  void Require(bool done, const char* what) const;

  const HostSettings settings_;
  database::OdbcDriver odbc_;
  database::LimitedDriver limited_;
  database::KeepingDriver driver_{limited_};
  ScriptedScreen screen_;
  FakeOperatingSystem system_;
  Session session_;
  std::unique_ptr<Dialogs> dialogs_;
  std::unique_ptr<clsMain> main_;
  std::unique_ptr<forms::frmNewContact> contact_;
  std::unique_ptr<forms::frmGroupsNew> group_;
  int saves_ = 0;
  std::size_t forgiven_ = 0;  // bytes of the log
};

}  // namespace ktrv::tests
