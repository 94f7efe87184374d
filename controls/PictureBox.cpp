#include "controls/PictureBox.h"

#include "controls/PeerFactory.h"

namespace ktrv::controls {

PictureBox::PictureBox(Form& form, Rectangle bounds, MousePointer pointer)
    : ControlOf(form, bounds), pointer_(pointer) {}

void PictureBox::SetBackColor(std::uint32_t color) {
  if (color == backColor_) return;
  backColor_ = color;
  if (peer_) peer_->BackColorChanged();
}

void PictureBox::Realise(PeerFactory& factory) {
  peer_ = factory.Make(*this);
}

}  // namespace ktrv::controls
