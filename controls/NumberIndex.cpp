#include "controls/NumberIndex.h"

#include <bit>

#include "controls/SoughtNumber.h"

namespace ktrv::controls {
namespace {

constexpr std::size_t kDigits = 16;
constexpr unsigned kBits = 4;
constexpr std::uint64_t kTooLong = ~std::uint64_t{0};

// Digits whose places are found together; then few places are left to compare.
constexpr std::size_t kComparedAtOnce = 4;

/// Digits are stored as 1 to 10, so that 0 is no digit.
std::uint64_t Stored(char16_t digit) {
  return digit - u'0' + 1U;
}

std::uint64_t Packed(StringView digits) {
  std::uint64_t packed = 0;
  for (const char16_t digit : digits) packed = packed << kBits | Stored(digit);
  return packed;
}

/// The places of the digit in a packed number: the highest of the four bits of each.
std::uint64_t PlacesOf(char16_t digit, std::uint64_t number) {
  constexpr std::uint64_t kEach = 0x1111111111111111;
  constexpr std::uint64_t kLow = 7 * kEach;
  constexpr std::uint64_t kHigh = 8 * kEach;
  const std::uint64_t difference = number ^ Stored(digit) * kEach;  // zero at these places
  return ~(((difference & kLow) + kLow) | difference) & kHigh;
}

}  // namespace

void NumberIndex::Extend(const RowSource& rows) {
  if (column_ >= rows.ColumnCount()) return;
  const std::int64_t count = rows.RecordCount();
  for (auto row = static_cast<std::int64_t>(numbers_.size()); row < count; ++row) {
    const String digits =
        SoughtNumber::DigitsOf(rows.CellText(row, column_).value_or(StringView()));
    numbers_.push_back(digits.size() > kDigits ? kTooLong : Packed(digits));
  }
}

RowSet NumberIndex::RowsWith(StringView digits) const {
  const StringView known = digits.substr(0, kDigits);
  const StringView first = known.substr(0, kComparedAtOnce);
  const auto rest = static_cast<unsigned>(known.size() - first.size());
  const std::uint64_t wanted = Packed(known);
  const std::uint64_t mask = kTooLong >> (kBits * (kDigits - known.size()));
  RowSet found(Rows());
  for (std::size_t row = 0; row < numbers_.size(); ++row) {
    const std::uint64_t number = numbers_[row];
    std::uint64_t places = kTooLong;
    for (const char16_t digit : first) places = places >> kBits & PlacesOf(digit, number);
    bool contains = number == kTooLong;
    for (; places != 0 && !contains; places &= places - 1) {
      const unsigned place = static_cast<unsigned>(std::countr_zero(places)) / kBits;
      contains = place >= rest && (number >> (kBits * (place - rest)) & mask) == wanted;
    }
    if (contains) found.Add(row);
  }
  return found;
}

}  // namespace ktrv::controls
