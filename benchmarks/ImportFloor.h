#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/Text.h"

namespace ktrv::benchmarks {

/// The texts of a contact's columns, in the order of the import's statement; nullopt is null.
using ContactCells = std::vector<std::optional<String>>;

/// The minimum work of an import: connect, insert the contacts by arrays of parameters, commit each
/// thousand. \return seconds. \throws std::runtime_error
double InsertByBareOdbc(const std::string& connectionString,
                        const std::vector<ContactCells>& contacts);

}  // namespace ktrv::benchmarks
