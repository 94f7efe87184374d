#pragma once

#include <string>

namespace ktrv::benchmarks {

/// Fetches the rows of a query by plain ODBC and writes their cells to a file in UTF-8, separated
/// by commas. For drivers whose narrow text is UTF-8: SQLite's. Does not look for what needs
/// quotation marks. \throws std::runtime_error
void ExportByBareOdbc(const std::string& connectionString, const std::string& sql,
                      const std::string& file);

}  // namespace ktrv::benchmarks
