#pragma once

#include <cstdint>
#include <functional>

#include "controls/Color.h"
#include "controls/Control.h"

namespace ktrv::controls {

class PictureBoxPeer : public ControlPeer {
 public:
  virtual void BackColorChanged() = 0;
};

/// A plain area with mouse events. It captures the mouse while a button is down, so positions may
/// be outside.
class PictureBox final : public ControlOf<PictureBox, PictureBoxPeer> {
 public:
  /// Position in twips relative to the area.
  using MouseEvent = std::function<void(MouseButton button, std::int16_t shift, int x, int y)>;

  PictureBox(Form& form, Rectangle bounds, MousePointer pointer = MousePointer::Default)
      : ControlOf(form, bounds), pointer_(pointer) {}

  MouseEvent MouseDown;
  MouseEvent MouseMove;
  MouseEvent MouseUp;

  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color) {
    if (color == backColor_) return;
    backColor_ = color;
    if (peer_) peer_->BackColorChanged();
  }
  MousePointer Pointer() const { return pointer_; }

 private:
  std::uint32_t backColor_ = kSystemButtonFace;
  MousePointer pointer_;
};

}  // namespace ktrv::controls
