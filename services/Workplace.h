#pragma once

#include "services/BookDatabase.h"
#include "services/Enumerations.h"
#include "services/Services.h"

namespace ktrv {

/// The user of a window, and where the host runs.
struct User {
  std::int32_t Id = 0;
  UserType Rights = UserType::GeneralUser;
  RunApplicationAt RunAt = RunApplicationAt::RuntAtClient;

  bool IsAtServer() const { return RunAt == RunApplicationAt::RuntAtServer; }
  bool operator==(const User&) const = default;
};

/// What a window works with from opening to closing: the user with his rights at that time, and the
/// database with a connection of its own. Calls of the host do not change it.
struct Workplace {
  ktrv::Services& Services;
  BookDatabase Database;
  ktrv::User User;

  /// A workplace for a window that this one opens.
  Workplace Another() const { return {Services, Database.Another(), User}; }
};

}  // namespace ktrv
