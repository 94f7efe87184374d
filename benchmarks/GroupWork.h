#pragma once

#include <string>

namespace ktrv::benchmarks {

/// Measures the group dialog: growth with the number of rows; saving a group and loading the source
/// list compared with plain ODBC. Prints tables.
/// \param path of an SQLite database with the data of groups.sql
void MeasureGroupWork(const std::string& path);

}  // namespace ktrv::benchmarks
