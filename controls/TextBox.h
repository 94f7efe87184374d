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
  /// A text of several characters is about to come in, however: the keys and the menu that paste,
  /// an input method. The handler may change it, or empty it to refuse it.
  std::function<void(String& text)> Insertion;

  const String& Text() const { return text_; }
  /// Sets the text (longer than maxLength is allowed, as in any Windows program) and reports Change
  /// when it differs.
  void SetText(String text);
  int MaxLength() const { return maxLength_; }
  /// The text cut at maxLength as a user's would be, without splitting a surrogate pair.
  String Fitting(StringView text) const;

  /// As the form or UserSelects set them; a display need not tell all that its user marks.
  int SelectionStart() const { return selectionStart_; }
  int SelectionLength() const { return selectionLength_; }
  void Select(int start, int length);

  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color);

  /// Grey text shown while the box is empty.
  String Cue;

  /// What the box takes of a text that is to come in, typed, pasted or composed: as KeyPress leaves
  /// one unit, and Insertion more than one; empty when it is refused. A display that inserts texts
  /// by itself must ask here for each.
  String Admitted(StringView text) const;
  /// The user replaced the selected text by this one, however: what is Admitted of it, cut at
  /// maxLength without splitting a surrogate pair. Nothing happens to a text that is refused.
  void UserTypes(StringView text);
  /// The user marked this on the display; the peer is not told.
  void UserSelects(int start, int length);
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
