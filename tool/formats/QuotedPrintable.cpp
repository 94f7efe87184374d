#include "tool/formats/QuotedPrintable.h"

#include <algorithm>

#include "tool/formats/Encoding.h"

namespace ktrv::tool {
namespace {

/// \return -1 if it is no hexadecimal digit
int HexValue(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  return -1;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = DecodeUtf8(bytes).Length;
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

String Decoded(std::string_view bytes) {
  if (IsUtf8(bytes)) return FromUtf8(bytes);
  String text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(), FromWindows1252);
  return text;
}

}  // namespace

String FromQuotedPrintable(StringView text) {
  String decoded;
  std::string bytes;  // a run of encoded bytes
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int high = text[at] == u'=' && at + 2 < text.size() ? HexValue(text[at + 1]) : -1;
    const int low = high < 0 ? -1 : HexValue(text[at + 2]);
    if (low < 0) {
      decoded += Decoded(bytes);
      bytes.clear();
      decoded += text[at];
      continue;
    }
    bytes += static_cast<char>(high * 16 + low);
    at += 2;
  }
  return decoded + Decoded(bytes);
}

}  // namespace ktrv::tool
