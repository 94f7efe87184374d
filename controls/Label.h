#pragma once

#include "controls/Control.h"

namespace ktrv::controls {

class LabelPeer : public ControlPeer {};

/// A text that labels the next control. "&" marks the access key, which moves the focus there.
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
