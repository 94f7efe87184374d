#pragma once

#include <string>
#include <vector>

namespace ktrv::benchmarks {

/// Compares opening and saving a contact in its editor with plain ODBC statements. Prints a table.
/// \param databases see Target.h, smallest first; a contact's city changes in each
void MeasureContactWork(const std::vector<std::string>& databases);

}  // namespace ktrv::benchmarks
