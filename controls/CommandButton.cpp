#include "controls/CommandButton.h"

#include <utility>

#include "controls/PeerFactory.h"

namespace ktrv::controls {

CommandButton::CommandButton(Form& form, Rectangle bounds, String caption, Key key)
    : ControlOf(form, bounds), caption_(std::move(caption)), key_(key) {}

void CommandButton::UserClicks() {
  if (Enabled() && Visible() && Click) Click();
}

void CommandButton::Realise(PeerFactory& factory) {
  peer_ = factory.Make(*this);
}

}  // namespace ktrv::controls
