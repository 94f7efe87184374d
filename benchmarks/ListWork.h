#pragma once

#include <string>
#include <vector>

namespace ktrv::benchmarks {

/// Measures what the user does with a loaded list: finding by typing, and sorting by name in the
/// user's language. \param databases paths of SQLite address books, smallest first.
void MeasureListWork(const std::vector<std::string>& databases);

}  // namespace ktrv::benchmarks
