#include "tests/scripthost/WindowSearch.h"

#include <algorithm>
#include <cwchar>
#include <functional>

namespace ktrv::scripthost::WindowSearch {
namespace {

struct Search {
  std::function<bool(HWND)> matches;
  HWND found = nullptr;
};

// A named static function, because 32-bit callbacks have a calling convention that no lambda has.
BOOL CALLBACK Visit(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  if (IsWindowVisible(window) && search.matches(window)) {
    search.found = window;
  }
  return search.found == nullptr;
}

bool IsOwn(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process == GetCurrentProcessId();
}

std::wstring WithoutAmpersand(std::wstring text) {
  std::erase(text, L'&');
  return text;
}

}  // namespace

HWND TopLevel(const std::wstring& title) {
  Search search{[&](HWND window) { return IsOwn(window) && Text(window) == title; }};
  EnumWindows(Visit, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND AnyTopLevel(const std::wstring& title) {
  Search search{[&](HWND window) { return Text(window) == title; }};
  EnumWindows(Visit, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND ChildOfClass(HWND parent, const std::wstring& className, int ordinal) {
  Search search{[&](HWND window) {
    wchar_t name[128] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return _wcsicmp(name, className.c_str()) == 0 && ordinal-- == 0;
  }};
  EnumChildWindows(parent, Visit, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND ChildWithText(HWND parent, const std::wstring& text) {
  const std::wstring wanted = WithoutAmpersand(text);
  Search search{[&](HWND window) { return WithoutAmpersand(Text(window)) == wanted; }};
  EnumChildWindows(parent, Visit, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::wstring Text(HWND window) {
  // A window of another thread that hangs must not hang its visitor.
  DWORD_PTR length = 0;
  SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 5000, &length);
  std::wstring text(length + 1, L'\0');
  DWORD_PTR copied = 0;
  SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                      SMTO_ABORTIFHUNG, 5000, &copied);
  text.resize(std::min<size_t>(copied, length));
  return text;
}

std::wstring FocusClass(HWND window) {
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  wchar_t name[128] = L"";
  if (info.hwndFocus != nullptr) {
    GetClassNameW(info.hwndFocus, name, static_cast<int>(std::size(name)));
  }
  return name;
}

RECT PlaceInParent(HWND window) {
  RECT area = {};
  GetWindowRect(window, &area);
  MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&area), 2);
  return area;
}

}  // namespace ktrv::scripthost::WindowSearch
