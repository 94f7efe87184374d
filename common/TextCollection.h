#pragma once

#include <cstdint>
#include <vector>

#include "common/TextIndex.h"

namespace ktrv {

/// An ordered list of texts with optional keys. Keys are unique and case-insensitive.
class TextCollection {
 public:
  /// \param key empty: none. \throws Error KeyInUse
  void Add(String text, StringView key = {});

  /// Reserves memory for `count` texts with keys.
  void Reserve(std::size_t count);

  std::int32_t Count() const { return static_cast<std::int32_t>(texts_.size()); }

  /// \param index 1-based. \throws Error SubscriptOutOfRange
  const String& Item(std::int64_t index) const;
  /// \throws Error InvalidProcedureCall for an unknown key
  const String& Item(StringView key) const;

 private:
  std::vector<String> texts_;
  TextIndex keys_;                   ///< in upper case
  std::vector<std::size_t> places_;  ///< index of each key's text
};

}  // namespace ktrv
