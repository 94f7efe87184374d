#pragma once

#include <memory>
#include <string>
#include <vector>

#include "database/odbc/OdbcDriver.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::benchmarks {

/// The group dialog of an administrator at the server, on a screen without output.
class GroupDialog {
 public:
  /// \param path of an SQLite database
  explicit GroupDialog(const std::string& path);

  /// Open the dialog, as picker or for a group, and wait until its lists are loaded.
  forms::frmGroupsNew& OpenPicker(bool expandGroups = false);
  forms::frmGroupsNew& OpenGroup(const String& id, const String& name);
  /// Waits until both lists are loaded. \throws std::runtime_error if one failed
  void Complete();
  /// Loads the left list from the folder. \return seconds until it is loaded
  double LoadSource(const String& folderId);

  forms::frmGroupsNew& Form() { return *form_; }
  tests::ScriptedScreen& Screen() { return screen_; }
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
