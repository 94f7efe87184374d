#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "database/RowBlock.h"

namespace ktrv::database {

/// The rows of a result in blocks, with later replacements of single rows. Not thread-safe.
class RowStore {
 public:
  /// Appends all rows of the block. Strong exception guarantee.
  void Append(std::unique_ptr<RowBlock> block);

  /// Replaces a row by the only row of the block. Views of the old cells stay valid.
  void Replace(std::int64_t row, std::unique_ptr<RowBlock> block);

  std::int64_t Count() const { return count_; }

  /// The text of a cell; nullopt for null. Valid for the lifetime of the store. \pre row and column
  /// are in range
  std::optional<StringView> Cell(std::int64_t row, std::size_t column) const;

 private:
  std::size_t BlockOf(std::int64_t row) const;

  struct Piece {
    std::int64_t FirstRow;
    std::unique_ptr<RowBlock> Block;
  };
  std::vector<Piece> pieces_;
  mutable std::size_t lastBlock_ = 0;  ///< block of the last access
  std::int64_t count_ = 0;
  std::vector<std::unique_ptr<RowBlock>> replacements_;
  std::map<std::int64_t, const RowBlock*> replaced_;
};

}  // namespace ktrv::database
