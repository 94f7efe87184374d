#pragma once

#include "controls/ComboBox.h"
#include "windows/controls/ControlWindow.h"

namespace ktrv::windows {

class ComboBoxWindow final : public Peer<controls::ComboBoxPeer> {
 public:
  ComboBoxWindow(FormWindow& form, controls::ComboBox& control);
  void ItemsChanged() override;
  void SelectionChanged() override;
  void BackColorChanged() override { PaintNow(); }
  void OnCommand(WORD code) override;
  std::optional<std::uint32_t> BackColor() const override { return combo_.BackColor(); }

 private:
  int ExtraHeight() const override;

  controls::ComboBox& combo_;
};

}  // namespace ktrv::windows
