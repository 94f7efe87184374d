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
  controls::TextBox& box_;
  bool changing_ = false;  ///< by the form, not by the user
};

}  // namespace ktrv::windows
