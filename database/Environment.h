#pragma once

#include <functional>

#include "common/Text.h"

namespace ktrv::database {

class Driver;

/// What data objects take from the program around them. Copied freely; the functions stay valid as
/// long as any data object or running fetch.
struct Environment {
  /// The driver that a connection string belongs to: with "Provider=" the OLE DB one, else ODBC.
  /// May be called on any thread. \throws Error when there is no driver for it.
  std::function<Driver&(StringView connectionString)> DriverFor;

  /// Runs the closure later on the user-interface thread. May be called on any thread; after the
  /// program around is gone, closures are dropped.
  std::function<void(std::function<void()>)> Post;

  /// Closes the links that are kept for the next opening. Nothing when none are.
  std::function<void()> CloseKept = [] {};
};

}  // namespace ktrv::database
