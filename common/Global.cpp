#include "common/Global.h"

#include <limits>

#include "common/Trap.h"

namespace ktrv::Global {

bool IsValidEmail(StringView address) {
  if (address.size() > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
    throw Error(ErrorNumber::Overflow);  // the position counter has 16 bits
  }
  const std::size_t at = address.find(u'@');
  const std::size_t dot = address.find(u'.');
  if (at == StringView::npos || dot == StringView::npos) return false;
  if (address.find(u'@', at + 1) != StringView::npos) return false;
  // The check for ".." after the first "." compares as many units as the position of the "." has
  // digits, plus one. So ".." after position 9 is found only at the end of the address. Kept
  // because the server already holds such addresses.
  const std::size_t window = ToDecimal(static_cast<std::int64_t>(dot) + 1).size() + 1;
  if (address.substr(dot, window) == u"..") return false;
  return address.back() != u'.' && address.front() != u'@' && address.substr(at, 2) != u"@." &&
         address.substr(dot, 2) != u".@";
}

bool ValidateEmail(Logger& logger, StringView logPath, StringView address) {
  return Trap(logger, String(logPath),
              u"KTRVAddressBook: Error occurred. Sub: ValidateEmail, Module: Global", false,
              [&] { return IsValidEmail(address); });
}

bool KeyFilterNumeric(std::int16_t code, bool refusePoint, bool refuseSemicolon,
                      const std::function<std::optional<String>()>& clipboard) {
  constexpr std::int16_t kCopy = 3;
  constexpr std::int16_t kBackspace = 8;
  constexpr std::int16_t kTab = 9;
  constexpr std::int16_t kPaste = 22;
  switch (code) {
    case kCopy:
    case kBackspace:
    case kTab:
      return true;
    case u'.':
      return !refusePoint;
    case u';':
      return !refuseSemicolon;
    case kPaste: {
      const auto text = clipboard();
      return text && PastedNumber(*text);
    }
    default:
      return code >= u'0' && code <= u'9';
  }
}

std::optional<String> PastedNumber(StringView text) {
  constexpr StringView kAround = u" \t\r\n";
  const std::size_t first = text.find_first_not_of(kAround);
  if (first == StringView::npos) return std::nullopt;
  const StringView trimmed = text.substr(first, text.find_last_not_of(kAround) - first + 1);
  const auto number = ParseNumber(trimmed);
  if (!number || *number < 0) return std::nullopt;
  return String(trimmed);
}

Variant NullToDefault(const Variant& value, const String& defaultText) {
  return IsNull(value) ? Variant(defaultText) : value;
}

}  // namespace ktrv::Global
