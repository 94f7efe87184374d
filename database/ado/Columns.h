#pragma once

#include <vector>

#include "database/Types.h"
#include "database/ado/Object.h"

namespace ktrv::database::ado {

/// The columns of an open recordset. \throws Error
std::vector<Column> ColumnsOf(const Object& recordset);

}  // namespace ktrv::database::ado
