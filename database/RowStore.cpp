#include "database/RowStore.h"

#include <algorithm>
#include <utility>

namespace ktrv::database {

void RowStore::Append(std::unique_ptr<RowBlock> block) {
  pieces_.push_back({count_, std::move(block)});
  count_ += static_cast<std::int64_t>(pieces_.back().Block->Rows());
}

void RowStore::Replace(std::int64_t row, std::unique_ptr<RowBlock> block) {
  replacements_.push_back(std::move(block));
  replaced_[row] = replacements_.back().get();
}

std::optional<StringView> RowStore::Cell(std::int64_t row, std::size_t column) const {
  if (!replaced_.empty()) {
    if (const auto changed = replaced_.find(row); changed != replaced_.end()) {
      return changed->second->Cell(0, column);
    }
  }
  const std::size_t index = BlockOf(row);
  const Piece& piece = pieces_[index];
  return piece.Block->Cell(static_cast<std::size_t>(row - piece.FirstRow), column);
}

std::size_t RowStore::BlockOf(std::int64_t row) const {
  const auto holds = [&](std::size_t index) {
    return index < pieces_.size() && row >= pieces_[index].FirstRow &&
           row - pieces_[index].FirstRow < static_cast<std::int64_t>(pieces_[index].Block->Rows());
  };
  // Most readers access rows sequentially.
  if (!holds(lastBlock_) && !holds(++lastBlock_)) {
    const auto next = std::upper_bound(
        pieces_.begin(), pieces_.end(), row,
        [](std::int64_t wanted, const Piece& piece) { return wanted < piece.FirstRow; });
    lastBlock_ = static_cast<std::size_t>(next - pieces_.begin()) - 1;
  }
  return lastBlock_;
}

}  // namespace ktrv::database
