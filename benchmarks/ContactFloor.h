#pragma once

#include <string>

namespace ktrv::benchmarks {

/// The minimum work of opening a contact: connect, read its row as UTF-16, disconnect.
/// \throws std::runtime_error
void OpenByBareOdbc(const std::string& connectionString, int contactId);

/// The minimum work of saving a contact: connect, read its row, change one column, read the row
/// again, disconnect. \throws std::runtime_error
void SaveByBareOdbc(const std::string& connectionString, int contactId, std::string city);

}  // namespace ktrv::benchmarks
