#pragma once

#include "common/Error.h"

namespace ktrv::adoserver {

/// ADO's error with this number (3001…) and its published text.
Error Refusal(std::int32_t number);

// Numbers that only the server needs. The negative ones are OLE DB's.
inline constexpr std::int32_t kIllegalOperation = 3219;
inline constexpr std::int32_t kObjectInCollection = 3367;
inline constexpr std::int32_t kProviderNotFound = 3706;
inline constexpr std::int32_t kInvalidParameter = 3708;
inline constexpr std::int32_t kParameterWithoutValue = -2147217904;  // 0x80040E10
inline constexpr std::int32_t kCannotConvert = -2147217887;          // 0x80040E21

}  // namespace ktrv::adoserver
