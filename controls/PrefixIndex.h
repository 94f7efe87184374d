#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "controls/CaseFolding.h"
#include "database/Recordset.h"

namespace ktrv::controls {

/// The first letters of one column of a recordset, folded and packed, eight bytes a row: a search
/// by prefix passes over a million rows without a look at their texts.
class PrefixIndex {
 public:
  /// The first letters of a folded prefix, ready to be compared.
  class Sought {
   public:
    explicit Sought(StringView foldedPrefix);

   private:
    friend class PrefixIndex;
    std::uint64_t head_ = 0;
    std::uint64_t mask_ = 0;
  };

  /// Forgets all rows; the next ones are of this column of the recordset.
  void Start(std::size_t column);
  void Stop() { column_.reset(); }
  bool Covers(std::size_t column) const { return column_ == column; }

  /// Takes in the rows that the recordset has now and had not before.
  void Extend(const database::Recordset& rows, const CaseFolding& folding);

  /// False when the row's text cannot begin with the prefix. \pre the row was taken in.
  bool MayBegin(std::size_t row, const Sought& sought) const {
    return (heads_[row] & sought.mask_) == sought.head_;
  }
  std::size_t Rows() const { return heads_.size(); }

 private:
  std::optional<std::size_t> column_;
  std::vector<std::uint64_t> heads_;
};

}  // namespace ktrv::controls
