#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "common/Text.h"
#include "controls/Language.h"

namespace ktrv::controls {

class Form;
class FormPeer;
struct Menu;

/// What a display must do for forms. Everything is called on the user-interface thread but Post.
class Screen {
 public:
  virtual ~Screen() = default;

  /// Makes the form's window and a peer for each of its controls (Control::Realise), not yet shown.
  /// Null when this display shows nothing.
  virtual std::unique_ptr<FormPeer> Realise(Form& form) = 0;

  /// Shows a modal message box above the thread's active window and returns the button pressed.
  /// \param style icon and buttons as Windows codes them (MessageStyle).
  virtual std::int16_t ShowMessage(StringView text, StringView title, std::int32_t style) = 0;

  /// Shows the menu and runs the chosen item's Click before it returns. \param at twips from the
  /// form's inner corner; nothing for the pointer's place.
  struct Point {
    int X = 0;
    int Y = 0;
  };
  virtual void ShowMenu(Form& form, Menu& menu, std::optional<Point> at) = 0;

  /// The clipboard's text; nothing when it holds none.
  virtual std::optional<String> ClipboardText() = 0;
  virtual void SetClipboardText(StringView text) = 0;

  /// Runs the closure later on the user-interface thread. Any thread may call it.
  virtual void Post(std::function<void()> closure) = 0;

  virtual const Language& UserLanguage() const = 0;
};

}  // namespace ktrv::controls
