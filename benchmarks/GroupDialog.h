#pragma once

#include <memory>
#include <string>
#include <vector>

#include "database/odbc/OdbcDriver.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::benchmarks {

/// The group dialog of an administrator at the server, on a screen that shows nothing.
class GroupDialog {
 public:
  /// \param path of an SQLite database
  explicit GroupDialog(const std::string& path);

  /// Loads the dialog and waits until its lists are there. A group's dialog with the group's id.
  forms::frmGroupsNew& OpenPicker(bool expandGroups = false);
  forms::frmGroupsNew& OpenGroup(const String& id, const String& name);
  /// Waits until both lists are there. \throws std::runtime_error when one failed
  void Complete();
  /// Fills the left list from the folder. \return seconds until it is there
  double LoadSource(const String& folderId);

  forms::frmGroupsNew& Form() { return *form_; }
  std::vector<String> MemberIds();

 private:
  forms::frmGroupsNew& Open(const forms::GroupRequest& request);

  database::OdbcDriver driver_;
  tests::ScriptedScreen screen_;
  tests::FakeOperatingSystem system_;
  Services services_{screen_, system_};
  BookDatabase database_{
      {[this](StringView) -> database::Driver& { return driver_; }, screen_.Dispatcher.Post()}};
  std::unique_ptr<forms::frmGroupsNew> form_;
};

}  // namespace ktrv::benchmarks
