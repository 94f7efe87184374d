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

SoughtNumber::SoughtNumber(StringView typed) {
  const bool isNumber = std::all_of(typed.begin(), typed.end(), [](char16_t unit) {
    return IsDigit(unit) || kBetweenDigits.find(unit) != StringView::npos;
  });
  if (!isNumber) return;
  digits_ = DigitsOf(typed);
  const std::size_t start = digits_.find_first_not_of(u'0');
  if (start != String::npos) digits_.erase(0, start);
}

bool SoughtNumber::IsIn(StringView number) const {
  return !IsEmpty() && DigitsOf(number).find(digits_) != String::npos;
}

}  // namespace ktrv::controls
