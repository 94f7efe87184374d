#include "controls/Frame.h"

#include <utility>

#include "controls/PeerFactory.h"

namespace ktrv::controls {

Frame::Frame(Form& form, Rectangle bounds, String caption)
    : ControlOf(form, bounds), caption_(std::move(caption)) {}

void Frame::Realise(PeerFactory& factory) {
  peer_ = factory.Make(*this);
}

}  // namespace ktrv::controls
