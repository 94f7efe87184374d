#pragma once

#include <functional>
#include <memory>

#include "common/Text.h"
#include "controls/Geometry.h"
#include "controls/Input.h"
#include "controls/PeerFactory.h"

namespace ktrv::controls {

class Form;

/// Displays one control. It is notified of changes, reads the new state from the control, and calls
/// the control's User... functions for user input. Without a display a control has no peer and
/// works as well.
class ControlPeer {
 public:
  virtual ~ControlPeer() = default;

  virtual void BoundsChanged() = 0;
  virtual void VisibleChanged() = 0;
  virtual void EnabledChanged() = 0;
  /// The caption or text has changed.
  virtual void TextChanged() = 0;
  virtual void FocusRequested() = 0;
  /// Repaints synchronously.
  virtual void RefreshRequested() = 0;
};

/// A part of a form. Controls are members of their form; the tab order is the order of
/// construction. The control owns all state; the form sets the event handlers.
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

  /// Requests the input focus. Without a display the control gets it at once.
  void SetFocus();
  bool HasFocus() const { return hasFocus_; }
  /// Repaints at once.
  void Refresh();

  /// The name for screen readers; if empty, the text of the preceding label.
  String AccessibleName;

  Form& Parent() const { return form_; }

  /// Creates the peer. Called once when the form is realised.
  virtual void Realise(PeerFactory& factory) = 0;
  /// Destroys the peer when the form's window is destroyed.
  virtual void Unrealise() = 0;

  /// The control got or lost the focus. When it gets the focus, the previous control loses it.
  void UserFocuses(bool has);

 protected:
  /// The peer; null without a display.
  virtual ControlPeer* Peer() const = 0;

 private:
  void LeaveFormerFocus();

  Form& form_;
  Rectangle bounds_;
  bool visible_ = true;
  bool enabled_ = true;
  bool hasFocus_ = false;
};

/// Base of controls whose peers have the type `PeerType`.
template <class Self, class PeerType>
class ControlOf : public Control {
 public:
  using Control::Control;
  void Realise(PeerFactory& factory) override { peer_ = factory.Make(static_cast<Self&>(*this)); }
  void Unrealise() override { peer_.reset(); }
  /// The peer, for use by peers of other controls; null without a display.
  PeerType* Display() const { return peer_.get(); }

 protected:
  ControlPeer* Peer() const override { return peer_.get(); }
  std::unique_ptr<PeerType> peer_;
};

}  // namespace ktrv::controls
