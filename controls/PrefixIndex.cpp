#include "controls/PrefixIndex.h"

#include <algorithm>

namespace ktrv::controls {
namespace {

constexpr std::size_t kUnits = 4;  // fit in the eight bytes of a row

template <class Fold>
std::uint64_t HeadOf(StringView text, Fold&& fold) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < kUnits; ++i) {
    head = head << 16 | (i < text.size() ? fold(text[i]) : u'\0');
  }
  return head;
}

}  // namespace

PrefixIndex::Sought::Sought(StringView foldedPrefix)
    : head_(HeadOf(foldedPrefix, [](char16_t unit) { return unit; })) {
  const std::size_t known = std::min(foldedPrefix.size(), kUnits);
  for (std::size_t i = 0; i < kUnits; ++i) mask_ = mask_ << 16 | (i < known ? 0xFFFFU : 0U);
}

void PrefixIndex::Start(std::size_t column) {
  column_ = column;
  heads_ = {};
}

void PrefixIndex::Extend(const RowSource& rows, const CaseFolding& folding) {
  if (!column_ || *column_ >= rows.ColumnCount()) return;
  const auto count = static_cast<std::size_t>(rows.RecordCount());
  for (std::size_t row = heads_.size(); row < count; ++row) {
    const auto text = rows.CellText(static_cast<std::int64_t>(row), *column_);
    heads_.push_back(
        HeadOf(text.value_or(StringView()), [&](char16_t unit) { return folding.Fold(unit); }));
  }
}

}  // namespace ktrv::controls
