#pragma once

#include "common/Text.h"

namespace ktrv::database {

/// The INSERT of a row as one of several rows with the same values and parameters. Empty for other
/// statements, and if a parameter stands before the values. \param rows at least 1
String InsertOfRows(StringView insert, std::size_t rows);

}  // namespace ktrv::database
