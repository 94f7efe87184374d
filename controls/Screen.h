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

/// The display interface for forms. Call it on the user-interface thread, except Post.
class Screen {
 public:
  virtual ~Screen() = default;

  /// Creates the form's window and the peers of its controls (Control::Realise), hidden. \return
  /// null if this display shows no windows
  virtual std::unique_ptr<FormPeer> Realise(Form& form) = 0;

  /// Shows a modal message box over the thread's active window. \return the pressed button. \param
  /// style icon and buttons (MessageStyle)
  virtual std::int16_t ShowMessage(StringView text, StringView title, std::int32_t style) = 0;

  /// Shows the menu and runs the selected item's Click before it returns. \param at twips in the
  /// form's client area; nullopt: at the pointer
  struct Point {
    int X = 0;
    int Y = 0;
  };
  virtual void ShowMenu(Form& form, Menu& menu, std::optional<Point> at) = 0;

  /// The text of the clipboard; nullopt if it holds none.
  virtual std::optional<String> ClipboardText() = 0;
  virtual void SetClipboardText(StringView text) = 0;

  /// Runs the closure later on the user-interface thread. Thread-safe.
  virtual void Post(std::function<void()> closure) = 0;

  virtual const Language& UserLanguage() const = 0;
};

}  // namespace ktrv::controls
