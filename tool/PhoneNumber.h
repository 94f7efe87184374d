#pragma once

#include <cstdint>

#include "common/Fingerprint.h"
#include "common/Text.h"

namespace ktrv::tool {

/// A key of a number that is the same however the number is written: of its country code and its
/// digits, without signs, blanks, leading zeros and the zero of "+49 (0) 30". 0: it has no digits.
/// Numbers of more than 18 digits are hashed.
inline std::uint64_t NumberKey(StringView countryCode, StringView number) {
  constexpr int kExact = 18;
  std::uint64_t key = 0;
  int digits = 0;
  for (const StringView part : {countryCode, number}) {
    const std::size_t trunk = part.find(u"(0)");
    for (std::size_t at = 0; at < part.size(); ++at) {
      const char16_t unit = part[at];
      if (trunk != StringView::npos && at == trunk + 1) continue;
      if (unit < u'0' || unit > u'9') continue;
      const auto digit = static_cast<std::uint64_t>(unit - u'0');
      if (key == 0 && digit == 0) continue;
      key = ++digits <= kExact ? key * 10 + digit : Mixed(key) + digit;
    }
  }
  return key;
}

/// Why the number cannot be dialled; empty if it can. The contact editor's rules, and no letters.
inline StringView NotDialled(StringView number) {
  const StringView trimmed = Trim(number);
  if (trimmed.empty()) return u"no number";
  for (const char16_t unit : trimmed) {
    if ((unit < u'0' || unit > u'9') && StringView(u" +-()./").find(unit) == StringView::npos) {
      return u"not a number";
    }
  }
  return NumberKey({}, trimmed) == 0 ? StringView(u"only zeros") : StringView();
}

}  // namespace ktrv::tool
