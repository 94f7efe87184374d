#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tool/Command.h"

namespace ktrv::tool {

/// The arguments of the program.
struct Arguments {
  std::optional<std::string> Connect;      ///< connection string
  std::optional<std::string> ConnectFile;  ///< file that contains it
  std::string Dialect;                     ///< "SQL", "ORACLE", or empty: chosen by the engine
  bool Json = false;
  bool CreatesDatabase = false;  ///< a missing SQLite file is created
  Command Run;
};

/// Parses arguments in UTF-8, without the program's name. Prints help, version and complaints,
/// without the values of passwords.
/// \return the arguments, or the exit code if there is nothing to run
std::variant<Arguments, int> ParseArguments(std::vector<std::string> arguments, Console& console);

}  // namespace ktrv::tool
