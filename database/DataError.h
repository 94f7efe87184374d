#pragma once

#include "common/Error.h"

namespace ktrv::database {

/// An Error with this number and ADO's description for it.
Error DataError(std::int32_t number);

}  // namespace ktrv::database
