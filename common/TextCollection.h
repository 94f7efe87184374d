#pragma once

#include <cstdint>
#include <vector>

#include "common/TextIndex.h"

namespace ktrv {

/// An ordered list of texts, some of which have a key. Keys are unique regardless of case.
class TextCollection {
 public:
  /// \param key empty for none. \throws Error KeyInUse
  void Add(String text, StringView key = {});

  /// Makes room for so many texts with keys.
  void Reserve(std::size_t count);

  std::int32_t Count() const { return static_cast<std::int32_t>(texts_.size()); }

  /// \param index counted from 1. \throws Error SubscriptOutOfRange
  const String& Item(std::int64_t index) const;
  /// \throws Error InvalidProcedureCall when there is no such key.
  const String& Item(StringView key) const;

 private:
  std::vector<String> texts_;
  TextIndex keys_;                   ///< in capitals
  std::vector<std::size_t> places_;  ///< of each key's text
};

}  // namespace ktrv
