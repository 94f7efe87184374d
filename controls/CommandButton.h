#pragma once

#include <functional>

#include "controls/Control.h"

namespace ktrv::controls {

class CommandButtonPeer : public ControlPeer {};

/// A push button; "&" before a letter of its caption makes Alt with it press the button.
class CommandButton final : public ControlOf<CommandButtonPeer> {
 public:
  /// The key that presses the button from anywhere in its form. Enter goes to the button that has
  /// the focus, if one has it.
  enum class Key { None, Enter, Escape };

  CommandButton(Form& form, Rectangle bounds, String caption, Key key = Key::None);

  std::function<void()> Click;

  const String& Caption() const { return caption_; }
  void SetCaption(String caption);
  bool IsDefault() const { return key_ == Key::Enter; }
  bool IsCancel() const { return key_ == Key::Escape; }

  /// The user pressed the button; nothing happens while it is disabled or invisible. While its form
  /// works, the button that ends the work does just that, and the others do nothing.
  void UserClicks();

  void Realise(PeerFactory& factory) override;

 private:
  String caption_;
  Key key_;
};

}  // namespace ktrv::controls
