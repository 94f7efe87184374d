#include "tests/native/support/UserLanguage.h"

#include <windows.h>

#include <string>
#include <string_view>

namespace ktrv::tests {
namespace {

const wchar_t* Wide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}

class WindowsLanguage final : public controls::Language {
 public:
  explicit WindowsLanguage(std::string_view name) : name_(name.begin(), name.end()) {}

  void ToUpper(String& text) const override {
    CharUpperBuffW(reinterpret_cast<wchar_t*>(text.data()), static_cast<DWORD>(text.size()));
  }

  void AppendSortKey(StringView text, std::string& keys) const override {
    AppendKey(text, LCMAP_SORTKEY, keys);
  }

  void AppendSearchKey(StringView text, std::string& keys) const override {
    AppendKey(text, LCMAP_SORTKEY | NORM_IGNORECASE | NORM_IGNORENONSPACE, keys);
  }

 private:
  void AppendKey(StringView text, DWORD flags, std::string& keys) const {
    if (text.empty()) return keys.push_back('\0');
    const auto length = static_cast<int>(text.size());
    const int size = LCMapStringEx(name_.c_str(), flags, Wide(text.data()), length, nullptr, 0,
                                   nullptr, nullptr, 0);
    const std::size_t start = keys.size();
    keys.resize(start + static_cast<std::size_t>(size));
    LCMapStringEx(name_.c_str(), flags, Wide(text.data()), length,
                  reinterpret_cast<wchar_t*>(keys.data() + start), size, nullptr, nullptr, 0);
  }

  std::wstring name_;
};

}  // namespace

std::unique_ptr<controls::Language> MakeUserLanguage(const char* name) {
  return std::make_unique<WindowsLanguage>(name);
}

}  // namespace ktrv::tests
