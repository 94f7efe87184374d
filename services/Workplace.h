#pragma once

#include "services/BookDatabase.h"
#include "services/Enumerations.h"
#include "services/Services.h"

namespace ktrv {

/// For whom a window works, and where the host runs.
struct User {
  std::int32_t Id = 0;
  UserType Rights = UserType::GeneralUser;
  RunApplicationAt RunAt = RunApplicationAt::RuntAtClient;

  bool IsAtServer() const { return RunAt == RunApplicationAt::RuntAtServer; }
  bool operator==(const User&) const = default;
};

/// What a window or a dialog works with from its opening to its end, whatever the host calls
/// meanwhile: the user with the rights of that moment, and the database, on a connection of its
/// own.
struct Workplace {
  ktrv::Services& Services;
  BookDatabase Database;
  ktrv::User User;

  /// For another window that this one opens.
  Workplace Another() const { return {Services, Database.Another(), User}; }
};

}  // namespace ktrv
