#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "component/clsMain.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/adversary/FailingAllocations.h"
#include "tests/native/adversary/FaultyDriver.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {

/// How often each row is there: its table and its columns, joined with "|".
using Rows = std::map<std::string, int>;

/// A copy of the sample address book in a file of its own.
///
/// Folders 1 Staff, 3 Friends and 4 Old, and 2 Dealers for the remote category D. Contacts 1 Anna
/// and 2 Bert outside folders, 3 Cora and 4 Dora in Staff, 5 Ann Lee in Friends, 6 Otto in Old.
/// Groups 11 Team (1, 2 and the remote R1) and 13 Boat (6, 5) outside folders, 12 Crew (3) in
/// Staff. Users 1, an administrator, and 2.
class SampleBook {
 public:
  SampleBook();
  ~SampleBook();
  SampleBook(const SampleBook&) = delete;
  SampleBook& operator=(const SampleBook&) = delete;

  const String& ConnectionString() const { return connection_; }
  static database::Driver& Driver();

  Rows Contents() const;
  /// Runs statements one by one, each of them or none.
  /// \return false when the file is in use by a transaction
  bool Run(const std::vector<String>& statements) const;
  /// Rows that belong to something that is not there: empty when all is well.
  std::vector<std::string> Orphans() const;

 private:
  std::string path_;
  String connection_;
};

/// A screen whose user confirms what is asked, unless told otherwise.
class AnsweringScreen final : public ScriptedScreen {
 public:
  /// What the user answers to a question for Yes or No; Yes to all by default.
  std::function<std::int16_t(StringView text)> OnQuestion;
  int Refusals = 0;  ///< boxes that asked nothing

  std::int16_t ShowMessage(StringView text, StringView title, std::int32_t style) override;
};

/// A host's thread with the component, a user before it and a database that may fail.
class Stage {
 public:
  explicit Stage(StringView dialectWord);
  ~Stage();

  SampleBook book;
  FaultyDriver driver{SampleBook::Driver()};
  AnsweringScreen screen;
  FakeOperatingSystem system;
  Session session;
  std::unique_ptr<Dialogs> dialogs;
  std::unique_ptr<clsMain> main;

  /// What the user does in the next dialog of each kind. A dialog that nobody expects is closed.
  std::function<void(forms::frmNewContact&)> InContact;
  std::function<void(forms::frmGroupsNew&)> InGroup;
  std::function<void(forms::frmSelectFolder&)> InFolder;

  /// Presses OK, once more when the dialog stays open and the user tries again (whatever was in its
  /// way is over then), and leaves it to be closed when it stays even so. \return whether OK closed
  /// it
  bool PressOk(controls::Form& dialog, controls::CommandButton& ok);
  /// Waits for what is to come from the database. \return false when it hangs, or takes too long
  bool Wait(const std::function<bool()>& condition);
  /// What the user does with a control. A failure that comes out of it is what the edge of a window
  /// procedure would have swallowed.
  void Do(const std::function<void()>& act);

  /// The row of the grid in which a cell has this text; 0 when there is none.
  static int RowOf(const controls::FlexGrid& grid, StringView text);

  /// The address book window with the node of this key chosen and its rows there. When there is no
  /// such node, or no rows, the user closes the window and opens it again. \return null when they
  /// do not come even so
  forms::frmAddressBook* Book(StringView nodeKey, bool inTree);
  /// Makes the row of the item current and selected. \return false when it is not listed
  bool SelectRow(forms::frmAddressBook& window, const std::vector<StringView>& texts);
  /// Whether the list of the window is whole.
  static bool IsListed(forms::frmAddressBook& window);

  /// Whether a failure or a refusal was logged, shown in a box or told in a window.
  bool WasTold() const;
  std::string Log() const { return ToUtf8(system.TextOf(u"log")); }
  /// Ends the component. \return what is left that should be gone; empty when all is well
  std::string Close();

  bool TriesAgain = true;
  int Refused = 0;  ///< presses of OK after which the dialog was still there
  int Escaped = 0;  ///< failures that came out of an event

  /// Runs the component's work, the user's and the screen's left out, in which allocations count.
  template <class Body>
  static auto Work(Body&& body) {
    const FailingAllocations::Scope counted;
    return body();
  }

 private:
  void ExpectDialog();
  void Play(controls::Form& form);

  std::function<void(std::function<void()>)> post_ = screen.Dispatcher.Post();
};

}  // namespace ktrv::tests
