#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/Text.h"

namespace ktrv {

/// Many texts, each once, numbered from 0 in the order in which they came. They lie one behind the
/// other in memory, because that many small objects would be slow to reach.
class TextIndex {
 public:
  /// The text's number; none when it is not there. Letter case counts. \param guess a number that
  /// is looked at first, which is quicker when it is the one: in a long row the one after the last.
  std::optional<std::size_t> Find(StringView text, std::size_t guess = 0) const;
  bool Contains(StringView text) const { return Find(text).has_value(); }

  /// Gives the text the next number. \return false when it was there already. \throws
  /// std::length_error for more than 4 Gi units in all.
  bool Add(StringView text);

  /// Makes room for so many texts in all.
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
  /// The slot of the text, or the free one where it belongs. There must be a free one.
  std::size_t Place(StringView text, std::uint32_t hash) const;
  /// Spreads the texts over so many slots. \param slots a power of 2, more than there are texts.
  void Spread(std::size_t slots);

  String texts_;
  std::vector<std::uint32_t> ends_;  ///< where each text ends in texts_
  std::vector<Slot> slots_;
};

}  // namespace ktrv
