#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "database/RowBlock.h"

namespace ktrv::database {

/// The rows of a result as they came, block by block, with the rows that were changed since. Read
/// on one thread.
class RowStore {
 public:
  /// Takes all of the block, or nothing of it when it throws.
  void Append(std::unique_ptr<RowBlock> block);

  /// Puts the one row of the block in the place of this row. Views of the old cells stay valid.
  void Replace(std::int64_t row, std::unique_ptr<RowBlock> block);

  std::int64_t Count() const { return count_; }

  /// Valid while the store lives; nothing when null. \pre row and column are in range.
  std::optional<StringView> Cell(std::int64_t row, std::size_t column) const;

 private:
  std::size_t BlockOf(std::int64_t row) const;

  struct Piece {
    std::int64_t FirstRow;
    std::unique_ptr<RowBlock> Block;
  };
  std::vector<Piece> pieces_;
  mutable std::size_t lastBlock_ = 0;  ///< where the last row that was read stands
  std::int64_t count_ = 0;
  std::vector<std::unique_ptr<RowBlock>> replacements_;
  std::map<std::int64_t, const RowBlock*> replaced_;
};

}  // namespace ktrv::database
