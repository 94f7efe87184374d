#pragma once

#include <map>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include "database/Driver.h"

namespace ktrv::database {

/// Caches facts that are equal for all links to one database. Negative answers are not cached.
/// Thread-safe.
class LinkFacts {
 public:
  std::vector<String> KeyColumns(Link& link, StringView table);           ///< \throws Error
  bool TellsInsertedId(Link& link, StringView table, StringView column);  ///< \throws Error

 private:
  std::mutex mutex_;
  std::map<String, std::vector<String>> keyColumns_;
  std::set<std::pair<String, String>> tellsInsertedId_;
};

}  // namespace ktrv::database
