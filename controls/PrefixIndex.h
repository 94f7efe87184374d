#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/RowSource.h"
#include "controls/CaseFolding.h"

namespace ktrv::controls {

/// The first four units of a column's texts, case-folded and packed into eight bytes per row. A
/// prefix search scans a million rows without reading their texts.
class PrefixIndex {
 public:
  /// The first units of a folded prefix, prepared for comparison.
  class Sought {
   public:
    explicit Sought(StringView foldedPrefix);

   private:
    friend class PrefixIndex;
    std::uint64_t head_ = 0;
    std::uint64_t mask_ = 0;
  };

  /// Clears the index and selects the column of the recordset.
  void Start(std::size_t column);
  void Stop() { column_.reset(); }
  bool Covers(std::size_t column) const { return column_ == column; }

  /// Adds the rows that the recordset has fetched since the last call.
  void Extend(const RowSource& rows, const CaseFolding& folding);

  /// False if the row's text cannot start with the prefix. \pre the row is in the index
  bool MayBegin(std::size_t row, const Sought& sought) const {
    return (heads_[row] & sought.mask_) == sought.head_;
  }
  std::size_t Rows() const { return heads_.size(); }

 private:
  std::optional<std::size_t> column_;
  std::vector<std::uint64_t> heads_;
};

}  // namespace ktrv::controls
