#pragma once

#include <memory>

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/CommandButton.h"
#include "controls/DatePicker.h"
#include "controls/FlexGrid.h"
#include "controls/Frame.h"
#include "controls/Label.h"
#include "controls/PictureBox.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "controls/TextBox.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"
#include "controls/UpDown.h"

namespace ktrv::controls {

/// Makes the peers of one form's controls. A peer must not outlive its control.
class PeerFactory {
 public:
  virtual ~PeerFactory() = default;

  virtual std::unique_ptr<FlexGridPeer> Make(FlexGrid& control) = 0;
  virtual std::unique_ptr<LabelPeer> Make(Label& control) = 0;
  virtual std::unique_ptr<PictureBoxPeer> Make(PictureBox& control) = 0;
  virtual std::unique_ptr<ProgressBarPeer> Make(ProgressBar& control) = 0;
  virtual std::unique_ptr<StatusBarPeer> Make(StatusBar& control) = 0;
  virtual std::unique_ptr<TextBoxPeer> Make(TextBox& control) = 0;
  virtual std::unique_ptr<ToolBarPeer> Make(ToolBar& control) = 0;
  virtual std::unique_ptr<TreeViewPeer> Make(TreeView& control) = 0;

  // Without a window of their own on displays that do not show them yet.
  virtual std::unique_ptr<CheckBoxPeer> Make(CheckBox&) { return nullptr; }
  virtual std::unique_ptr<ComboBoxPeer> Make(ComboBox&) { return nullptr; }
  virtual std::unique_ptr<CommandButtonPeer> Make(CommandButton&) { return nullptr; }
  virtual std::unique_ptr<DatePickerPeer> Make(DatePicker&) { return nullptr; }
  virtual std::unique_ptr<FramePeer> Make(Frame&) { return nullptr; }
  virtual std::unique_ptr<UpDownPeer> Make(UpDown&) { return nullptr; }
};

}  // namespace ktrv::controls
