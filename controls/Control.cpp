#include "controls/Control.h"

#include <algorithm>

#include "controls/Form.h"

namespace ktrv::controls {

Control::Control(Form& form, Rectangle bounds) : form_(form), bounds_(bounds) {
  form_.controls_.push_back(this);
}

Control::~Control() {
  std::erase(form_.controls_, this);
}

void Control::Move(Rectangle bounds) {
  if (bounds == bounds_) return;
  bounds_ = bounds;
  if (ControlPeer* peer = Peer()) peer->BoundsChanged();
}

void Control::SetLeft(int left) {
  Move({left, bounds_.Top, bounds_.Width, bounds_.Height});
}

void Control::SetWidth(int width) {
  Move({bounds_.Left, bounds_.Top, width, bounds_.Height});
}

void Control::SetVisible(bool visible) {
  if (visible == visible_) return;
  visible_ = visible;
  if (ControlPeer* peer = Peer()) peer->VisibleChanged();
}

void Control::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  if (ControlPeer* peer = Peer()) peer->EnabledChanged();
}

void Control::SetFocus() {
  if (ControlPeer* peer = Peer()) {
    peer->FocusRequested();
    return;
  }
  UserFocuses(true);
}

void Control::LeaveFormerFocus() {
  // There is no LostFocus notification while another window has the keyboard focus.
  for (Control* other : form_.controls_) {
    if (other == this || !other->hasFocus_) continue;
    other->UserFocuses(false);
    return;
  }
}

void Control::Refresh() {
  if (ControlPeer* peer = Peer()) peer->RefreshRequested();
}

void Control::UserFocuses(bool has) {
  if (has == hasFocus_) return;
  hasFocus_ = has;
  if (has) LeaveFormerFocus();
  if (hasFocus_ != has) return;  // an event handler has moved the focus
  const auto& event = has ? GotFocus : LostFocus;
  if (event) event();
}

}  // namespace ktrv::controls
