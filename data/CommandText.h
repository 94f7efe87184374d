#pragma once

#include <cstdint>
#include <vector>

#include "common/Text.h"

namespace ktrv::data {

enum class ParameterKind {
  Integer,
  NarrowText,   ///< narrow for every dialect
  DialectText,  ///< narrow for "MYSQL", wide for every other dialect
};

struct CommandParameter {
  StringView Name;
  ParameterKind Kind = ParameterKind::Integer;
  std::int64_t Size = 0;  ///< characters of a text
};

/// A text that is prepared before it runs, with its parameters.
struct CommandText {
  String Text;
  std::vector<CommandParameter> Parameters;
};

}  // namespace ktrv::data
