#pragma once

#include <set>
#include <vector>

#include "tool/Finding.h"

namespace ktrv::tool {

/// What CheckStructure found out about the tables.
struct Structure {
  std::vector<Finding> Findings;
  std::set<StringView> Complete;  ///< tables that are there with all their columns

  bool Has(StringView table) const { return Complete.contains(table); }
};

/// Looks for tables, columns and indexes that are missing, and for tables whose new ids the
/// component cannot read. \throws Error
Structure CheckStructure(database::Connection& connection);

}  // namespace ktrv::tool
