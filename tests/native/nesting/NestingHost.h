#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "component/clsMain.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/AddressBookDatabase.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {

/// A host that calls the component from a timer while its user works: at one of the moments at
/// which a task of the user handles messages, it does one act. Two databases have the same ids for
/// different things; the task is done on the first.
///
///   NestingHost host(databases);
///   host.ActAt(2, act);
///   const auto outcome = task.Do(host);   // the act happened at the second moment
class NestingHost {
 public:
  /// What a call or a task left, a line each, so that a difference can be read.
  using Outcome = std::vector<std::string>;

  static constexpr std::int32_t kAdministrator = 1;
  static constexpr std::int32_t kClerk = 2;
  static constexpr std::int32_t kOtherAdministrator = 3;
  static constexpr std::int32_t kNobody = 9;

  struct Databases {
    AddressBookDatabase First;
    AddressBookDatabase Second;
    /// As they were at first.
    void Reset();
  };

  explicit NestingHost(Databases& databases);

  struct Act {
    const char* Name;
    std::function<Outcome(NestingHost&)> Do;
    /// It closes the address book window and shows another one.
    bool ReplacesBook = false;
  };
  struct Task {
    const char* Name;
    std::function<Outcome(NestingHost&)> Do;
    /// At so many moments the address book itself asks. Closed then, it does nothing.
    int Asks = 0;
  };
  static const std::vector<Act>& Acts();
  static const std::vector<Task>& Tasks();

  /// The act happens once, at this moment of the task, counted from 1.
  void ActAt(int moment, const Act& act);
  int Moments() const { return moments_; }
  bool HasActed() const { return !act_; }
  const Outcome& WhatTheActLeft() const { return left_; }

  // For tasks and acts.
  /// Messages are handled: other than here, nothing of the host can run.
  void Think();
  template <class Dialog>
  void In(std::function<void(Dialog&)> play) {
    screen.PlayModal([play = std::move(play)](controls::Form& form) {
      play(dynamic_cast<Dialog&>(form));
      form.Unload();
    });
  }
  void CancelNext();
  void Come(forms::frmGroupsNew& dialog);
  void AnswerNext(std::int16_t answer);
  forms::frmAddressBook& OpenBook();
  /// Shows a node's list in the address book and gives the tree the focus.
  void Show(StringView key);
  void SelectRowOf(StringView name);
  void WaitForBook();

  Outcome Contact(std::int32_t returned) const;
  Outcome Group(std::int32_t returned) const;
  Outcome Recipients(std::int32_t returned) const;
  Outcome Book();

  Outcome FirstRows() const { return Rows(databases.First); }
  Outcome SecondRows() const { return Rows(databases.Second); }
  /// Error records in the log.
  int Records() const;

  Databases& databases;
  ScriptedScreen screen;
  FakeOperatingSystem system;
  Session session;
  Dialogs dialogs{session};
  std::unique_ptr<clsMain> main = std::make_unique<clsMain>(session, dialogs);

 private:
  static Outcome Rows(AddressBookDatabase& database);

  const Act* act_ = nullptr;
  int moment_ = 0;
  int moments_ = 0;
  Outcome left_;
  forms::frmAddressBook* book_ = nullptr;
};

}  // namespace ktrv::tests
