#include "controls/CommandButton.h"

#include <utility>

#include "controls/Form.h"

namespace ktrv::controls {

CommandButton::CommandButton(Form& form, Rectangle bounds, String caption, Key key)
    : ControlOf(form, bounds), caption_(std::move(caption)), key_(key) {}

void CommandButton::SetCaption(String caption) {
  caption_ = std::move(caption);
  if (peer_) peer_->TextChanged();
}

void CommandButton::UserClicks() {
  if (Parent().IsWorking()) {
    if (Parent().StopButton() == this) Parent().UserStops();
    return;
  }
  if (Enabled() && Visible() && Click) Click();
}

}  // namespace ktrv::controls
