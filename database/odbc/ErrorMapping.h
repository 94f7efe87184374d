#pragma once

#include <cstdint>

#include "common/Text.h"

namespace ktrv::database::odbc {

/// Maps an ODBC failure to an error number. \param state SQLSTATE, five characters. \param native
/// the engine's error code. \param text decides where several engines share a SQLSTATE. \param
/// sqlite whether it is SQLite's driver, which uses one SQLSTATE for everything
std::int32_t NumberOfFailure(StringView state, std::int32_t native, StringView text, bool sqlite);

}  // namespace ktrv::database::odbc
