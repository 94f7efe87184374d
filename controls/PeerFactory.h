#pragma once

#include <memory>

namespace ktrv::controls {

class CheckBox;
class CheckBoxPeer;
class ComboBox;
class ComboBoxPeer;
class CommandButton;
class CommandButtonPeer;
class DatePicker;
class DatePickerPeer;
class FlexGrid;
class FlexGridPeer;
class Frame;
class FramePeer;
class Label;
class LabelPeer;
class PictureBox;
class PictureBoxPeer;
class ProgressBar;
class ProgressBarPeer;
class StatusBar;
class StatusBarPeer;
class TextBox;
class TextBoxPeer;
class ToolBar;
class ToolBarPeer;
class TreeView;
class TreeViewPeer;
class UpDown;
class UpDownPeer;

/// Creates the peers of a form's controls. A peer must not outlive its control.
class PeerFactory {
 public:
  virtual ~PeerFactory() = default;

  virtual std::unique_ptr<CheckBoxPeer> Make(CheckBox& control) = 0;
  virtual std::unique_ptr<ComboBoxPeer> Make(ComboBox& control) = 0;
  virtual std::unique_ptr<CommandButtonPeer> Make(CommandButton& control) = 0;
  virtual std::unique_ptr<DatePickerPeer> Make(DatePicker& control) = 0;
  virtual std::unique_ptr<FlexGridPeer> Make(FlexGrid& control) = 0;
  virtual std::unique_ptr<FramePeer> Make(Frame& control) = 0;
  virtual std::unique_ptr<LabelPeer> Make(Label& control) = 0;
  virtual std::unique_ptr<PictureBoxPeer> Make(PictureBox& control) = 0;
  virtual std::unique_ptr<ProgressBarPeer> Make(ProgressBar& control) = 0;
  virtual std::unique_ptr<StatusBarPeer> Make(StatusBar& control) = 0;
  virtual std::unique_ptr<TextBoxPeer> Make(TextBox& control) = 0;
  virtual std::unique_ptr<ToolBarPeer> Make(ToolBar& control) = 0;
  virtual std::unique_ptr<TreeViewPeer> Make(TreeView& control) = 0;
  virtual std::unique_ptr<UpDownPeer> Make(UpDown& control) = 0;
};

}  // namespace ktrv::controls
