#include "windows/controls/WindowFactory.h"

#include "windows/controls/CheckBoxWindow.h"
#include "windows/controls/ComboBoxWindow.h"
#include "windows/controls/CommandButtonWindow.h"
#include "windows/controls/DatePickerWindow.h"
#include "windows/controls/FlexGridWindow.h"
#include "windows/controls/FrameWindow.h"
#include "windows/controls/LabelWindow.h"
#include "windows/controls/PictureBoxWindow.h"
#include "windows/controls/ProgressBarWindow.h"
#include "windows/controls/StatusBarWindow.h"
#include "windows/controls/TextBoxWindow.h"
#include "windows/controls/ToolBarWindow.h"
#include "windows/controls/TreeViewWindow.h"
#include "windows/controls/UpDownWindow.h"

namespace ktrv::windows {

std::unique_ptr<controls::FlexGridPeer> WindowFactory::Make(controls::FlexGrid& control) {
  return std::make_unique<FlexGridWindow>(form_, control);
}

std::unique_ptr<controls::LabelPeer> WindowFactory::Make(controls::Label& control) {
  return std::make_unique<LabelWindow>(form_, control);
}

std::unique_ptr<controls::PictureBoxPeer> WindowFactory::Make(controls::PictureBox& control) {
  return std::make_unique<PictureBoxWindow>(form_, control);
}

std::unique_ptr<controls::ProgressBarPeer> WindowFactory::Make(controls::ProgressBar& control) {
  return std::make_unique<ProgressBarWindow>(form_, control);
}

std::unique_ptr<controls::StatusBarPeer> WindowFactory::Make(controls::StatusBar& control) {
  return std::make_unique<StatusBarWindow>(form_, control);
}

std::unique_ptr<controls::TextBoxPeer> WindowFactory::Make(controls::TextBox& control) {
  return std::make_unique<TextBoxWindow>(form_, control);
}

std::unique_ptr<controls::ToolBarPeer> WindowFactory::Make(controls::ToolBar& control) {
  return std::make_unique<ToolBarWindow>(form_, control);
}

std::unique_ptr<controls::TreeViewPeer> WindowFactory::Make(controls::TreeView& control) {
  return std::make_unique<TreeViewWindow>(form_, control);
}

std::unique_ptr<controls::CheckBoxPeer> WindowFactory::Make(controls::CheckBox& control) {
  return std::make_unique<CheckBoxWindow>(form_, control);
}

std::unique_ptr<controls::ComboBoxPeer> WindowFactory::Make(controls::ComboBox& control) {
  return std::make_unique<ComboBoxWindow>(form_, control);
}

std::unique_ptr<controls::CommandButtonPeer> WindowFactory::Make(controls::CommandButton& control) {
  return std::make_unique<CommandButtonWindow>(form_, control);
}

std::unique_ptr<controls::DatePickerPeer> WindowFactory::Make(controls::DatePicker& control) {
  return std::make_unique<DatePickerWindow>(form_, control);
}

std::unique_ptr<controls::FramePeer> WindowFactory::Make(controls::Frame& control) {
  return std::make_unique<FrameWindow>(form_, control);
}

std::unique_ptr<controls::UpDownPeer> WindowFactory::Make(controls::UpDown& control) {
  return std::make_unique<UpDownWindow>(form_, control);
}

}  // namespace ktrv::windows
