#include "windows/base/WideText.h"

namespace ktrv::windows {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::wstring ToWide(StringView text) {
  return std::wstring(text.begin(), text.end());
}

String FromWide(std::wstring_view text) {
  return String(text.begin(), text.end());
}

}  // namespace ktrv::windows
