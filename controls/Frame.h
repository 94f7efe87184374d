#pragma once

#include "controls/Control.h"

namespace ktrv::controls {

class FramePeer : public ControlPeer {};

/// A group box. The controls inside are constructed after it, with bounds relative to the form;
/// those within its bounds belong to it.
class Frame final : public ControlOf<FramePeer> {
 public:
  Frame(Form& form, Rectangle bounds, String caption);

  const String& Caption() const { return caption_; }

  void Realise(PeerFactory& factory) override;

 private:
  String caption_;
};

}  // namespace ktrv::controls
