#pragma once

#include <functional>

#include "data/Dialect.h"
#include "database/Connection.h"
#include "tool/Console.h"

namespace ktrv::tool {

/// Exit codes of the program.
namespace ExitCode {
inline constexpr int Done = 0;
inline constexpr int Failed = 1;  ///< an error, or something remains to be mended
inline constexpr int Usage = 2;   ///< wrong arguments; nothing was done
}  // namespace ExitCode

/// The address book that a command works on.
struct Book {
  database::Connection& Connection;  ///< open
  data::Dialect Dialect;             ///< never None
};

/// A command with its options. \return an ExitCode. \throws Error
using Command = std::function<int(Book&, Console&)>;

}  // namespace ktrv::tool
