#include "tests/scripthost/UiMenus.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "tests/scripthost/UiInput.h"
#include "tests/scripthost/WindowSearch.h"

namespace ktrv::scripthost::UiMenus {
namespace {

HWND PopupWindow() {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, L"#32768", nullptr)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && IsWindowVisible(window)) return window;
  }
  return nullptr;
}

std::wstring CaptionOf(HMENU menu, UINT place) {
  std::array<wchar_t, 256> text{};
  GetMenuStringW(menu, place, text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
  std::wstring caption(text.data());
  std::erase(caption, L'&');
  return caption;
}

std::wstring IconOf(HWND box) {
  const std::array<std::pair<LPCWSTR, const wchar_t*>, 4> icons = {
      {{IDI_ERROR, L"error"},
       {IDI_QUESTION, L"question"},
       {IDI_WARNING, L"warning"},
       {IDI_INFORMATION, L"information"}}};
  for (int ordinal = 0;; ++ordinal) {
    HWND label = WindowSearch::ChildOfClass(box, L"Static", ordinal);
    if (!label) return L"none";
    const auto icon = reinterpret_cast<HICON>(SendMessageW(label, STM_GETICON, 0, 0));
    for (const auto& [id, name] : icons) {
      if (icon && icon == LoadIconW(nullptr, id)) return name;
    }
  }
}

}  // namespace

HMENU Popup() {
  constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU
  HWND window = PopupWindow();
  return window ? reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0)) : nullptr;
}

std::wstring Items(HMENU menu) {
  std::wstring items;
  for (int place = 0; place < GetMenuItemCount(menu); ++place) {
    const auto at = static_cast<UINT>(place);
    const UINT state = GetMenuState(menu, at, MF_BYPOSITION);
    if (place > 0) items += L"\n";
    if (state & MF_SEPARATOR) {
      items += L"-";
    } else if (state & (MF_GRAYED | MF_DISABLED)) {
      items += L"(" + CaptionOf(menu, at) + L")";
    } else {
      items += CaptionOf(menu, at);
    }
  }
  return items;
}

bool Choose(HMENU menu, const std::wstring& caption) {
  for (int place = 0; place < GetMenuItemCount(menu); ++place) {
    RECT area = {};
    if (CaptionOf(menu, static_cast<UINT>(place)) != caption ||
        !GetMenuItemRect(nullptr, menu, static_cast<UINT>(place), &area)) {
      continue;
    }
    UiInput::ClickScreen({area.left + 10, (area.top + area.bottom) / 2});
    return true;
  }
  return false;
}

std::wstring BoxLooks(HWND box) {
  std::wstring looks = IconOf(box);
  std::vector<std::pair<LONG, std::wstring>> buttons;
  for (int ordinal = 0;; ++ordinal) {
    HWND button = WindowSearch::ChildOfClass(box, L"Button", ordinal);
    if (!button) break;
    std::wstring text = WindowSearch::Text(button);
    std::erase(text, L'&');
    const bool isDefault = (GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    buttons.emplace_back(WindowSearch::PlaceInParent(button).left, isDefault ? text + L"*" : text);
  }
  std::sort(buttons.begin(), buttons.end());
  for (const auto& button : buttons) looks += L"|" + button.second;
  return looks;
}

std::wstring ClipboardText() {
  std::wstring text;
  if (!OpenClipboard(nullptr)) return text;
  if (HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* units = static_cast<const wchar_t*>(GlobalLock(data))) text = units;
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

}  // namespace ktrv::scripthost::UiMenus
