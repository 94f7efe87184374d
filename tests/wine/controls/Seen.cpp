#include "tests/wine/controls/Seen.h"

#include <commctrl.h>

#include "tests/wine/controls/Play.h"

namespace ktrv::windows::Seen {
namespace {

void Button(DWORD what) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = what;
  SendInput(1, &input, sizeof input);
  Pump();
}

void Hold(UINT keys, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.dwFlags = flags;
  for (const WORD key : {WORD{VK_SHIFT}, WORD{VK_CONTROL}}) {
    if ((keys & (key == VK_SHIFT ? MK_SHIFT : MK_CONTROL)) == 0) continue;
    input.ki.wVk = key;
    SendInput(1, &input, sizeof input);
  }
  Pump();
}

controls::TreeNode* NodeOf(HWND tree, HTREEITEM item) {
  if (!item) return nullptr;
  TVITEMW data{};
  data.mask = TVIF_PARAM;
  data.hItem = item;
  SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&data));
  return reinterpret_cast<controls::TreeNode*>(data.lParam);
}

}  // namespace

std::set<int> SelectedRows(HWND list) {
  std::set<int> rows;
  for (int item = -1; (item = ListView_GetNextItem(list, item, LVNI_SELECTED)) >= 0;) {
    rows.insert(item + 1);
  }
  return rows;
}

int CurrentRow(HWND list) {
  return ListView_GetNextItem(list, -1, LVNI_FOCUSED) + 1;
}

controls::TreeNode* Node(HWND tree) {
  return NodeOf(tree, TreeView_GetSelection(tree));
}

POINT MiddleOf(HWND list, int row) {
  ListView_EnsureVisible(list, row - 1, FALSE);
  RECT place{};
  ListView_GetItemRect(list, row - 1, &place, LVIR_LABEL);
  return {place.left + 20, (place.top + place.bottom) / 2};
}

POINT Beside(HWND list, int row) {
  const POINT middle = MiddleOf(list, row);
  RECT inside{};
  GetClientRect(list, &inside);
  return {inside.right - 5, middle.y};
}

POINT PlaceOf(HWND tree, const controls::TreeNode& node) {
  for (const auto* above = node.Parent; above; above = above->Parent) {
    if (!above->Expanded) return {-1, -1};
  }
  HTREEITEM item = TreeView_GetRoot(tree);
  while (item && NodeOf(tree, item) != &node) item = TreeView_GetNextVisible(tree, item);
  RECT text{};
  if (!item || !TreeView_GetItemRect(tree, item, &text, TRUE)) return {-1, -1};
  return {text.left + 4, (text.top + text.bottom) / 2};
}

void Band(HWND list, POINT from, POINT to, UINT keys) {
  constexpr int kSteps = 5;
  ClientToScreen(list, &from);
  ClientToScreen(list, &to);
  SetCursorPos(from.x, from.y);
  SetFocus(list);
  Pump();
  Hold(keys, 0);
  Button(MOUSEEVENTF_LEFTDOWN);
  for (int step = 1; step <= kSteps; ++step) {
    SetCursorPos(from.x + (to.x - from.x) * step / kSteps,
                 from.y + (to.y - from.y) * step / kSteps);
    Button(MOUSEEVENTF_MOVE);
  }
  Button(MOUSEEVENTF_LEFTUP);
  Hold(keys, KEYEVENTF_KEYUP);
}

void TakeFocusAway(HWND form, bool disabled, bool first) {
  const HWND other = CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 600, 0, 50, 50, nullptr,
                                   nullptr, nullptr, nullptr);
  if (disabled) EnableWindow(form, FALSE);
  SetForegroundWindow(other);
  SetFocus(other);
  Pump();
  if (first) SetForegroundWindow(form);
  Pump();
  EnableWindow(form, TRUE);
  DestroyWindow(other);
  Pump();
  SetForegroundWindow(form);
  Pump();
}

}  // namespace ktrv::windows::Seen
