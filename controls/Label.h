#pragma once

#include <utility>

#include "controls/Control.h"

namespace ktrv::controls {

class LabelPeer : public ControlPeer {};

/// A text that labels the next control. "&" marks the access key, which moves the focus there.
class Label final : public ControlOf<Label, LabelPeer> {
 public:
  Label(Form& form, Rectangle bounds, String caption)
      : ControlOf(form, bounds), caption_(std::move(caption)) {}

  const String& Caption() const { return caption_; }
  void SetCaption(String caption) {
    caption_ = std::move(caption);
    if (peer_) peer_->TextChanged();
  }

 private:
  String caption_;
};

}  // namespace ktrv::controls
