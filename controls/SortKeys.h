#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/Text.h"

namespace ktrv::controls {

class Language;

/// The sort keys of many texts, each made once and kept in one run of bytes.
class SortKeys {
 public:
  SortKeys(const Language& language, std::size_t count);

  void Add(StringView text);

  /// The places of the texts, counted from 0 in the order of Add, in the order of their keys; texts
  /// alike in the order in which they were added.
  std::vector<std::uint32_t> Order(bool ascending) const;

 private:
  std::string_view KeyAt(std::uint32_t place) const;

  const Language& language_;
  std::string keys_;
  std::vector<std::size_t> ends_;
};

}  // namespace ktrv::controls
