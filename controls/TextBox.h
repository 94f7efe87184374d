#pragma once

#include <cstdint>
#include <functional>

#include "controls/Color.h"
#include "controls/Control.h"

namespace ktrv::controls {

class TextBoxPeer : public ControlPeer {
 public:
  virtual void SelectionChanged() = 0;
  virtual void BackColorChanged() {}
};

/// One line of text to type into.
class TextBox final : public ControlOf<TextBoxPeer> {
 public:
  /// \param maxLength most UTF-16 units that the user can type or paste; 0 for no limit.
  TextBox(Form& form, Rectangle bounds, int maxLength = 0);

  std::function<void()> Change;
  /// A character is about to be typed; the handler may set the code to 0 to discard it.
  std::function<void(std::int16_t& code)> KeyPress;

  const String& Text() const { return text_; }
  /// Sets the text (longer than maxLength is allowed, as in any Windows program) and reports Change
  /// when it differs.
  void SetText(String text);
  int MaxLength() const { return maxLength_; }

  /// As the form or the test's user set them; what a user marks on the display is not told.
  int SelectionStart() const { return selectionStart_; }
  int SelectionLength() const { return selectionLength_; }
  void Select(int start, int length);

  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color);

  /// Grey text shown while the box is empty.
  String Cue;

  /// The user replaced the selected text by this one, typed or pasted: filtered by KeyPress when it
  /// is one unit, cut at maxLength without splitting a surrogate pair.
  void UserTypes(StringView text);
  /// The box on the display holds this text now. Half a surrogate pair, cut by the limit, goes.
  void UserChanges(String text);

  void Realise(PeerFactory& factory) override;

 private:
  String text_;
  int maxLength_;
  int selectionStart_ = 0;
  int selectionLength_ = 0;
  std::uint32_t backColor_ = kSystemWindowBackground;
};

}  // namespace ktrv::controls
