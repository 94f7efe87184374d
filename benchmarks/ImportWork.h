#pragma once

#include <string>

namespace ktrv::benchmarks {

/// Compares the import of the database's contacts from a CSV file with inserting the same rows by
/// arrays. Prints a table. \param database see Target.h; its contacts go
void MeasureImport(const std::string& database);

}  // namespace ktrv::benchmarks
