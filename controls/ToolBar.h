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

/// A flat toolbar in a cool bar across the form's top, with an optional second band that holds a
/// labelled text box. It lies at the form's top edge whatever its bounds say; its height is known
/// after Realise.
class ToolBar final : public ControlOf<ToolBarPeer> {
 public:
  struct Button {
    String Key{};
    String Caption{};
    String ToolTip{};
    Image Picture = Image::None;
    bool Enabled = true;
    bool DropDown = false;  ///< an arrow beside it that reports ButtonDropDown
  };

  explicit ToolBar(Form& form);

  std::function<void(const String& key)> ButtonClick;
  /// The button's arrow was pressed; a menu may be shown at (x, y), twips from the form's inner
  /// corner.
  std::function<void(const String& key, int x, int y)> ButtonDropDown;

  void AddButton(Button button);
  const std::vector<Button>& Buttons() const { return buttons_; }
  /// \throws Error ElementNotFound
  void SetButtonEnabled(StringView key, bool enabled);

  /// Puts the label and the box into the cool bar's second band.
  void SetBand(Label& label, TextBox& box);
  Label* BandLabel() const { return bandLabel_; }
  TextBox* BandBox() const { return bandBox_; }

  /// Clicks the button of this key unless it or the bar is disabled. \throws Error ElementNotFound
  void UserClicks(StringView key);
  void UserDropsDown(StringView key, int x, int y);

  void Realise(PeerFactory& factory) override;

 private:
  std::vector<Button> buttons_;
  Label* bandLabel_ = nullptr;
  TextBox* bandBox_ = nullptr;
};

}  // namespace ktrv::controls
