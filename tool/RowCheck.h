#pragma once

#include <vector>

#include "tool/Console.h"
#include "tool/Finding.h"
#include "tool/StructureCheck.h"

namespace ktrv::tool {

/// Looks for rows that are wrong, in the tables that are complete. Reads each row once; takes about
/// 30 bytes for each contact. On a terminal it tells how far it is. \throws Error
std::vector<Finding> CheckRows(database::Connection& connection, const Structure& structure,
                               Console& console);

}  // namespace ktrv::tool
