#include "windows/controls/Win32Screen.h"

#include <commctrl.h>

#include "controls/Control.h"
#include "controls/Form.h"
#include "windows/base/WideText.h"
#include "windows/controls/Clipboard.h"
#include "windows/controls/FormWindow.h"
#include "windows/controls/ModalDisabling.h"
#include "windows/controls/PopupMenu.h"
#include "windows/controls/VisualStyle.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

Win32Screen::Win32Screen() : queue_(PostQueue::Make()) {}

Win32Screen::~Win32Screen() {
  queue_->Close();
}

std::unique_ptr<controls::FormPeer> Win32Screen::Realise(controls::Form& form) {
  INITCOMMONCONTROLSEX classes{sizeof classes,
                               ICC_WIN95_CLASSES | ICC_COOL_CLASSES | ICC_DATE_CLASSES};
  const VisualStyle style;
  InitCommonControlsEx(&classes);
  auto window = std::make_unique<FormWindow>(form);
  WindowFactory factory(*window);
  try {
    for (controls::Control* control : form.Controls()) control->Realise(factory);
    window->Realised();
  } catch (...) {
    for (controls::Control* control : form.Controls()) control->Unrealise();
    throw;
  }
  return window;
}

std::int16_t Win32Screen::ShowMessage(StringView text, StringView title, std::int32_t style) {
  const VisualStyle looks;
  HWND owner = GetActiveWindow();
  const ModalDisabling* open = ModalDisabling::Innermost();
  if (owner && !IsWindowEnabled(owner) && open && open->Modal()) owner = open->Modal();
  const ModalDisabling others(nullptr, owner);
  // Without an owner the thread's windows would stay enabled.
  const UINT modality = owner ? 0U : static_cast<UINT>(MB_TASKMODAL | MB_SETFOREGROUND);
  return static_cast<std::int16_t>(MessageBoxW(owner, ToWide(text).c_str(), ToWide(title).c_str(),
                                               static_cast<UINT>(style) | modality));
}

void Win32Screen::ShowMenu(controls::Form& form, controls::Menu& menu, std::optional<Point> at) {
  const FormWindow* window = FormWindow::Of(form);
  if (!window) return;
  POINT place{};
  GetCursorPos(&place);
  if (at) {
    place = {window->CurrentScale().ToPixels(at->X), window->CurrentScale().ToPixels(at->Y)};
    ClientToScreen(window->Handle(), &place);
  }
  ShowPopupMenu(window->Handle(), menu, place);
}

std::optional<String> Win32Screen::ClipboardText() {
  return ReadClipboard();
}

void Win32Screen::SetClipboardText(StringView text) {
  WriteClipboard(text);
}

std::function<void(std::function<void()>)> Win32Screen::Poster() const {
  return [queue = queue_](std::function<void()> closure) { queue->Post(std::move(closure)); };
}

}  // namespace ktrv::windows
