#include "windows/controls/FormWindow.h"

#include <algorithm>

#include "common/Error.h"
#include "controls/Color.h"
#include "controls/CommandButton.h"
#include "controls/Control.h"
#include "controls/Label.h"
#include "windows/base/Guard.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowClass.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Keys.h"
#include "windows/controls/MessageLoop.h"
#include "windows/controls/Mnemonic.h"
#include "windows/controls/VisualStyle.h"

namespace ktrv::windows {

namespace {

constexpr wchar_t kClassName[] = L"KTRVAddressBookForm";
constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED
/// Runs a shortcut; wParam: key code, lParam: modifier keys.
constexpr UINT kShortcut = WM_APP + 1;

bool IsMenuOpen() {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  return GetGUIThreadInfo(GetCurrentThreadId(), &thread) && thread.flags & GUI_INMENUMODE;
}

/// \param owner the window whose forms, and visible windows of the host, get no owner
BOOL CALLBACK FreeFromOwner(HWND window, LPARAM owner) {
  if ((FormWindow::From(window) || IsWindowVisible(window)) &&
      GetWindow(window, GW_OWNER) == reinterpret_cast<HWND>(owner)) {
    SetWindowLongPtrW(window, GWLP_HWNDPARENT, 0);
  }
  return TRUE;
}

/// Black or white, whichever is readable on the color.
COLORREF TextColorOn(COLORREF color) {
  const int brightness = 3 * GetRValue(color) + 6 * GetGValue(color) + GetBValue(color);
  constexpr int kMiddle = 10 * 128;
  return brightness < kMiddle ? RGB(255, 255, 255) : RGB(0, 0, 0);
}

}  // namespace

FormWindow::FormWindow(controls::Form& form) : form_(form) {
  VisualStyle style;
  handle_ = CreateWindowExW(ExStyle(), ClassName(), ToWide(form.Caption()).c_str(), Style(),
                            CW_USEDEFAULT, CW_USEDEFAULT, 100, 100, nullptr, nullptr, ThisModule(),
                            nullptr);
  if (!handle_)
    throw Error(ErrorNumber::OutOfMemory, u"Can't create a window.", {}, GetLastError());
  SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  try {
    scale_ = Scale::Of(handle_);
    font_ = MessageFont(scale_);
    RenewIcons();
    SizeChanged();
  } catch (...) {
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
    throw;
  }
}

FormWindow::~FormWindow() {
  disabling_.reset();
  if (HWND window = std::exchange(handle_, nullptr)) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    // The system destroys a window together with its owner. A dialog that the host opened while
    // this one was active, one of ours or its own, must stay.
    EnumThreadWindows(GetCurrentThreadId(), &FreeFromOwner, reinterpret_cast<LPARAM>(window));
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
  // The focus and the access keys are always visible, not only after a key was used.
  SendMessageW(handle_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL),
               0);
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
  if (message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX) {
    return BackgroundOf(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
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
  // Minimised, it would leave its disabled opener without a way on.
  SetWindowLongPtrW(handle_, GWL_STYLE, GetWindowLongPtrW(handle_, GWL_STYLE) & ~WS_MINIMIZEBOX);
  hidden_ = false;
  disabling_.emplace(handle_);  // a host that is told so may unload this form
  if (!hidden_) {
    Show();
    RunMessages([this] { return hidden_; });
  }
  if (hidden_) {
    disabling_.reset();
  } else {
    Hide();
  }
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
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
      return Reflect(message, wParam, lParam);
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
    case kShortcut:
      if (IsWindowEnabled(handle_)) {
        form_.UserPresses(static_cast<std::int16_t>(wParam), static_cast<std::int16_t>(lParam));
      }
      return 0;
    case kDpiChanged:
      OnScaleChanged(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_SETTINGCHANGE:
      if (wParam == SPI_SETNONCLIENTMETRICS) RenewFont();
      [[fallthrough]];
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
  if (!(*color & kSystem) && IsHighContrast()) return std::nullopt;
  const COLORREF shown = *color & kSystem ? GetSysColor(static_cast<int>(*color & 0xFF))
                                          : static_cast<COLORREF>(*color);
  SetBkColor(target, shown);
  SetTextColor(target, TextColorOn(shown));
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

// Focus and keyboard.

void FormWindow::Focus(HWND control) {
  focus_ = control;
  if (IsWindowVisible(handle_) && IsWindowEnabled(handle_)) SetFocus(control);
}

void FormWindow::FocusNext(bool backward) {
  HWND next = GetNextDlgTabItem(handle_, GetFocus(), backward);
  if (!next) return;
  if (SendMessageW(next, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
    SendMessageW(next, EM_SETSEL, 0, -1);
  SetFocus(next);
}

const ControlWindow* FormWindow::LabelOf(const ControlWindow& control) const {
  const auto place = std::find(windows_.begin(), windows_.end(), &control);
  if (place == windows_.begin() || place == windows_.end()) return nullptr;
  const ControlWindow* before = *(place - 1);
  return dynamic_cast<const controls::Label*>(&before->Shown()) ? before : nullptr;
}

bool FormWindow::TakeMnemonic(wchar_t letter) {
  std::vector<HWND> handles;
  for (const ControlWindow* window : windows_) handles.push_back(window->Handle());
  if (PressMnemonic(handles, letter)) return true;
  return std::any_of(windows_.begin(), windows_.end(),
                     [letter](ControlWindow* window) { return window->TakeMnemonic(letter); });
}

bool FormWindow::TakeShortcut(const MSG& message) {
  const auto key = static_cast<std::int16_t>(message.wParam);
  const std::int16_t held = HeldKeys();
  const controls::Form::Shortcut* shortcut = form_.ShortcutOf(key, held);
  if (!shortcut || IsMenuOpen()) return false;
  // Posted, because the command may open a dialog, and no message loop may run inside the hook.
  if (shortcut->Repeats || !IsRepeated(message.lParam)) {
    PostMessageW(handle_, kShortcut, message.wParam, held);
  }
  return true;
}

void FormWindow::PressButtonOf(WORD command) {
  // The key was pressed before a modal window was opened or Form::Work began.
  if (!IsWindowEnabled(handle_) || IsWorking()) return;
  constexpr LRESULT kPushButton = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;
  HWND focus = GetFocus();
  if (command == IDOK && focus && SendMessageW(focus, WM_GETDLGCODE, 0, 0) & kPushButton) {
    SendMessageW(focus, BM_CLICK, 0, 0);
    return;
  }
  if (command == IDOK) {
    if (ControlWindow* typedIn = ControlWindow::From(focus)) typedIn->FinishTyping();
  }
  for (controls::Control* control : form_.Controls()) {
    auto* button = dynamic_cast<controls::CommandButton*>(control);
    if (!button) continue;
    if ((command == IDOK && button->IsDefault()) || (command == IDCANCEL && button->IsCancel())) {
      button->UserClicks();
      return;
    }
  }
}

bool FormWindow::TakeKeyWhileWorking(const MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (IsRepeated(message.lParam)) return true;
  const bool isEscape = message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
  const bool isLetter = message.message == WM_SYSKEYDOWN &&
                        IsMnemonicOf(StopButton(), static_cast<wchar_t>(message.wParam));
  if (isEscape || isLetter) form_.UserStops();
  return true;
}

bool FormWindow::IsLocked(HWND window, UINT message) const {
  if (!IsWorking() || window == StopButton()) return false;
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == BM_CLICK;
}

HWND FormWindow::StopButton() const {
  for (const ControlWindow* window : windows_) {
    if (&window->Shown() == form_.StopButton()) return window->Handle();
  }
  return nullptr;
}

void FormWindow::TakeInput() {
  TakeCloseCommand();
  // A window that requests painting endlessly must not block the work.
  constexpr int kMost = 100;
  MSG message;
  for (int taken = 0; taken < kMost; ++taken) {
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT | PM_QS_PAINT)) return;
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      form_.UserStops();
      return;
    }
    if (message.message == WM_PAINT || (message.hwnd && message.hwnd == StopButton())) {
      DispatchMessageW(&message);
    }
    // At the press: the system would wait for the release in a message loop of its own.
    if (message.hwnd == handle_ && message.message == WM_NCLBUTTONDOWN &&
        message.wParam == HTCLOSE) {
      form_.UserStops();
    }
  }
}

void FormWindow::TakeCloseCommand() {
  constexpr WPARAM kCommand = 0xFFF0;  // the system uses the other bits
  const auto look = [this](MSG& message, UINT remove) {
    return PeekMessageW(&message, handle_, WM_SYSCOMMAND, WM_SYSCOMMAND,
                        remove | PM_QS_POSTMESSAGE) &&
           message.message == WM_SYSCOMMAND;  // WM_QUIT passes each filter
  };
  MSG message;
  // All of them: a second one would close the dialog when the work has stopped.
  while (look(message, PM_NOREMOVE) && (message.wParam & kCommand) == SC_CLOSE) {
    look(message, PM_REMOVE);
    if (IsWindowEnabled(handle_)) form_.UserStops();
  }
}

void FormWindow::RestoreFocus() {
  HWND control = focus_ && IsWindowVisible(focus_) && IsWindowEnabled(focus_) ? focus_ : nullptr;
  if (!control) control = FirstControl();
  SetFocus(control ? control : handle_);
}

HWND FormWindow::FirstControl() const {
  // Boxes in a cool bar are first in tab order, but the initial focus is on a direct child.
  HWND first = GetNextDlgTabItem(handle_, nullptr, FALSE);
  HWND control = first;
  while (control && GetParent(control) != handle_) {
    control = GetNextDlgTabItem(handle_, control, FALSE);
    if (control == first) break;
  }
  return control;
}

// Size, position and DPI.

DWORD FormWindow::Style() const {
  const DWORD resizable = WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
  return WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | (form_.Layout().Resizable ? resizable : 0U);
}

DWORD FormWindow::ExStyle() const {
  return WS_EX_CONTROLPARENT | (form_.Layout().Resizable ? 0U : WS_EX_DLGMODALFRAME);
}

SIZE FormWindow::InnerSize() const {
  RECT inner{};
  GetClientRect(handle_, &inner);
  return {inner.right, inner.bottom};
}

void FormWindow::SizeChanged() {
  const SIZE inner{scale_.ToPixels(form_.ScaleWidth()), scale_.ToPixels(form_.ScaleHeight())};
  const SIZE outer = scale_.Outer(inner, Style(), ExStyle());
  SetWindowPos(handle_, nullptr, 0, 0, outer.cx, outer.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::LimitSize(MINMAXINFO& limits) const {
  const auto& layout = form_.Layout();
  const SIZE inner{scale_.ToPixels(layout.MinimumWidth), scale_.ToPixels(layout.MinimumHeight)};
  const SIZE outer = scale_.Outer(inner, Style(), ExStyle());
  if (inner.cx > 0) limits.ptMinTrackSize.x = outer.cx;
  if (inner.cy > 0) limits.ptMinTrackSize.y = outer.cy;
}

void FormWindow::OnSize(WPARAM kind) {
  if (kind == SIZE_MINIMIZED) return;
  for (ControlWindow* window : windows_) window->OnFormResized();
  const SIZE inner = InnerSize();
  // Not a change if it is the form's own size rounded to pixels.
  if (inner.cx == scale_.ToPixels(form_.ScaleWidth()) &&
      inner.cy == scale_.ToPixels(form_.ScaleHeight())) {
    return;
  }
  form_.UserResizes(scale_.ToTwips(inner.cx), scale_.ToTwips(inner.cy));
}

void FormWindow::OnScaleChanged(int dpi, const RECT& place) {
  scale_ = Scale::At(dpi);
  UniqueFont former = std::exchange(font_, MessageFont(scale_));
  RenewIcons();
  for (ControlWindow* window : windows_) window->ApplyScale();
  SetWindowPos(handle_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  for (ControlWindow* window : windows_) window->OnFormResized();
  RedrawWindow(handle_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void FormWindow::RenewFont() {
  RECT place{};
  GetWindowRect(handle_, &place);
  if (!IsZoomed(handle_) && !IsIconic(handle_)) {
    const Scale scale = Scale::At(scale_.Dpi());
    const SIZE inner{scale.ToPixels(form_.ScaleWidth()), scale.ToPixels(form_.ScaleHeight())};
    const SIZE outer = scale.Outer(inner, Style(), ExStyle());
    place.right = place.left + outer.cx;
    place.bottom = place.top + outer.cy;
  }
  OnScaleChanged(scale_.Dpi(), place);
  // The window may have kept its size while a twip has become larger.
  OnSize(IsIconic(handle_) ? SIZE_MINIMIZED : SIZE_RESTORED);
}

void FormWindow::CenterOnMonitor() {
  HWND active = GetActiveWindow();
  HMONITOR monitor = MonitorFromWindow(active ? active : handle_, MONITOR_DEFAULTTOPRIMARY);
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (!GetMonitorInfoW(monitor, &info)) return;
  const RECT& work = info.rcWork;
  RECT window{};
  GetWindowRect(handle_, &window);
  const LONG width = std::min(window.right - window.left, work.right - work.left);
  const LONG height = std::min(window.bottom - window.top, work.bottom - work.top);
  SetWindowPos(handle_, nullptr, work.left + (work.right - work.left - width) / 2,
               work.top + (work.bottom - work.top - height) / 2, width, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::RenewIcons() {
  const UniqueIcon small =
      std::exchange(smallIcon_, DrawIcon(controls::Image::SharedContacts, scale_.Units(16)));
  const UniqueIcon large =
      std::exchange(largeIcon_, DrawIcon(controls::Image::SharedContacts, scale_.Units(32)));
  SendMessageW(handle_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.Get()));
  SendMessageW(handle_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(largeIcon_.Get()));
}

}  // namespace ktrv::windows
