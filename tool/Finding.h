#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "common/Text.h"
#include "database/Connection.h"

namespace ktrv::tool {

/// One kind of thing that is wrong with an address book.
struct Finding {
  std::string Code{};  ///< for scripts: "group-in-missing-folder"
  String What{};
  String Causes{};
  String Repair{};                 ///< what a repair does; empty: somebody has to decide
  std::int64_t Count = 0;          ///< rows or parts that are concerned
  std::vector<String> Examples{};  ///< the first of them

  /// Rows that a repair removes or changes, as JSON objects in UTF-8.
  std::vector<std::string> Lost{};
  /// Repairs it on the connection, which is in a transaction. Null if Repair is empty.
  std::function<void(database::Connection&)> Mend{};

  /// Counts one more; keeps the first examples.
  void Add(const String& example) {
    constexpr std::size_t kMost = 10;
    ++Count;
    if (Examples.size() < kMost) Examples.push_back(example);
  }
};

}  // namespace ktrv::tool
