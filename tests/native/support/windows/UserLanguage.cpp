#include "tests/native/support/UserLanguage.h"

#include <windows.h>

namespace ktrv::tests {
namespace {

const wchar_t* Wide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}

class WindowsLanguage final : public controls::Language {
 public:
  void ToUpper(String& text) const override {
    CharUpperBuffW(reinterpret_cast<wchar_t*>(text.data()), static_cast<DWORD>(text.size()));
  }

  void AppendSortKey(StringView text, std::string& keys) const override {
    if (text.empty()) return keys.push_back('\0');
    const auto length = static_cast<int>(text.size());
    const int size = LCMapStringEx(L"en-US", LCMAP_SORTKEY, Wide(text.data()), length, nullptr, 0,
                                   nullptr, nullptr, 0);
    const std::size_t start = keys.size();
    keys.resize(start + static_cast<std::size_t>(size));
    LCMapStringEx(L"en-US", LCMAP_SORTKEY, Wide(text.data()), length,
                  reinterpret_cast<wchar_t*>(keys.data() + start), size, nullptr, nullptr, 0);
  }
};

}  // namespace

std::unique_ptr<controls::Language> MakeUserLanguage() {
  return std::make_unique<WindowsLanguage>();
}

}  // namespace ktrv::tests
