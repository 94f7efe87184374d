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
  /// The box holds this text now. What came in, by an input method, the box's own menu or another
  /// program, goes through the filter; what that refuses is taken out again.
  void TakeIn(String text);
  /// Puts the clipboard's text, as the filter leaves it, in the place of what is selected.
  void Paste();

  controls::TextBox& box_;
  bool changing_ = false;  ///< by the form, not by the user
  bool typing_ = false;    ///< a character that went through the filter
};

}  // namespace ktrv::windows
