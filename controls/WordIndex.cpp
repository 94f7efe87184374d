#include "controls/WordIndex.h"

#include <algorithm>

namespace ktrv::controls {
namespace {

constexpr std::size_t kUnits = 4;  // the low byte of each
constexpr unsigned kBits = 8;
constexpr std::size_t kBlock = 32;  // words

std::uint32_t At(std::size_t place, std::uint32_t value) {
  return value << (kBits * (kUnits - 1 - place));
}

}  // namespace

WordIndex::Start::Start(StringView foldedWord) {
  for (std::size_t i = 0; i < std::min(foldedWord.size(), kUnits); ++i) {
    head_ |= At(i, foldedWord[i] & 0xFFU);
    mask_ |= At(i, 0xFFU);
  }
}

void WordIndex::Extend(const RowSource& rows, std::int64_t end, const LetterFolding& folding) {
  if (column_ >= rows.ColumnCount()) return;
  rows_.resize(heads_.size());  // memory may have been short the last time
  const auto count = static_cast<std::uint32_t>(end);
  for (auto row = static_cast<std::uint32_t>(firstHeads_.size()); row < count; ++row) {
    const std::size_t before = heads_.size();
    std::size_t length = 0;  // of the present word
    const StringView text = rows.CellText(row, column_).value_or(StringView());
    const auto isSign = [](char16_t unit) {
      return unit == u' ' || unit == LetterFolding::kIgnored;
    };
    if (!text.empty() && isSign(folding.Fold(text.front()))) signRows_.push_back(row);
    for (const char16_t unit : text) {
      const char16_t folded = folding.Fold(unit);
      if (folded == LetterFolding::kIgnored) continue;
      if (folded == u' ') {
        length = 0;
        continue;
      }
      if (length == 0) {
        rows_.push_back(row);
        heads_.push_back(0);
      }
      if (length < kUnits) heads_.back() |= At(length, folded & 0xFFU);
      ++length;
    }
    firstHeads_.push_back(heads_.size() == before ? 0 : heads_[before]);
  }
}

RowSet WordIndex::RowsWith(const Start& word, int count) const {
  RowSet found(Rows());
  std::uint32_t row = 0;
  int matches = 0;
  const auto compare = [&](std::size_t place) {
    if ((heads_[place] & word.mask_) != word.head_) return;
    matches = rows_[place] == row ? matches + 1 : 1;
    row = rows_[place];
    if (matches >= count) found.Add(row);
  };
  // Most blocks have no such word; the compiler compares several of a block at once.
  std::size_t place = 0;
  for (; place + kBlock <= heads_.size(); place += kBlock) {
    std::uint32_t any = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
      any |= (heads_[place + i] & word.mask_) == word.head_ ? 1U : 0U;
    }
    if (any == 0) continue;
    for (std::size_t i = 0; i < kBlock; ++i) compare(place + i);
  }
  for (; place < heads_.size(); ++place) compare(place);
  return found;
}

}  // namespace ktrv::controls
