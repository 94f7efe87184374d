#include "controls/CellTexts.h"

#include <utility>

namespace ktrv::controls {
namespace {

constexpr unsigned kUnitBits = 16;

/// Where the texts of so many cells begin.
std::size_t HeaderSize(std::size_t cells) {
  return 1 + 2 * cells;
}

}  // namespace

CellTexts::CellTexts(const std::vector<String>& cells) {
  if (cells.empty()) return;
  std::size_t end = HeaderSize(cells.size());
  for (const String& cell : cells) end += cell.size();
  block_.reserve(end);
  block_.push_back(static_cast<char16_t>(cells.size()));
  end = HeaderSize(cells.size());
  for (const String& cell : cells) {
    end += cell.size();
    block_.push_back(static_cast<char16_t>(end & 0xFFFFU));
    block_.push_back(static_cast<char16_t>(end >> kUnitBits));
  }
  for (const String& cell : cells) block_.insert(block_.end(), cell.begin(), cell.end());
}

std::size_t CellTexts::Begin(std::size_t cell) const {
  if (cell == 0) return HeaderSize(Count());
  const std::size_t place = HeaderSize(cell - 1);
  return block_[place] | std::size_t{block_[place + 1]} << kUnitBits;
}

StringView CellTexts::At(std::size_t cell) const {
  if (cell >= Count()) return {};
  const std::size_t begin = Begin(cell);
  return {block_.data() + begin, Begin(cell + 1) - begin};
}

void CellTexts::Set(std::size_t cell, String text) {
  std::vector<String> cells;
  for (std::size_t each = 0; each < Count(); ++each) cells.emplace_back(At(each));
  if (cells.size() <= cell) cells.resize(cell + 1);
  cells[cell] = std::move(text);
  *this = CellTexts(cells);
}

}  // namespace ktrv::controls
