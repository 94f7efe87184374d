#pragma once

#include <string>
#include <variant>
#include <vector>

#include "tool/Command.h"

namespace ktrv::tool {

/// The arguments of the program.
struct Arguments {
  std::string Connect;      ///< connection string; empty if not given
  std::string ConnectFile;  ///< file that contains it; empty if not given
  std::string Dialect;      ///< "SQL", "ORACLE", or empty: chosen by the engine
  bool Json = false;
  bool CreatesDatabase = false;  ///< a missing SQLite file is created
  Command Run;
};

/// Parses arguments in UTF-8, without the program's name. Prints help, version and complaints.
/// \return the arguments, or the exit code if there is nothing to run
std::variant<Arguments, int> ParseArguments(std::vector<std::string> arguments, Console& console);

}  // namespace ktrv::tool
