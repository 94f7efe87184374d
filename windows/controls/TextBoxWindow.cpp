#include <algorithm>

#include "controls/Input.h"
#include "controls/TextBox.h"
#include "windows/base/WideText.h"
#include "windows/controls/Clipboard.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Keys.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

class TextBoxWindow final : public Peer<controls::TextBoxPeer> {
 public:
  TextBoxWindow(FormWindow& form, controls::TextBox& box) : Peer(form, box), box_(box) {
    Create(WC_EDITW, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
    if (box.MaxLength() > 0) Send(EM_SETLIMITTEXT, static_cast<WPARAM>(box.MaxLength()));
    Send(EM_SETCUEBANNER, FALSE, ToWide(box.Cue).c_str());
    TextChanged();
  }
  void TextChanged() override {
    changing_ = true;
    ShowText(box_.Text());
    changing_ = false;
    SelectionChanged();
  }
  void SelectionChanged() override {
    const int start = box_.SelectionStart();
    Send(EM_SETSEL, static_cast<WPARAM>(start), start + box_.SelectionLength());
  }
  void BackColorChanged() override { PaintNow(); }
  void OnCommand(WORD code) override {
    if (code != EN_CHANGE || changing_) return;
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Handle())), L'\0');
    const int length = GetWindowTextW(Handle(), text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    TakeIn(FromWide(text));
  }
  AccessiblePart Describe() const override {
    return {.Role = ROLE_SYSTEM_TEXT, .Value = ToWide(box_.Text())};
  }
  std::optional<std::uint32_t> BackColor() const override { return box_.BackColor(); }

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    const bool filters = box_.KeyPress || box_.Insertion;
    // Otherwise the edit control would truncate the text before it is filtered.
    const bool pastes = message == WM_PASTE || (message == WM_KEYDOWN && wParam == VK_INSERT &&
                                                HeldKeys() == controls::ShiftMask::Shift);
    if (filters && pastes) {
      Paste();
      return 0;
    }
    if (message != WM_CHAR || !(box_.KeyPress || box_.Completion)) return std::nullopt;
    auto code = static_cast<std::int16_t>(wParam);
    if (box_.KeyPress) box_.KeyPress(code);
    if (code == 0) return 0;
    const auto typed = static_cast<std::uint16_t>(code);
    const bool isText = typed >= u' ' && typed != kDeleteWord;
    typing_ = isText && box_.KeyPress;
    const LRESULT result = DefSubclassProc(Handle(), message, typed, lParam);
    typing_ = false;
    if (isText && IsCaretAtEnd()) box_.CompleteTyped();
    return result;
  }

 private:
  static constexpr std::uint16_t kDeleteWord = 0x7F;  ///< Ctrl+Backspace

  bool IsCaretAtEnd() const {
    DWORD start = 0;
    DWORD end = 0;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), &end);
    return start == end && end == box_.Text().size();
  }
  /// Handles a change of the edit control's text. An insertion by an input method, the context menu
  /// or another program is filtered; what the filter rejects is removed again.
  void TakeIn(String text) {
    const StringView former = box_.Text();
    const auto differs = std::ranges::mismatch(former, text);
    const auto start = static_cast<std::size_t>(differs.in1 - former.begin());
    std::size_t behind = 0;
    while (behind < std::min(former.size(), text.size()) - start &&
           former[former.size() - 1 - behind] == text[text.size() - 1 - behind]) {
      ++behind;
    }
    const String inserted = text.substr(start, text.size() - behind - start);
    // A typed character was filtered before.
    if (typing_ || inserted.empty() || box_.Admitted(inserted) == inserted) {
      box_.UserChanges(std::move(text));
      return;
    }
    box_.UserSelects(static_cast<int>(start), static_cast<int>(former.size() - behind - start));
    TextChanged();
    box_.UserTypes(inserted);
  }
  /// Replaces the selection by the filtered text of the clipboard.
  void Paste() {
    const auto text = ReadClipboard();
    if (!text) return;
    DWORD start = 0;
    DWORD end = 0;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), &end);
    box_.UserSelects(static_cast<int>(start), static_cast<int>(end - start));
    box_.UserTypes(*text);
  }

  controls::TextBox& box_;
  bool changing_ = false;  ///< the form, not the user, changes the text
  bool typing_ = false;    ///< inserting a character that was filtered
};

}  // namespace

std::unique_ptr<controls::TextBoxPeer> WindowFactory::Make(controls::TextBox& control) {
  return std::make_unique<TextBoxWindow>(form_, control);
}

}  // namespace ktrv::windows
