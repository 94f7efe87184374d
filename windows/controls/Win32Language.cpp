#include "windows/controls/Win32Language.h"

#include <windows.h>

#include <array>

#include "windows/base/WideText.h"

namespace ktrv::windows {
namespace {

/// Appends the sort key of the text; nothing if the system makes none.
void AppendKey(StringView text, DWORD ignored, std::string& keys) {
  if (text.empty()) return;
  const DWORD flags = LCMAP_SORTKEY | ignored;
  const std::wstring wide = ToWide(text);
  const int length = static_cast<int>(wide.size());
  std::array<wchar_t, 256> shortKey{};
  const int room = static_cast<int>(shortKey.size() * sizeof(wchar_t));
  const int written =
      LCMapStringW(LOCALE_USER_DEFAULT, flags, wide.c_str(), length, shortKey.data(), room);
  if (written > 0) {
    keys.append(reinterpret_cast<const char*>(shortKey.data()), static_cast<std::size_t>(written));
    return;
  }
  const int needed = LCMapStringW(LOCALE_USER_DEFAULT, flags, wide.c_str(), length, nullptr, 0);
  if (needed <= 0) return;
  std::wstring longKey(static_cast<std::size_t>(needed), L'\0');
  const int filled =
      LCMapStringW(LOCALE_USER_DEFAULT, flags, wide.c_str(), length, longKey.data(), needed);
  keys.append(reinterpret_cast<const char*>(longKey.data()), static_cast<std::size_t>(filled));
}

}  // namespace

void Win32Language::ToUpper(String& text) const {
  if (text.empty()) return;
  std::wstring capitals = ToWide(text);
  const int length = static_cast<int>(capitals.size());
  LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_UPPERCASE | LCMAP_LINGUISTIC_CASING, ToWide(text).c_str(),
               length, capitals.data(), length);
  text = FromWide(capitals);
}

void Win32Language::AppendSortKey(StringView text, std::string& keys) const {
  // Accents and case are compared only if the texts are otherwise equal. Half-width forms and the
  // two Japanese syllabaries are treated as equal.
  AppendKey(text, NORM_IGNOREWIDTH | NORM_IGNOREKANATYPE, keys);
}

void Win32Language::AppendSearchKey(StringView text, std::string& keys) const {
  AppendKey(text, NORM_IGNORECASE | NORM_IGNORENONSPACE, keys);
}

}  // namespace ktrv::windows
