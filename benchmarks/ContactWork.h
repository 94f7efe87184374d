#pragma once

#include <string>
#include <vector>

namespace ktrv::benchmarks {

/// Measures opening a contact in its editor and saving it, beside the bare ODBC statements. Prints
/// its table. \param databases see Target.h, smallest first; a contact's city
/// changes in each.
void MeasureContactWork(const std::vector<std::string>& databases);

}  // namespace ktrv::benchmarks
