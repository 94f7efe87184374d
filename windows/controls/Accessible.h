#pragma once

#include <windows.h>
#include <oleacc.h>

#include <string>

namespace ktrv::windows {

class ControlWindow;

/// What screen readers are told of a control, or of a part of it that is no window of its own: a
/// row, a node, a button of a toolbar, a panel.
struct AccessiblePart {
  LONG Role = ROLE_SYSTEM_CLIENT;
  LONG State = 0;  ///< STATE_SYSTEM_...
  std::wstring Name{};
  std::wstring Value{};
  std::wstring Description{};
  RECT Place{};  ///< pixels of the control's window
};

/// The name of a control for screen readers: its own, its caption, or that of the label before it.
std::wstring AccessibleName(const ControlWindow& control);

/// A caption as it is spoken: without marks of access keys and outer blanks.
std::wstring SpokenCaption(const std::wstring& caption);

/// Answers WM_GETOBJECT for the window that shows a control. \return 0 where the system describes
/// it: the kind of window is known and has the control's name
LRESULT DescribeControl(HWND window, WPARAM wParam, LPARAM lParam);

}  // namespace ktrv::windows
