#include "database/RowBlock.h"

#include <limits>

#include "common/Error.h"

namespace ktrv::database {
namespace {

// Layout of a row: one length unit per cell, then the text of all cells. kNull marks a null. kLong
// marks a long cell, whose text starts with its length in two units.
constexpr char16_t kNull = 0xFFFF;
constexpr char16_t kLong = 0xFFFE;
constexpr std::size_t kLongLengthUnits = 2;

}  // namespace

RowBlock::RowBlock(std::size_t columns, std::size_t rows) : columns_(columns) {
  starts_.reserve(rows);
}

void RowBlock::BeginRow() {
  if (units_.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw Error(ErrorNumber::OutOfMemory, u"Too much text for one block of rows");
  }
  starts_.push_back(static_cast<std::uint32_t>(units_.size()));
  units_.resize(units_.size() + columns_, kNull);
  filled_ = 0;
}

void RowBlock::Add(StringView text) {
  AddLength(text.size());
  units_.insert(units_.end(), text.begin(), text.end());
}

void RowBlock::AddAscii(std::string_view text) {
  AddLength(text.size());
  units_.insert(units_.end(), text.begin(), text.end());
}

void RowBlock::AddLength(std::size_t length) {
  char16_t unit = kLong;
  if (length < kLong) {
    unit = static_cast<char16_t>(length);
  } else {
    units_.push_back(static_cast<char16_t>(length >> 16));
    units_.push_back(static_cast<char16_t>(length & 0xFFFF));
  }
  units_[starts_.back() + filled_++] = unit;
}

void RowBlock::AddNull() {
  ++filled_;
}

void RowBlock::Finish() {
  starts_.shrink_to_fit();
  units_.shrink_to_fit();
}

std::optional<StringView> RowBlock::Cell(std::size_t row, std::size_t column) const {
  const char16_t* const lengths = units_.data() + starts_[row];
  if (lengths[column] == kNull) return std::nullopt;
  const char16_t* text = lengths + columns_;
  for (std::size_t before = 0; before < column; ++before) {
    if (lengths[before] == kLong) {
      text += kLongLengthUnits + (std::size_t{text[0]} << 16 | text[1]);
    } else if (lengths[before] != kNull) {
      text += lengths[before];
    }
  }
  if (lengths[column] != kLong) return StringView(text, lengths[column]);
  return StringView(text + kLongLengthUnits, std::size_t{text[0]} << 16 | text[1]);
}

void RowBlock::ReadRow(std::size_t row, std::span<std::optional<StringView>> cells) const {
  const char16_t* const lengths = units_.data() + starts_[row];
  const char16_t* text = lengths + columns_;
  for (std::size_t column = 0; column < columns_; ++column) {
    if (lengths[column] == kNull) {
      cells[column].reset();
      continue;
    }
    std::size_t length = lengths[column];
    if (length == kLong) {
      length = std::size_t{text[0]} << 16 | text[1];
      text += kLongLengthUnits;
    }
    cells[column].emplace(text, length);
    text += length;
  }
}

}  // namespace ktrv::database
