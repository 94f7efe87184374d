#include "windows/base/Module.h"

#include "common/Error.h"

namespace ktrv::windows {
namespace {

HMODULE Find(DWORD flag) noexcept {
  static const char anchor = 0;
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flag,
                     reinterpret_cast<LPCWSTR>(&anchor), &module);
  return module;
}

}  // namespace

HINSTANCE ThisModule() {
  return Find(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
}

std::wstring ModulePath() {
  constexpr std::size_t kLongest = 32768;
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetModuleFileNameW(ThisModule(), path.data(), static_cast<DWORD>(path.size()));
    if (length == 0 || path.size() > kLongest) {
      throw Error(ErrorNumber::DriverFailure, u"The component's path cannot be read",
                  u"KTRVAddressBook", GetLastError());
    }
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

void KeepModuleLoaded() noexcept {
  Find(GET_MODULE_HANDLE_EX_FLAG_PIN);
}

}  // namespace ktrv::windows
