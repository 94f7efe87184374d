#include "windows/controls/FormWindow.h"

#include <windowsx.h>

#include "common/Error.h"
#include "controls/Color.h"
#include "controls/Control.h"
#include "windows/base/Guard.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowClass.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/MessageLoop.h"
#include "windows/controls/VisualStyle.h"

namespace ktrv::windows {

namespace {

constexpr wchar_t kClassName[] = L"KTRVAddressBookForm";
constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED

}  // namespace

FormWindow::FormWindow(controls::Form& form) : form_(form) {
  VisualStyle style;
  handle_ = CreateWindowExW(ExStyle(), ClassName(), ToWide(form.Caption()).c_str(), Style(),
                            CW_USEDEFAULT, CW_USEDEFAULT, 100, 100, nullptr, nullptr, ThisModule(),
                            nullptr);
  if (!handle_)
    throw Error(ErrorNumber::OutOfMemory, u"Can't create a window.", {}, GetLastError());
  SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  scale_ = Scale::Of(handle_);
  font_ = MessageFont(scale_);
  RenewIcons();
  SizeChanged();
}

FormWindow::~FormWindow() {
  disabling_.reset();
  if (HWND window = std::exchange(handle_, nullptr)) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    DestroyWindow(window);
  }
}

const wchar_t* FormWindow::ClassName() {
  static const WindowClass form(kClassName, &Procedure,
                                {.Cursor = IDC_ARROW, .Color = COLOR_BTNFACE});
  return form.Name();
}

FormWindow* FormWindow::From(HWND window) {
  if (!window || reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC)) != &Procedure) {
    return nullptr;
  }
  return reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

FormWindow* FormWindow::Of(const controls::Form& form) {
  struct Search {
    const controls::Form& Wanted;
    FormWindow* Found = nullptr;
    static BOOL CALLBACK Look(HWND window, LPARAM self) {
      auto& search = *reinterpret_cast<Search*>(self);
      FormWindow* candidate = From(window);
      if (candidate && &candidate->form_ == &search.Wanted) search.Found = candidate;
      return search.Found == nullptr;
    }
  } search{form};
  EnumThreadWindows(GetCurrentThreadId(), &Search::Look, reinterpret_cast<LPARAM>(&search));
  return search.Found;
}

void FormWindow::Realised() {
  for (ControlWindow* window : windows_) window->OnFormRealised();
  for (ControlWindow* window : windows_) window->OnFormResized();
}

void FormWindow::Add(ControlWindow& window) {
  windows_.push_back(&window);
}

void FormWindow::Remove(ControlWindow& window) {
  if (focus_ == window.Handle()) focus_ = nullptr;
  std::erase(windows_, &window);
}

std::optional<LRESULT> FormWindow::Reflect(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NOTIFY) {
    auto& header = *reinterpret_cast<NMHDR*>(lParam);
    if (ControlWindow* window = ControlWindow::From(header.hwndFrom)) {
      return window->OnNotify(header);
    }
  }
  if (message == WM_COMMAND && lParam != 0) {
    // Ignores a click sent before the form was disabled.
    const bool click = HIWORD(wParam) == BN_CLICKED;
    HWND sender = reinterpret_cast<HWND>(lParam);
    if (click && !IsWindowEnabled(GetAncestor(sender, GA_ROOT))) return 0;
    if (ControlWindow* window = ControlWindow::From(sender)) {
      const FormWindow& form = window->Owner();
      if (!form.IsWorking() || sender == form.StopButton()) window->OnCommand(HIWORD(wParam));
      return 0;
    }
  }
  return std::nullopt;
}

void FormWindow::CaptionChanged() {
  SetWindowTextW(handle_, ToWide(form_.Caption()).c_str());
}

void FormWindow::PointerChanged() {
  POINT pointer{};
  GetCursorPos(&pointer);
  HWND under = WindowFromPoint(pointer);
  if (under != handle_ && !IsChild(handle_, under)) return;
  // The shape must change without a mouse move.
  PostMessageW(under, WM_SETCURSOR, reinterpret_cast<WPARAM>(under),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  if (form_.Pointer() == controls::MousePointer::Hourglass) {
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
  }
}

void FormWindow::Show() {
  hidden_ = false;
  if (!std::exchange(placed_, true)) CenterOnMonitor();
  ModalDisabling* open = ModalDisabling::Innermost();
  if (open && open->Modal() != handle_) {
    ShowBehind(*open);
    return;
  }
  ShowWindow(handle_, IsIconic(handle_) ? SW_RESTORE : SW_SHOW);
  SetForegroundWindow(handle_);
  RestoreFocus();
  UpdateWindow(handle_);
}

void FormWindow::ShowBehind(ModalDisabling& open) {
  open.Add(handle_);
  if (IsIconic(handle_)) {
    ShowWindow(handle_, SW_SHOWNOACTIVATE);
  } else if (IsWindowVisible(handle_)) {
    return;
  }
  SetWindowPos(handle_, ModalDisabling::Front(), 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
  UpdateWindow(handle_);
}

void FormWindow::ShowModal() {
  // A dialog opened by one of our windows is owned by it and stays above it. Host windows own none
  // of ours.
  HWND opener = GetActiveWindow();
  if (From(opener) && opener != handle_) {
    SetWindowLongPtrW(handle_, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(opener));
  }
  disabling_.emplace(handle_);
  Show();
  RunMessages([this] { return hidden_; });
  if (!hidden_) Hide();
}

void FormWindow::Hide() {
  hidden_ = true;
  disabling_.reset();
  if (handle_) ShowWindow(handle_, SW_HIDE);
  // Wakes the modal loop.
  PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

LRESULT CALLBACK FormWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto handled = Guard<std::optional<LRESULT>>(std::nullopt, [&]() -> std::optional<LRESULT> {
    auto* self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self ? self->OnMessage(message, wParam, lParam) : std::nullopt;
  });
  return handled ? *handled : DefWindowProcW(window, message, wParam, lParam);
}

std::optional<LRESULT> FormWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      if (lParam == 0) PressButtonOf(LOWORD(wParam));
      return Reflect(message, wParam, lParam);
    case WM_NOTIFY:
      return Reflect(message, wParam, lParam);
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
      return BackgroundOf(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
    case WM_CLOSE:
      if (IsWindowEnabled(handle_)) form_.UserCloses();
      return 0;
    case WM_SIZE:
      OnSize(wParam);
      return 0;
    case WM_GETMINMAXINFO:
      LimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
      return 0;
    case WM_SETCURSOR:
      if (SetPointerShape(reinterpret_cast<HWND>(wParam), lParam)) return TRUE;
      return std::nullopt;
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE && !HIWORD(wParam)) RestoreFocus();
      return 0;
    case WM_NEXTDLGCTL:
      if (LOWORD(lParam)) {
        SetFocus(reinterpret_cast<HWND>(wParam));
      } else {
        FocusNext(wParam != 0);
      }
      return 0;
    case DM_GETDEFID:
      return 0;
    case kDpiChanged:
      OnScaleChanged(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      for (ControlWindow* window : windows_) {
        if (window->Handle()) SendMessageW(window->Handle(), message, wParam, lParam);
      }
      return std::nullopt;
    case WM_DESTROY:
      OnDestroyed();
      return 0;
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> FormWindow::BackgroundOf(HWND control, HDC target) {
  const ControlWindow* window = ControlWindow::From(control);
  const auto color = window ? window->BackColor() : std::nullopt;
  if (!color || *color == controls::kSystemWindowBackground) return std::nullopt;
  constexpr std::uint32_t kSystem = 0x80000000;
  const COLORREF shown = *color & kSystem ? GetSysColor(static_cast<int>(*color & 0xFF))
                                          : static_cast<COLORREF>(*color);
  SetBkColor(target, shown);
  SetDCBrushColor(target, shown);
  return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
}

bool FormWindow::SetPointerShape(HWND under, LPARAM lParam) const {
  if (LOWORD(lParam) != HTCLIENT || form_.Pointer() != controls::MousePointer::Hourglass) {
    return false;
  }
  if (IsWorking() && under == StopButton()) return false;
  SetCursor(LoadCursorW(nullptr, IDC_WAIT));
  return true;
}

void FormWindow::OnDestroyed() {
  // Destroyed by its owner or the host, not by us; the form must be unloaded.
  SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
  handle_ = nullptr;
  disabling_.reset();
  form_.Unload();
}

}  // namespace ktrv::windows
