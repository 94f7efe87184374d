#pragma once

#include "controls/DatePicker.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class DatePickerWindow final : public Peer<controls::DatePickerPeer> {
 public:
  DatePickerWindow(FormWindow& form, controls::DatePicker& control);
  void ValueChanged() override;
  std::optional<LRESULT> OnNotify(NMHDR& header) override;
  void FinishTyping() override;

 private:
  controls::DatePicker& picker_;
};

}  // namespace ktrv::windows
