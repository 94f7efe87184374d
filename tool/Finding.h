#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "common/Text.h"
#include "database/Connection.h"

namespace ktrv::tool {

/// What a repair did.
struct Mended {
  std::int64_t Count = 0;           ///< rows or parts that it changed
  std::vector<std::string> Former;  ///< rows that it removed or changed, as JSON objects in UTF-8
};

/// One kind of thing that is wrong with an address book.
struct Finding {
  std::string Code{};  ///< for scripts: "group-in-missing-folder"
  String What{};
  String Causes{};
  String Repair{};                 ///< what a repair does; empty: somebody has to decide
  std::int64_t Count = 0;          ///< rows or parts that are concerned
  std::vector<String> Examples{};  ///< the first of them

  /// Repairs it on the connection, which is in a transaction; also if it throws, it has told what
  /// it did. Null if Repair is empty. \throws Error
  std::function<void(database::Connection&, Mended&)> Mend{};

  /// Counts one more; keeps the first examples.
  void Add(const String& example) {
    constexpr std::size_t kMost = 10;
    ++Count;
    if (Examples.size() < kMost) Examples.push_back(example);
  }
};

}  // namespace ktrv::tool
