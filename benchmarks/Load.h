#pragma once

#include <string>
#include <vector>

namespace ktrv::benchmarks {

/// Loading the main folder's list: the product's background fetch beside bare ODBC, the memory that
/// the list takes, and switching to another list while one is being loaded. Prints its tables.
/// \param databases of growing size; see Target.h.
void MeasureLoad(const std::vector<std::string>& databases);

}  // namespace ktrv::benchmarks
