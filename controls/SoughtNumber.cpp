#include "controls/SoughtNumber.h"

#include <algorithm>

#include "common/Fingerprint.h"

namespace ktrv::controls {
namespace {

constexpr StringView kBetweenDigits = u" +-()/.\u00A0\u2009\u200E\u202F";

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

}  // namespace

String SoughtNumber::DigitsOf(StringView number) {
  constexpr StringView kTrunkPrefix = u"(0)";
  String digits;
  while (!number.empty()) {
    if (number.starts_with(kTrunkPrefix)) {
      number.remove_prefix(kTrunkPrefix.size());
      continue;
    }
    if (IsDigit(number.front())) digits += number.front();
    number.remove_prefix(1);
  }
  return digits;
}

String SoughtNumber::SignificantDigitsOf(StringView number) {
  String digits = DigitsOf(number);
  digits.erase(0, std::min(digits.find_first_not_of(u'0'), digits.size()));
  return digits;
}

std::uint64_t SoughtNumber::KeyOf(StringView significantDigits) {
  constexpr std::size_t kExact = 18;  // 60 bits
  constexpr std::uint64_t kIsHash = std::uint64_t{1} << 63;
  if (significantDigits.size() > kExact) return Fingerprint(significantDigits) | kIsHash;
  std::uint64_t key = 0;
  for (const char16_t unit : significantDigits) {
    key = key * 10 + static_cast<std::uint64_t>(unit - u'0');
  }
  return key;
}

SoughtNumber::SoughtNumber(StringView typed) {
  const bool isNumber = std::all_of(typed.begin(), typed.end(), [](char16_t unit) {
    return IsDigit(unit) || kBetweenDigits.find(unit) != StringView::npos;
  });
  if (!isNumber) return;
  digits_ = SignificantDigitsOf(typed);
  if (digits_.empty()) digits_ = DigitsOf(typed);
}

bool SoughtNumber::IsIn(StringView number) const {
  return !IsEmpty() && DigitsOf(number).find(digits_) != String::npos;
}

}  // namespace ktrv::controls
