#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/Text.h"

namespace ktrv {

/// A set of texts, numbered from 0 in insertion order. All texts are stored in one contiguous
/// string, because many small objects would be slow to reach.
class TextIndex {
 public:
  /// The text's number, or nullopt. Case-sensitive. \param guess number to compare first; in a long
  /// sequential run the number after the last hit saves the hash lookup.
  std::optional<std::size_t> Find(StringView text, std::size_t guess = 0) const;
  bool Contains(StringView text) const { return Find(text).has_value(); }

  /// Appends the text with the next number. \return false if the text is already there. \throws
  /// std::length_error above 4 Gi units in total
  bool Add(StringView text);

  /// Reserves slots for `count` texts in total.
  void Reserve(std::size_t count);
  void Clear();
  std::size_t Count() const { return ends_.size(); }

 private:
  static constexpr std::uint32_t kFree = 0xFFFFFFFFU;
  static constexpr std::size_t kMost = kFree;  ///< units of all texts
  struct Slot {
    std::uint32_t Hash = 0;
    std::uint32_t Number = kFree;
  };

  static std::uint32_t HashOf(StringView text);
  StringView At(std::size_t number) const;
  /// The text's slot, or the free slot to insert it. Requires a free slot.
  std::size_t Place(StringView text, std::uint32_t hash) const;
  /// Rehashes into `slots` slots. \param slots a power of 2, greater than the number of texts
  void Spread(std::size_t slots);

  String texts_;
  std::vector<std::uint32_t> ends_;  ///< end of each text in texts_
  std::vector<Slot> slots_;
};

}  // namespace ktrv
