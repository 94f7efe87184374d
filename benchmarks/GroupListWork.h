#pragma once

#include <string>

namespace ktrv::benchmarks {

/// Measures the work of the group dialog on its lists: the time, and for how long the
/// user-interface thread takes no input meanwhile. Prints a table with the aims.
/// \param path of an SQLite address book with many contacts outside folders
void MeasureGroupLists(const std::string& path);

}  // namespace ktrv::benchmarks
