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

/// A single-line text box.
class TextBox final : public ControlOf<TextBox, TextBoxPeer> {
 public:
  /// \param maxLength maximum UTF-16 units for user input; 0: unlimited
  TextBox(Form& form, Rectangle bounds, int maxLength = 0);

  std::function<void()> Change;
  /// Raised before a character is inserted. The handler may set the code to 0 to discard it.
  std::function<void(std::int16_t& code)> KeyPress;
  /// Raised before a text of several characters is inserted (paste, input method). The handler may
  /// change it, or clear it to reject it.
  std::function<void(String& text)> Insertion;
  /// Completes what the user has typed: given the text of the box, returns a longer one that starts
  /// with it, or any other text for none. Asked after each character typed at the end.
  std::function<String(StringView typed)> Completion;

  const String& Text() const { return text_; }
  /// Sets the text and raises Change if it differs. It may be longer than maxLength.
  void SetText(String text);
  int MaxLength() const { return maxLength_; }
  /// The text truncated to maxLength without splitting a surrogate pair.
  String Fitting(StringView text) const;

  /// As last set by Select, UserSelects or an insertion; a display need not report every selection
  /// of the user.
  int SelectionStart() const { return selectionStart_; }
  int SelectionLength() const { return selectionLength_; }
  void Select(int start, int length);

  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color);

  /// Cue banner: grey text shown while the box is empty.
  String Cue;

  /// What of a text may be inserted: filters a single unit by KeyPress, a longer text by Insertion.
  /// Empty if rejected. A display that inserts text itself must call this for each insertion.
  String Admitted(StringView text) const;
  /// The user replaced the selection by this text. Inserts what is Admitted, truncated to maxLength
  /// without splitting a surrogate pair. No effect for a rejected text.
  void UserTypes(StringView text);
  /// The user has typed a character at the end of the text. Appends what Completion adds to it and
  /// selects it: typing goes on over it, and Backspace and Delete remove it. What was typed stays.
  void CompleteTyped();
  /// The user changed the selection. Does not notify the peer.
  void UserSelects(int start, int length);
  /// The box on the display now has this text. An unpaired surrogate caused by truncation is
  /// removed.
  void UserChanges(String text);

 private:
  String text_;
  int maxLength_;
  int selectionStart_ = 0;
  int selectionLength_ = 0;
  std::uint32_t backColor_ = kSystemWindowBackground;
};

}  // namespace ktrv::controls
