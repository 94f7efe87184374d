#include "controls/Label.h"

#include <utility>

#include "controls/PeerFactory.h"

namespace ktrv::controls {

Label::Label(Form& form, Rectangle bounds, String caption)
    : ControlOf(form, bounds), caption_(std::move(caption)) {}

void Label::SetCaption(String caption) {
  caption_ = std::move(caption);
  if (peer_) peer_->TextChanged();
}

void Label::Realise(PeerFactory& factory) {
  peer_ = factory.Make(*this);
}

}  // namespace ktrv::controls
