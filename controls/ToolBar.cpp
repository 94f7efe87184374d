#include "controls/ToolBar.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"

namespace ktrv::controls {
namespace {

template <class Buttons>
auto& Find(Buttons& buttons, StringView key) {
  const auto found = std::find_if(buttons.begin(), buttons.end(),
                                  [&](const auto& button) { return button.Key == key; });
  if (found == buttons.end()) throw Error(ErrorNumber::ElementNotFound);
  return *found;
}

}  // namespace

ToolBar::ToolBar(Form& form) : ControlOf(form, {}) {}

void ToolBar::AddButton(Button button) {
  buttons_.push_back(std::move(button));
  if (peer_) peer_->ButtonsChanged();
}

void ToolBar::SetButtonEnabled(StringView key, bool enabled) {
  Find(buttons_, key).Enabled = enabled;
  if (peer_) peer_->ButtonsChanged();
}

void ToolBar::SetBand(Label& label, TextBox& box) {
  bandLabel_ = &label;
  bandBox_ = &box;
}

void ToolBar::UserClicks(StringView key) {
  const Button& button = Find(buttons_, key);
  if (Enabled() && button.Enabled && ButtonClick) ButtonClick(button.Key);
}

void ToolBar::UserDropsDown(StringView key, int x, int y) {
  const Button& button = Find(buttons_, key);
  if (Enabled() && button.Enabled && button.DropDown && ButtonDropDown) {
    ButtonDropDown(button.Key, x, y);
  }
}

}  // namespace ktrv::controls
