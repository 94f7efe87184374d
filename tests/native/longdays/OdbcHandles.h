#pragma once

#include <ostream>

namespace ktrv::tests {

/// The ODBC handles that this process has.
struct OdbcHandles {
  int Environments = 0;
  int Connections = 0;
  int Statements = 0;

  static OdbcHandles Alive();
  /// Whether any handle was ever made, so that the counting is known to work.
  static bool AnyWasMade();

  bool operator==(const OdbcHandles&) const = default;
};

std::ostream& operator<<(std::ostream& out, const OdbcHandles& handles);

}  // namespace ktrv::tests
