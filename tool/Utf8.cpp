#include "tool/Utf8.h"

namespace ktrv::tool {
namespace {

constexpr std::array<bool, 128> AllOfAscii() {
  std::array<bool, 128> all{};
  for (bool& each : all) each = true;
  return all;
}
constexpr std::array<bool, 128> kAscii = AllOfAscii();

}  // namespace

void AppendUtf8(std::string& bytes, StringView text) {
  if (!AppendIf(bytes, text, kAscii)) bytes += ToUtf8(text);
}

bool AppendIf(std::string& bytes, StringView text, const std::array<bool, 128>& accepted) {
  const std::size_t start = bytes.size();
  bytes.resize(start + text.size());
  char* to = bytes.data() + start;
  for (const char16_t unit : text) {
    if (unit >= accepted.size() || !accepted[unit]) {
      bytes.resize(start);
      return false;
    }
    *to++ = static_cast<char>(unit);
  }
  return true;
}

}  // namespace ktrv::tool
