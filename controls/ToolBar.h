#pragma once

#include <functional>
#include <vector>

#include "controls/Control.h"
#include "controls/Image.h"

namespace ktrv::controls {

class TextBox;
class Label;

class ToolBarPeer : public ControlPeer {
 public:
  virtual void ButtonsChanged() = 0;
};

/// A flat toolbar in a cool bar at the top edge of the form, with an optional second band for a
/// labelled text box. Its bounds are ignored; its height is known after Realise.
class ToolBar final : public ControlOf<ToolBar, ToolBarPeer> {
 public:
  struct Button {
    String Key{};
    String Caption{};
    String ToolTip{};
    Image Picture = Image::None;
    bool Enabled = true;
    bool DropDown = false;  ///< has an arrow that raises ButtonDropDown
  };

  explicit ToolBar(Form& form);

  std::function<void(const String& key)> ButtonClick;
  /// The button's arrow was pressed. \param x, y where to show a menu, in twips in the form's
  /// client area
  std::function<void(const String& key, int x, int y)> ButtonDropDown;

  void AddButton(Button button);
  const std::vector<Button>& Buttons() const { return buttons_; }
  /// \throws Error ElementNotFound
  void SetButtonEnabled(StringView key, bool enabled);

  /// Puts the label and the box into the second band of the cool bar.
  void SetBand(Label& label, TextBox& box);
  Label* BandLabel() const { return bandLabel_; }
  TextBox* BandBox() const { return bandBox_; }

  /// Clicks the button with this key, unless it or the bar is disabled. \throws Error
  /// ElementNotFound
  void UserClicks(StringView key);
  void UserDropsDown(StringView key, int x, int y);

 private:
  std::vector<Button> buttons_;
  Label* bandLabel_ = nullptr;
  TextBox* bandBox_ = nullptr;
};

}  // namespace ktrv::controls
