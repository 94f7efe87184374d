#include "windows/controls/TextBoxWindow.h"

#include "windows/controls/WideText.h"

namespace ktrv::windows {

TextBoxWindow::TextBoxWindow(FormWindow& form, controls::TextBox& box)
    : Peer(form, box), box_(box) {
  Create(WC_EDITW, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
  if (box.MaxLength() > 0) Send(EM_SETLIMITTEXT, static_cast<WPARAM>(box.MaxLength()));
  Send(EM_SETCUEBANNER, FALSE, ToWide(box.Cue).c_str());
  TextChanged();
}

void TextBoxWindow::TextChanged() {
  changing_ = true;
  ShowText(box_.Text());
  changing_ = false;
  SelectionChanged();
}

void TextBoxWindow::SelectionChanged() {
  const int start = box_.SelectionStart();
  Send(EM_SETSEL, static_cast<WPARAM>(start), start + box_.SelectionLength());
}

void TextBoxWindow::OnCommand(WORD code) {
  if (code != EN_CHANGE || changing_) return;
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Handle())), L'\0');
  const int length = GetWindowTextW(Handle(), text.data(), static_cast<int>(text.size()) + 1);
  text.resize(static_cast<std::size_t>(length));
  box_.UserChanges(FromWide(text));
}

std::optional<LRESULT> TextBoxWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_CHAR || !box_.KeyPress) return std::nullopt;
  auto code = static_cast<std::int16_t>(wParam);
  box_.KeyPress(code);
  if (code == 0) return 0;
  return DefSubclassProc(Handle(), message, static_cast<std::uint16_t>(code), lParam);
}

}  // namespace ktrv::windows
