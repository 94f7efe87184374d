#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <string>

#include "controls/Control.h"
#include "controls/Form.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/FormWindow.h"
#include "windows/controls/Win32Screen.h"

namespace ktrv::windows {

/// Hands messages out as any host does, knowing nothing of our forms, until the condition holds.
/// \return false after thirty seconds
bool PumpUntil(const std::function<bool()>& condition);

/// Hands out what waits now.
void Pump();

/// The window of a control.
template <class Self, class PeerType>
HWND WindowOf(const controls::ControlOf<Self, PeerType>& control) {
  auto* window = dynamic_cast<ControlWindow*>(control.Display());
  return window ? window->Handle() : nullptr;
}

inline HWND WindowOf(const controls::Form& form) {
  return FormWindow::Of(form)->Handle();
}

/// Presses and releases a key as the keyboard does, at the window that has the focus.
void PressKey(WORD key);

/// Clicks at a place in pixels of the window.
void LeftClick(HWND window, POINT place);
void RightClick(HWND window, POINT place);

}  // namespace ktrv::windows
