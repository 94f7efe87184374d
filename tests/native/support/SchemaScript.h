#pragma once

#include <string_view>

#include "database/Connection.h"

namespace ktrv::tests {

/// Runs the statements of a script of data/schema one by one.
/// \throws std::runtime_error when there is no such script, Error
void RunSchemaScript(database::Connection& connection, std::string_view name);

}  // namespace ktrv::tests
