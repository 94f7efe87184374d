#include "database/RowStore.h"

#include <algorithm>
#include <utility>

namespace ktrv::database {

void RowStore::Append(std::unique_ptr<RowBlock> block) {
  firstRows_.push_back(count_);
  count_ += static_cast<std::int64_t>(block->Rows());
  blocks_.push_back(std::move(block));
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
  return blocks_[index]->Cell(static_cast<std::size_t>(row - firstRows_[index]), column);
}

std::size_t RowStore::BlockOf(std::int64_t row) const {
  const auto holds = [&](std::size_t index) {
    return index < blocks_.size() && row >= firstRows_[index] &&
           row - firstRows_[index] < static_cast<std::int64_t>(blocks_[index]->Rows());
  };
  // Most readers go from row to row.
  if (!holds(lastBlock_) && !holds(++lastBlock_)) {
    const auto next = std::upper_bound(firstRows_.begin(), firstRows_.end(), row);
    lastBlock_ = static_cast<std::size_t>(next - firstRows_.begin()) - 1;
  }
  return lastBlock_;
}

}  // namespace ktrv::database
