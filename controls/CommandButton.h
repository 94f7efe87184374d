#pragma once

#include <functional>

#include "controls/Control.h"

namespace ktrv::controls {

class CommandButtonPeer : public ControlPeer {};

/// A push button. "&" in the caption marks the access key.
class CommandButton final : public ControlOf<CommandButton, CommandButtonPeer> {
 public:
  /// The key that presses the button wherever the focus is in the form. If a button has the focus,
  /// Enter presses that one.
  enum class Key { None, Enter, Escape };

  CommandButton(Form& form, Rectangle bounds, String caption, Key key = Key::None);

  std::function<void()> Click;

  const String& Caption() const { return caption_; }
  void SetCaption(String caption);
  bool IsDefault() const { return key_ == Key::Enter; }
  bool IsCancel() const { return key_ == Key::Escape; }

  /// The user pressed the button. No effect while it is disabled or invisible. During Form::Work
  /// only the stop button has an effect: it stops the work.
  void UserClicks();

 private:
  String caption_;
  Key key_;
};

}  // namespace ktrv::controls
