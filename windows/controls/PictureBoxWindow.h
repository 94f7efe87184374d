#pragma once

#include "controls/PictureBox.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class PictureBoxWindow final : public Peer<controls::PictureBoxPeer> {
 public:
  PictureBoxWindow(FormWindow& form, controls::PictureBox& box);
  void VisibleChanged() override;
  void BackColorChanged() override { PaintNow(); }

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void Report(const controls::PictureBox::MouseEvent& event, controls::MouseButton button,
              LPARAM place) const;
  void Press(controls::MouseButton button, LPARAM place);
  void Release(controls::MouseButton button, LPARAM place);
  void LoseMouse();
  void Paint(HDC target) const;

  controls::PictureBox& box_;
  std::optional<controls::MouseButton> held_;  ///< pressed here and not released yet
};

}  // namespace ktrv::windows
