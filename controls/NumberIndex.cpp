#include "controls/NumberIndex.h"

#include <algorithm>
#include <array>
#include <bit>

#include "controls/SoughtNumber.h"

namespace ktrv::controls {
namespace {

constexpr std::size_t kDigits = 16;
constexpr unsigned kBits = 4;
constexpr std::uint64_t kTooLong = ~std::uint64_t{0};

// Digits whose places are found together; then few places are left to compare.
constexpr std::size_t kComparedAtOnce = 4;
constexpr std::size_t kBlock = 32;  // numbers

/// Digits are stored as 1 to 10, so that 0 is no digit.
std::uint64_t Stored(char16_t digit) {
  return digit - u'0' + 1U;
}

std::uint64_t Packed(StringView digits) {
  std::uint64_t packed = 0;
  for (const char16_t digit : digits) packed = packed << kBits | Stored(digit);
  return packed;
}

/// The digit at each place of a packed number.
std::uint64_t AtEachPlace(char16_t digit) {
  constexpr std::uint64_t kEach = 0x1111111111111111;
  return Stored(digit) * kEach;
}

/// The places of a digit in a packed number: the highest of the four bits of each.
std::uint64_t PlacesOf(std::uint64_t digitAtEachPlace, std::uint64_t number) {
  constexpr std::uint64_t kLow = 0x7777777777777777;
  const std::uint64_t difference = number ^ digitAtEachPlace;  // zero at these places
  return ~(((difference & kLow) + kLow) | difference) & ~kLow;
}

/// The places in a packed number where these digits end.
template <std::size_t Count>
std::uint64_t PlacesOf(const std::array<std::uint64_t, kComparedAtOnce>& digits,
                       std::uint64_t number) {
  std::uint64_t places = kTooLong;
  for (std::size_t i = 0; i < Count; ++i) places = places >> kBits & PlacesOf(digits[i], number);
  return places;
}

/// Calls `check` with the index of each number that is too long or contains the digits, and with
/// the places where they end.
template <std::size_t Count, class Check>
void ForEachWith(const std::array<std::uint64_t, kComparedAtOnce>& digits,
                 const std::vector<std::uint64_t>& numbers, const Check& check) {
  const auto places = [&](std::size_t row) {
    const std::uint64_t number = numbers[row];
    return number == kTooLong ? kTooLong : PlacesOf<Count>(digits, number);
  };
  // Most blocks have no such number; the compiler compares several of a block at once.
  std::size_t row = 0;
  for (; row + kBlock <= numbers.size(); row += kBlock) {
    std::uint64_t any = 0;
    for (std::size_t i = 0; i < kBlock; ++i) any |= places(row + i);
    if (any == 0) continue;
    for (std::size_t i = 0; i < kBlock; ++i) {
      if (const std::uint64_t found = places(row + i)) check(row + i, found);
    }
  }
  for (; row < numbers.size(); ++row) {
    if (const std::uint64_t found = places(row)) check(row, found);
  }
}

}  // namespace

void NumberIndex::Extend(const RowSource& rows, std::int64_t end) {
  if (column_ >= rows.ColumnCount()) return;
  for (auto row = static_cast<std::int64_t>(numbers_.size()); row < end; ++row) {
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
  std::array<std::uint64_t, kComparedAtOnce> compared{};
  std::transform(first.begin(), first.end(), compared.begin(), AtEachPlace);
  RowSet found(Rows());
  const auto check = [&](std::size_t row, std::uint64_t places) {
    const std::uint64_t number = numbers_[row];
    bool contains = number == kTooLong;
    for (; places != 0 && !contains; places &= places - 1) {
      const unsigned place = static_cast<unsigned>(std::countr_zero(places)) / kBits;
      contains = place >= rest && (number >> (kBits * (place - rest)) & mask) == wanted;
    }
    if (contains) found.Add(row);
  };
  switch (first.size()) {
    case 1:
      ForEachWith<1>(compared, numbers_, check);
      break;
    case 2:
      ForEachWith<2>(compared, numbers_, check);
      break;
    case 3:
      ForEachWith<3>(compared, numbers_, check);
      break;
    default:
      ForEachWith<kComparedAtOnce>(compared, numbers_, check);
      break;
  }
  return found;
}

}  // namespace ktrv::controls
