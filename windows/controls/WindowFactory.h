#pragma once

#include "controls/PeerFactory.h"

namespace ktrv::windows {

class FormWindow;

/// Creates the windows of a form's controls. Each Make is defined in the source of its window.
class WindowFactory final : public controls::PeerFactory {
 public:
  explicit WindowFactory(FormWindow& form) : form_(form) {}

  std::unique_ptr<controls::FlexGridPeer> Make(controls::FlexGrid& control) override;
  std::unique_ptr<controls::LabelPeer> Make(controls::Label& control) override;
  std::unique_ptr<controls::PictureBoxPeer> Make(controls::PictureBox& control) override;
  std::unique_ptr<controls::ProgressBarPeer> Make(controls::ProgressBar& control) override;
  std::unique_ptr<controls::StatusBarPeer> Make(controls::StatusBar& control) override;
  std::unique_ptr<controls::TextBoxPeer> Make(controls::TextBox& control) override;
  std::unique_ptr<controls::ToolBarPeer> Make(controls::ToolBar& control) override;
  std::unique_ptr<controls::TreeViewPeer> Make(controls::TreeView& control) override;
  std::unique_ptr<controls::CheckBoxPeer> Make(controls::CheckBox& control) override;
  std::unique_ptr<controls::ComboBoxPeer> Make(controls::ComboBox& control) override;
  std::unique_ptr<controls::CommandButtonPeer> Make(controls::CommandButton& control) override;
  std::unique_ptr<controls::DatePickerPeer> Make(controls::DatePicker& control) override;
  std::unique_ptr<controls::FramePeer> Make(controls::Frame& control) override;
  std::unique_ptr<controls::UpDownPeer> Make(controls::UpDown& control) override;

 private:
  FormWindow& form_;
};

}  // namespace ktrv::windows
