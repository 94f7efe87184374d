#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "common/RowSource.h"
#include "controls/LetterFolding.h"
#include "controls/RowSet.h"

namespace ktrv::controls {

/// The starts of the words in a column's texts, packed into eight bytes per word, so that a million
/// names are searched without reading them. May name rows that do not match, but never omits one.
class WordIndex {
 public:
  /// The start of a folded word, prepared for comparison.
  class Start {
   public:
    explicit Start(StringView foldedWord);

   private:
    friend class WordIndex;
    std::uint32_t head_ = 0;
    std::uint32_t mask_ = 0;
  };

  /// \param column of the row source
  explicit WordIndex(std::size_t column) : column_(column) {}

  std::size_t Column() const { return column_; }
  /// Adds rows that the source has got since the last call. \param end the row behind the last one
  void Extend(const RowSource& rows, std::int64_t end, const LetterFolding& folding);
  std::size_t Rows() const { return firstHeads_.size(); }

  /// Whether the row's text may start with the word; if that is empty, with a sign or a blank. \pre
  /// the row is in the index
  bool MayBegin(std::size_t row, const Start& word) const {
    if (word.mask_ == 0) return std::binary_search(signRows_.begin(), signRows_.end(), row);
    return (firstHeads_[row] & word.mask_) == word.head_;
  }
  /// The rows of which at least `count` words may start with this one.
  RowSet RowsWith(const Start& word, int count) const;

 private:
  std::size_t column_;
  std::vector<std::uint32_t> firstHeads_;  ///< by row; 0 for a text without words
  std::vector<std::uint32_t> signRows_;    ///< those that start with a sign or a blank, ascending
  // By word, in the order of the rows.
  std::vector<std::uint32_t> heads_;
  std::vector<std::uint32_t> rows_;
};

}  // namespace ktrv::controls
