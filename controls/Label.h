#pragma once

#include "controls/Control.h"

namespace ktrv::controls {

class LabelPeer : public ControlPeer {};

/// Text that names the control made after it; "&" before a letter makes Alt with it go there.
class Label final : public ControlOf<LabelPeer> {
 public:
  Label(Form& form, Rectangle bounds, String caption);
  const String& Caption() const { return caption_; }
  void SetCaption(String caption);
  void Realise(PeerFactory& factory) override;

 private:
  String caption_;
};

}  // namespace ktrv::controls
