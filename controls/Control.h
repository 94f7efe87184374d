#pragma once

#include <functional>
#include <memory>

#include "common/Text.h"
#include "controls/Geometry.h"
#include "controls/Input.h"

namespace ktrv::controls {

class Form;
class PeerFactory;

/// Shows one control on a display. It is told what changed in the control, reads the new state from
/// it, and calls the control's User… functions for what the user did. A control without a display
/// has no peer and works all the same.
class ControlPeer {
 public:
  virtual ~ControlPeer() = default;

  virtual void BoundsChanged() = 0;
  virtual void VisibleChanged() = 0;
  virtual void EnabledChanged() = 0;
  /// Caption or text.
  virtual void TextChanged() = 0;
  virtual void FocusRequested() = 0;
  /// Paints again before it returns.
  virtual void RefreshRequested() = 0;
};

/// A part of a form. Controls are members of their form and are reached with Tab in the order in
/// which they were made. All state is the control's own; the events are the form's to set.
class Control {
 public:
  Control(Form& form, Rectangle bounds);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  std::function<void()> GotFocus;
  std::function<void()> LostFocus;

  const Rectangle& Bounds() const { return bounds_; }
  int Left() const { return bounds_.Left; }
  int Top() const { return bounds_.Top; }
  int Width() const { return bounds_.Width; }
  int Height() const { return bounds_.Height; }
  void Move(Rectangle bounds);
  void SetLeft(int left);
  void SetWidth(int width);

  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

  /// Asks for the input focus; without a display the control has it at once.
  void SetFocus();
  bool HasFocus() const { return hasFocus_; }
  /// Paints again at once.
  void Refresh();

  /// What a screen reader calls the control when no label stands before it; empty: the label's
  /// text.
  String AccessibleName;

  Form& Parent() const { return form_; }

  /// Makes the peer that shows this control; called once when the form is realised.
  virtual void Realise(PeerFactory& factory) = 0;
  /// Takes the peer away when the form's window goes.
  virtual void Unrealise() = 0;

  /// The focus came or went. It leaves the control of the form that had it.
  void UserFocuses(bool has);

 protected:
  /// The peer, or null without a display.
  virtual ControlPeer* Peer() const = 0;

 private:
  void LeaveFormerFocus();

  Form& form_;
  Rectangle bounds_;
  bool visible_ = true;
  bool enabled_ = true;
  bool hasFocus_ = false;
};

/// A control that is shown by peers of the type `PeerType`.
template <class PeerType>
class ControlOf : public Control {
 public:
  using Control::Control;
  void Unrealise() override { peer_.reset(); }
  /// The peer, for another control's peer that works with its window; null without a display.
  PeerType* Display() const { return peer_.get(); }

 protected:
  ControlPeer* Peer() const override { return peer_.get(); }
  std::unique_ptr<PeerType> peer_;
};

}  // namespace ktrv::controls
