#pragma once

#include <string>
#include <vector>

namespace ktrv::benchmarks {

/// Measures the console program: an export of all contacts compared with a plain fetch and write,
/// and a check compared with a plain fetch of the contacts' numbers. Prints a table.
/// \param databases of growing size; see Target.h
void MeasureToolWork(const std::vector<std::string>& databases);

}  // namespace ktrv::benchmarks
