#pragma once

#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "tests/native/support/AddressBookDatabase.h"
#include "tests/native/support/WatchedDriver.h"
#include "tool/Command.h"
#include "tool/Program.h"

namespace ktrv::tests {

/// Runs commands on an empty address book, and the whole program.
class ToolFixture : public testing::Test {
 protected:
  /// Runs the program with these arguments and the connection string. \return the exit code
  int Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--connect", ToUtf8(Database.ConnectionString())});
    return RunBare(std::move(arguments));
  }
  int RunBare(std::vector<std::string> arguments) {
    Out.str({});
    Messages.str({});
    tool::Console console{Out, Messages, In, IsInteractive};
    return tool::RunProgram(std::move(arguments),
                            {Driver,
                             [this](const std::string& name) -> std::optional<std::string> {
                               const auto found = Environment.find(name);
                               if (found == Environment.end()) return std::nullopt;
                               return found->second;
                             },
                             [this](const auto&) { return FilesArePrivate; }},
                            console);
  }
  std::string Output() const { return Out.str(); }

  AddressBookDatabase Database;
  WatchedDriver Driver{Database.Driver()};
  std::map<std::string, std::string> Environment;
  bool FilesArePrivate = true;
  bool IsInteractive = false;
  std::istringstream In;
  std::ostringstream Out;
  std::ostringstream Messages;
};

}  // namespace ktrv::tests
