#include "controls/SoughtNumber.h"

#include <algorithm>

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
