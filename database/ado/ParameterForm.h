#pragma once

#include "common/Variant.h"
#include "database/Types.h"

namespace ktrv::database::ado {

/// How a value goes into an ADO parameter.
struct ParameterForm {
  std::int32_t Type = 0;  ///< of ADO
  std::int64_t Size = 0;  ///< characters of a text, 1 or more; 0 for the other types

  /// The form for the value. It follows the value where that is of another kind than the parameter:
  /// ADO refuses such values instead of converting them.
  static ParameterForm Of(const Parameter& parameter, const Variant& value);

  /// Whether a parameter of this form takes a value that needs that one.
  bool Takes(const ParameterForm& other) const { return Type == other.Type && Size >= other.Size; }
};

}  // namespace ktrv::database::ado
