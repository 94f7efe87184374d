#pragma once

#include <memory>

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/CommandButton.h"
#include "controls/DatePicker.h"
#include "controls/FlexGrid.h"
#include "controls/Frame.h"
#include "controls/Label.h"
#include "controls/PeerFactory.h"
#include "controls/PictureBox.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "controls/TextBox.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"
#include "controls/UpDown.h"

namespace ktrv::tests {

/// Makes no windows. A test derives from it to look at the windows of some controls.
struct NoPeers : controls::PeerFactory {
  template <class Peer>
  using Window = std::unique_ptr<Peer>;
  Window<controls::CheckBoxPeer> Make(controls::CheckBox&) override { return nullptr; }
  Window<controls::ComboBoxPeer> Make(controls::ComboBox&) override { return nullptr; }
  Window<controls::CommandButtonPeer> Make(controls::CommandButton&) override { return nullptr; }
  Window<controls::DatePickerPeer> Make(controls::DatePicker&) override { return nullptr; }
  Window<controls::FlexGridPeer> Make(controls::FlexGrid&) override { return nullptr; }
  Window<controls::FramePeer> Make(controls::Frame&) override { return nullptr; }
  Window<controls::LabelPeer> Make(controls::Label&) override { return nullptr; }
  Window<controls::PictureBoxPeer> Make(controls::PictureBox&) override { return nullptr; }
  Window<controls::ProgressBarPeer> Make(controls::ProgressBar&) override { return nullptr; }
  Window<controls::StatusBarPeer> Make(controls::StatusBar&) override { return nullptr; }
  Window<controls::TextBoxPeer> Make(controls::TextBox&) override { return nullptr; }
  Window<controls::ToolBarPeer> Make(controls::ToolBar&) override { return nullptr; }
  Window<controls::TreeViewPeer> Make(controls::TreeView&) override { return nullptr; }
  Window<controls::UpDownPeer> Make(controls::UpDown&) override { return nullptr; }
};

}  // namespace ktrv::tests
