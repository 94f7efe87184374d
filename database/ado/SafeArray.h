#pragma once

#include <initializer_list>
#include <memory>

#include "database/RowBlock.h"
#include "database/ado/Value.h"

namespace ktrv::database::ado {

/// An array of these values, which are copied. \throws std::bad_alloc
Value ArrayOf(std::initializer_list<Value> values);

/// The rows of the two-dimensional array that a recordset gives them in: columns by rows.
/// \throws Error DriverFailure when it is none with this many columns.
std::unique_ptr<RowBlock> RowsOf(const Value& array, std::size_t columns);

}  // namespace ktrv::database::ado
