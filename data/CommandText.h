#pragma once

#include <cstdint>
#include <vector>

#include "common/Text.h"

namespace ktrv::data {

enum class ParameterKind {
  Integer,
  NarrowText,   ///< narrow for every dialect
  DialectText,  ///< narrow for "MYSQL", wide for all other words
};

struct CommandParameter {
  StringView Name;
  ParameterKind Kind = ParameterKind::Integer;
  std::int64_t Size = 0;  ///< length of a text in characters
};

/// The text of a prepared statement and its parameters.
struct CommandText {
  String Text;
  std::vector<CommandParameter> Parameters;
};

}  // namespace ktrv::data
