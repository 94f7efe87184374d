#include "windows/controls/ModalDisabling.h"

#include "windows/controls/Guard.h"

namespace ktrv::windows {

ModalDisabling::ModalDisabling(HWND modal) : modal_(modal), active_(GetActiveWindow()) {
  EnumThreadWindows(GetCurrentThreadId(), &Disable, reinterpret_cast<LPARAM>(this));
}

ModalDisabling::~ModalDisabling() {
  // The last one disabled first, so that the windows come back in the order in which they went.
  for (auto window = disabled_.rbegin(); window != disabled_.rend(); ++window) {
    if (IsWindow(*window)) EnableWindow(*window, TRUE);
  }
  const bool wasActive = GetActiveWindow() == modal_;
  if (wasActive && active_ != modal_ && IsWindow(active_) && IsWindowVisible(active_)) {
    SetActiveWindow(active_);
  }
}

BOOL CALLBACK ModalDisabling::Disable(HWND window, LPARAM self) {
  return Guard(TRUE, [&] {
    auto& disabling = *reinterpret_cast<ModalDisabling*>(self);
    if (window != disabling.modal_ && IsWindowVisible(window) && IsWindowEnabled(window)) {
      disabling.disabled_.push_back(window);
      EnableWindow(window, FALSE);
    }
    return TRUE;
  });
}

}  // namespace ktrv::windows
