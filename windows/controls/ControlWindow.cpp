#include "windows/controls/ControlWindow.h"

#include "common/Error.h"
#include "windows/base/Guard.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/controls/FormWindow.h"

namespace ktrv::windows {

namespace {

constexpr UINT_PTR kSubclassId = 0x4B54;
constexpr wchar_t kProperty[] = L"KTRVAddressBookControl";

}  // namespace

ControlWindow::ControlWindow(FormWindow& form, controls::Control& control)
    : form_(form), control_(control) {
  form_.Add(*this);
}

ControlWindow::~ControlWindow() {
  form_.Remove(*this);
  if (HWND window = std::exchange(handle_, nullptr)) {
    RemovePropW(window, kProperty);
    RemoveWindowSubclass(window, &Procedure, kSubclassId);
    DestroyWindow(window);
  }
}

ControlWindow* ControlWindow::From(HWND window) {
  return static_cast<ControlWindow*>(GetPropW(window, kProperty));
}

void ControlWindow::Create(const wchar_t* windowClass, DWORD style, DWORD exStyle, HWND parent) {
  const RECT place = CurrentScale().ToPixels(control_.Bounds());
  style |= WS_CHILD | WS_CLIPSIBLINGS;
  if (control_.Visible()) style |= WS_VISIBLE;
  if (!control_.Enabled()) style |= WS_DISABLED;
  const std::wstring name = ToWide(control_.AccessibleName);
  handle_ = CreateWindowExW(exStyle, windowClass, name.c_str(), style, place.left, place.top,
                            place.right - place.left, place.bottom - place.top + ExtraHeight(),
                            parent ? parent : form_.Handle(), nullptr, ThisModule(), nullptr);
  if (!handle_)
    throw Error(ErrorNumber::OutOfMemory, u"Can't create a window.", {}, GetLastError());
  SetPropW(handle_, kProperty, this);
  SetWindowSubclass(handle_, &Procedure, kSubclassId, 0);
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(form_.Font()), 0);
}

Scale ControlWindow::CurrentScale() const {
  return form_.CurrentScale();
}

void ControlWindow::Place() {
  // A window inside another control's is placed by that control.
  if (!handle_ || GetParent(handle_) != form_.Handle()) return;
  const RECT place = CurrentScale().ToPixels(control_.Bounds());
  SetWindowPos(handle_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top + ExtraHeight(), SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::ShowVisible() {
  if (handle_) ShowWindow(handle_, control_.Visible() ? SW_SHOWNA : SW_HIDE);
}

void ControlWindow::ShowEnabled() {
  if (!handle_) return;
  // A disabled window with the focus would swallow all keys.
  if (!control_.Enabled() && GetFocus() == handle_) form_.FocusNext();
  EnableWindow(handle_, control_.Enabled());
}

void ControlWindow::ShowText(StringView text) {
  if (handle_) SetWindowTextW(handle_, ToWide(text).c_str());
}

void ControlWindow::TakeFocus() {
  if (handle_) form_.Focus(handle_);
}

void ControlWindow::PaintNow() {
  if (handle_) RedrawWindow(handle_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
}

void ControlWindow::ApplyScale() {
  if (!handle_) return;
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(form_.Font()), TRUE);
  Place();
  OnScaleChanged();
}

void ControlWindow::ReportFocus(bool has, HWND other) {
  // If the focus leaves the form (message box, other program), the control still has it within the
  // form.
  if (!has && !IsChild(form_.Handle(), other)) return;
  if (has) form_.RememberFocus(handle_);
  if (control_.HasFocus() != has) control_.UserFocuses(has);
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR, DWORD_PTR) {
  const auto handled = Guard<std::optional<LRESULT>>(std::nullopt, [&]() -> std::optional<LRESULT> {
    ControlWindow* self = From(window);
    if (!self) return std::nullopt;
    if (message == WM_NCDESTROY) {
      RemovePropW(window, kProperty);
      RemoveWindowSubclass(window, &Procedure, kSubclassId);
      self->handle_ = nullptr;
      return std::nullopt;
    }
    if (message == WM_GETOBJECT) {
      if (const LRESULT object = DescribeControl(window, wParam, lParam)) return object;
    }
    if (self->form_.IsLocked(window, message)) return 0;
    if (message == WM_NOTIFY || message == WM_COMMAND) {
      // From child windows of this one. Containers forward only one of the two themselves.
      if (const auto answer = FormWindow::Reflect(message, wParam, lParam)) return answer;
    }
    return self->OnMessage(message, wParam, lParam);
  });
  if (handled) return *handled;
  const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
  // The form's code called here may destroy this window, so it is looked up again.
  Guard(0, [&] {
    if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
      if (ControlWindow* self = From(window)) {
        self->ReportFocus(message == WM_SETFOCUS, reinterpret_cast<HWND>(wParam));
      }
    }
    if (ControlWindow* self = From(window)) self->AfterMessage(message);
    return 0;
  });
  return result;
}

}  // namespace ktrv::windows
