#pragma once

#include <initializer_list>
#include <memory>

#include "database/RowBlock.h"
#include "database/ado/Value.h"

namespace ktrv::database::ado {

/// Creates an array with copies of the values. \throws std::bad_alloc
Value ArrayOf(std::initializer_list<Value> values);

/// Converts the two-dimensional array of GetRows (columns by rows). \throws Error DriverFailure if
/// it has another shape
std::unique_ptr<RowBlock> RowsOf(const Value& array, std::size_t columns);

}  // namespace ktrv::database::ado
