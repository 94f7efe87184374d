#pragma once

#include <map>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include "database/Driver.h"

namespace ktrv::database {

/// What every link to the same database tells alike, asked once. An answer that tells nothing is
/// not remembered. Any thread.
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
