#include "windows/controls/PopupMenu.h"

#include "windows/base/Unique.h"
#include "windows/base/WideText.h"

namespace ktrv::windows {

namespace {

/// Item i has the command id i + 1; 0 means no selection. Separators are added only between visible
/// items.
UniqueMenu Build(const controls::Menu& menu) {
  UniqueMenu popup(CreatePopupMenu());
  bool any = false;
  bool separated = false;
  for (std::size_t i = 0; i < menu.Items.size(); ++i) {
    const controls::MenuItem& item = menu.Items[i];
    if (!item.Visible) continue;
    if (item.Caption == u"-") {
      separated = any;
      continue;
    }
    if (std::exchange(separated, false)) AppendMenuW(popup.Get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuW(popup.Get(), item.Enabled ? MF_STRING : MF_STRING | MF_GRAYED, i + 1,
                ToWide(item.Caption).c_str());
    any = true;
  }
  return popup;
}

}  // namespace

void ShowPopupMenu(HWND owner, controls::Menu& menu, POINT place) {
  const UniqueMenu popup = Build(menu);
  if (GetMenuItemCount(popup.Get()) <= 0) return;
  // Required so that a click outside closes the menu.
  SetForegroundWindow(owner);
  const UINT side = GetSystemMetrics(SM_MENUDROPALIGNMENT) ? TPM_RIGHTALIGN : TPM_LEFTALIGN;
  const BOOL chosen = TrackPopupMenuEx(popup.Get(), side | TPM_RIGHTBUTTON | TPM_RETURNCMD, place.x,
                                       place.y, owner, nullptr);
  PostMessageW(owner, WM_NULL, 0, 0);
  if (chosen <= 0) return;
  // A copy, because the command may change the menu.
  const auto click = menu.Items[static_cast<std::size_t>(chosen - 1)].Click;
  if (click) click();
}

}  // namespace ktrv::windows
