#pragma once

#include <map>
#include <optional>
#include <vector>

#include "common/Text.h"
#include "common/Variant.h"

namespace ktrv::database {

/// Identifies a new row whose insert has an unknown outcome, to find it later.
struct NewRow {
  std::map<String, Variant> Values;  ///< by column name; only those that were set
  /// Keys of earlier rows with the same values; nullopt if nobody looked.
  std::optional<std::vector<String>> SameBefore = {};
  std::optional<String> Key = {};  ///< as assigned by the engine; nullopt if it was not read

  /// Whether a row that is found is certainly this one, and not an earlier one with equal values.
  bool IsCertain() const { return Key || SameBefore; }
};

}  // namespace ktrv::database
