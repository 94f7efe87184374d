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
  std::vector<String> SameBefore;    ///< keys of earlier rows with the same values, if known
  std::optional<String> Key = {};    ///< as assigned by the engine; nullopt if it was not read
};

}  // namespace ktrv::database
