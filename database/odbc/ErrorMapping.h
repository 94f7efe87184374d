#pragma once

#include <cstdint>

#include "common/Text.h"

namespace ktrv::database::odbc {

/// The number for a failure that ODBC reports. \param state five characters. \param native the
/// engine's own code. \param sqlite whether SQLite's driver reports it, which has one state for all
/// and says more by its code and text.
std::int32_t NumberOfFailure(StringView state, std::int32_t native, StringView text, bool sqlite);

}  // namespace ktrv::database::odbc
