#pragma once

#include "common/Variant.h"
#include "database/Types.h"

namespace ktrv::database::ado {

/// ADO type and size of a parameter value.
struct ParameterForm {
  std::int32_t Type = 0;  ///< an AdoType
  std::int64_t Size = 0;  ///< characters of a text, at least 1; 0 for other types

  /// The form for a value. If the value's type differs from the parameter's, it follows the value,
  /// because ADO rejects such values instead of converting them.
  static ParameterForm Of(const Parameter& parameter, const Variant& value);

  /// Whether a parameter of this form accepts a value that needs the other one.
  bool Takes(const ParameterForm& other) const { return Type == other.Type && Size >= other.Size; }
};

}  // namespace ktrv::database::ado
