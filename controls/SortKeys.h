#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/Text.h"

namespace ktrv::controls {

class Language;

/// The sort keys of many texts in one contiguous buffer; each is created once.
class SortKeys {
 public:
  SortKeys(const Language& language, std::size_t count);

  void Add(StringView text);

  /// The indices of the texts (0-based, in order of Add), sorted by key. Stable.
  std::vector<std::uint32_t> Order(bool ascending) const;

 private:
  std::string_view KeyAt(std::uint32_t place) const;

  const Language& language_;
  std::string keys_;
  std::vector<std::size_t> ends_;
};

}  // namespace ktrv::controls
