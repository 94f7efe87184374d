#pragma once

#include <functional>

#include "common/Text.h"

namespace ktrv::database {

class Driver;

/// The dependencies of data objects. Copyable; the functions must outlive all data objects and
/// running fetches.
struct Environment {
  /// The driver for a connection string: with "Provider=" OLE DB, otherwise ODBC. Thread-safe.
  /// \throws Error if there is none
  std::function<Driver&(StringView connectionString)> DriverFor;

  /// Runs the closure later on the user-interface thread. Thread-safe. After the end of the
  /// program's screen, closures are discarded.
  std::function<void(std::function<void()>)> Post;

  /// Closes the links that are kept for reuse, if any.
  std::function<void()> CloseKept = [] {};
};

}  // namespace ktrv::database
