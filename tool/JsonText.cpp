#include "tool/JsonText.h"

#include "common/Surrogates.h"
#include "tool/Utf8.h"

namespace ktrv::tool {
namespace {

void AppendEscape(std::string& json, char16_t unit) {
  constexpr const char* kDigits = "0123456789abcdef";
  json += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) json += kDigits[(unit >> shift) & 0xF];
}

/// Whether the unit at the index is half a pair without its other half.
bool IsUnpaired(StringView text, std::size_t at) {
  if (IsHighSurrogate(text[at])) return at + 1 == text.size() || !IsLowSurrogate(text[at + 1]);
  return IsLowSurrogate(text[at]) && (at == 0 || !IsHighSurrogate(text[at - 1]));
}

}  // namespace

void AppendJson(std::string& json, StringView text) {
  json += '"';
  std::size_t start = 0;  // of the units that need no escape
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t unit = text[at];
    const bool control = unit < 0x20 || unit == 0x7F;
    if (!control && unit != u'"' && unit != u'\\' && !IsUnpaired(text, at)) continue;
    AppendUtf8(json, text.substr(start, at - start));
    start = at + 1;
    if (unit == u'"' || unit == u'\\') {
      json += '\\';
      json += static_cast<char>(unit);
    } else {
      AppendEscape(json, unit);
    }
  }
  AppendUtf8(json, text.substr(start));
  json += '"';
}

void AppendJsonOrNull(std::string& json, std::optional<StringView> text) {
  text ? AppendJson(json, *text) : void(json += "null");
}

}  // namespace ktrv::tool
