#pragma once

#include <string>
#include <vector>

namespace ktrv::benchmarks {

/// Measures searching in a loaded list and sorting it by name in the user's language. \param
/// databases paths of SQLite address books, smallest first
void MeasureListWork(const std::vector<std::string>& databases);

}  // namespace ktrv::benchmarks
