#pragma once

#include <string>
#include <vector>

namespace ktrv::benchmarks {

/// Measures loading the main folder's list: the background fetch compared with plain ODBC, the
/// memory of the list, and switching to another list during a load. Prints tables.
/// \param databases of growing size; see Target.h
void MeasureLoad(const std::vector<std::string>& databases);

}  // namespace ktrv::benchmarks
