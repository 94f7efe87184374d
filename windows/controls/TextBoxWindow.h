#pragma once

#include "controls/TextBox.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class TextBoxWindow final : public Peer<controls::TextBoxPeer> {
 public:
  TextBoxWindow(FormWindow& form, controls::TextBox& box);
  void TextChanged() override;
  void SelectionChanged() override;
  void BackColorChanged() override { PaintNow(); }
  void OnCommand(WORD code) override;
  std::optional<std::uint32_t> BackColor() const override { return box_.BackColor(); }

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  /// Handles a change of the edit control's text. An insertion by an input method, the context menu
  /// or another program is filtered; what the filter rejects is removed again.
  void TakeIn(String text);
  /// Replaces the selection by the filtered text of the clipboard.
  void Paste();

  controls::TextBox& box_;
  bool changing_ = false;  ///< the form, not the user, changes the text
  bool typing_ = false;    ///< inserting a character that was filtered
};

}  // namespace ktrv::windows
