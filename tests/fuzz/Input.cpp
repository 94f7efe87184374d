#include "tests/fuzz/Input.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace ktrv::fuzz {
namespace {

/// UTF-8, which keeps inputs readable; behind a byte 0xFF raw units, which may be lone surrogates.
String TextOf(std::string_view bytes) {
  if (bytes.empty() || bytes[0] != '\xFF') return FromUtf8(bytes);
  String text;
  for (std::size_t at = 1; at + 1 < bytes.size(); at += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[at]) << 8 |
                                  static_cast<unsigned char>(bytes[at + 1]));
  }
  return text;
}

}  // namespace

std::uint8_t Input::Byte() {
  if (rest_.empty()) return 0;
  const auto byte = static_cast<std::uint8_t>(rest_.front());
  rest_.remove_prefix(1);
  return byte;
}

std::size_t Input::Number(std::size_t most) {
  const std::size_t number = most < 0x100 ? Byte() : Raw<std::uint32_t>();
  return number % (most + 1);
}

String Input::Line() {
  const std::string_view line = rest_.substr(0, rest_.find('\n'));
  rest_.remove_prefix(std::min(line.size() + 1, rest_.size()));
  return TextOf(line);
}

String Input::Text() {
  return TextOf(Bytes());
}

void Demand(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

void DemandEqual(StringView left, StringView right, const char* what) {
  if (left == right) return;
  std::fprintf(stderr, "\"%s\" is not \"%s\"\n", ToUtf8(left).c_str(), ToUtf8(right).c_str());
  Demand(false, what);
}

}  // namespace ktrv::fuzz
