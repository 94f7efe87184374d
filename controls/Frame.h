#pragma once

#include "controls/Control.h"

namespace ktrv::controls {

class FramePeer : public ControlPeer {};

/// A captioned line around controls that belong together. They are made after the frame, with
/// bounds of the form's like all others, so that what stands in the frame is what lies inside it.
class Frame final : public ControlOf<FramePeer> {
 public:
  Frame(Form& form, Rectangle bounds, String caption);

  const String& Caption() const { return caption_; }

  void Realise(PeerFactory& factory) override;

 private:
  String caption_;
};

}  // namespace ktrv::controls
