#pragma once

#include <utility>

#include "controls/Control.h"

namespace ktrv::controls {

class FramePeer : public ControlPeer {};

/// A group box. The controls inside are constructed after it, with bounds relative to the form;
/// those within its bounds belong to it.
class Frame final : public ControlOf<Frame, FramePeer> {
 public:
  Frame(Form& form, Rectangle bounds, String caption)
      : ControlOf(form, bounds), caption_(std::move(caption)) {}

  const String& Caption() const { return caption_; }

 private:
  String caption_;
};

}  // namespace ktrv::controls
