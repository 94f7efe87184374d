#pragma once

#include <map>
#include <vector>

#include "common/Text.h"
#include "common/Variant.h"

namespace ktrv::database {

/// A row that was to be added: by this it is found again when nobody knows whether it was stored.
struct NewRow {
  std::map<String, Variant> Values;  ///< by column; those that were set
  std::vector<String> SameBefore;    ///< keys of rows that held the same before, as far as known
};

}  // namespace ktrv::database
