#pragma once

#include <string>

namespace ktrv::benchmarks {

/// Measures the group dialog: how its work grows with the rows, and saving a group and loading the
/// source list beside bare ODBC. Prints its tables.
/// \param path of an SQLite database with what groups.sql adds.
void MeasureGroupWork(const std::string& path);

}  // namespace ktrv::benchmarks
