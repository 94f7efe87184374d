#pragma once

#include "common/Error.h"

namespace ktrv::database {

/// The failure of a data object with this number, with the text that ADO programs know it by.
Error DataError(std::int32_t number);

}  // namespace ktrv::database
