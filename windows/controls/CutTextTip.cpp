#include "windows/controls/CutTextTip.h"

#include <algorithm>

#include "windows/base/Module.h"
#include "windows/base/WideText.h"

namespace ktrv::windows {

CutTextTip::~CutTextTip() {
  if (tip_) DestroyWindow(tip_);
}

void CutTextTip::Create() {
  tip_ =
      CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                      WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                      CW_USEDEFAULT, CW_USEDEFAULT, list_.Handle(), nullptr, ThisModule(), nullptr);
  if (!tip_) return;  // the list works without it
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
  tool.hwnd = list_.Handle();
  tool.uId = reinterpret_cast<UINT_PTR>(list_.Handle());
  tool.lpszText = LPSTR_TEXTCALLBACKW;
  SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  constexpr int kWidest = 400;  // wraps longer texts
  SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, list_.CurrentScale().Units(kWidest));
}

CutTextTip::Cell CutTextTip::UnderPointer() const {
  LVHITTESTINFO test{};
  GetCursorPos(&test.pt);
  ScreenToClient(list_.Handle(), &test.pt);
  list_.Send(LVM_SUBITEMHITTEST, 0, &test);
  return {test.iItem, test.iItem < 0 ? -1 : test.iSubItem};
}

bool CutTextTip::IsCut(const Cell& cell, const std::wstring& text) const {
  RECT place{};
  place.top = cell.Column;
  place.left = LVIR_LABEL;
  if (!list_.Send(LVM_GETSUBITEMRECT, static_cast<WPARAM>(cell.Item), &place)) return false;
  RECT inside{};
  GetClientRect(list_.Handle(), &inside);
  // The list view leaves this room beside a text.
  const int margin = list_.CurrentScale().Units(12);
  const auto width = static_cast<LONG>(list_.Send(LVM_GETSTRINGWIDTH, 0, text.c_str()));
  return place.left < 0 || place.left + width + margin > std::min(place.right, inside.right);
}

void CutTextTip::OnMouseMove() {
  if (!tip_) return;
  const Cell cell = UnderPointer();
  if (cell == shown_) return;
  shown_ = cell;
  SendMessageW(tip_, TTM_POP, 0, 0);
}

std::optional<LRESULT> CutTextTip::OnNotify(NMHDR& header) {
  if (!tip_ || header.hwndFrom != tip_ || header.code != TTN_GETDISPINFOW) return std::nullopt;
  auto& wanted = reinterpret_cast<NMTTDISPINFOW&>(header);
  const Cell cell = UnderPointer();
  text_.clear();
  if (const auto column = columns_.Find(cell.Column); column && cell.Item >= 0 &&
                                                      cell.Item < grid_.Rows() - 1 &&
                                                      !grid_.ColumnAt(*column).Picture) {
    if (grid_.Tip) text_ = ToWide(grid_.Tip(cell.Item + 1, *column));
    if (text_.empty()) {
      text_ = ToWide(grid_.Text(cell.Item + 1, *column));
      if (!IsCut(cell, text_)) text_.clear();
    }
  }
  wanted.lpszText = text_.data();  // an empty text shows no tip
  return 0;
}

}  // namespace ktrv::windows
