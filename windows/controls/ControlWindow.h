#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstdint>
#include <optional>

#include "controls/Control.h"
#include "windows/controls/Accessible.h"
#include "windows/controls/Scale.h"

namespace ktrv::windows {

class FormWindow;

/// The window of one control: created with the form and subclassed; receives the notifications
/// reflected by its parent. Handlers may use their members after calling the control, because a
/// form stays alive during its events.
class ControlWindow {
 public:
  virtual ~ControlWindow();
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

  /// Null after the operating system destroyed the window with its parent.
  HWND Handle() const { return handle_; }

  Scale CurrentScale() const;

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(handle_, message, wParam, lParam);
  }
  template <class Structure>
  LRESULT Send(UINT message, WPARAM wParam, Structure* structure) const {
    return SendMessageW(handle_, message, wParam, reinterpret_cast<LPARAM>(structure));
  }

  /// The object of a control's window; null for other windows.
  static ControlWindow* From(HWND window);

  /// Handles a WM_NOTIFY of this control; nullopt: not handled.
  virtual std::optional<LRESULT> OnNotify(NMHDR& /*header*/) { return std::nullopt; }
  /// Handles a WM_COMMAND of this control. \param code notification code
  virtual void OnCommand(WORD /*code*/) {}
  /// Called when all controls of the form have their windows.
  virtual void OnFormRealised() {}
  /// Called after a DPI change, when fonts and bounds are updated.
  virtual void OnScaleChanged() {}
  /// The background colour in the format of controls/Color.h; nullopt: the system's.
  virtual std::optional<std::uint32_t> BackColor() const { return std::nullopt; }
  /// Called when the form's inner size has changed; for controls along its edges.
  virtual void OnFormResized() {}
  /// Handles an access key of a part that is no window. \return false if no part has it
  virtual bool TakeMnemonic(wchar_t /*letter*/) { return false; }
  /// Called before a key presses a button while this control keeps the focus; commits pending
  /// input.
  virtual void FinishTyping() {}

  // What the control tells screen readers of itself.
  /// The window that shows the control.
  virtual HWND DescribedWindow() const { return handle_; }
  /// Role, value, and the state beside what all windows have: focus, disabled, hidden.
  virtual AccessiblePart Describe() const { return {}; }
  /// Whether the caption of the window is the control's name.
  virtual bool ShowsCaption() const { return false; }
  /// Parts that are no windows; numbers start at 1, and 0 is the control itself.
  virtual int PartCount() const { return 0; }
  virtual AccessiblePart Part(int /*number*/) const { return {}; }
  virtual int PartAt(POINT /*place*/) const { return 0; }
  virtual int FocusedPart() const { return 0; }

  FormWindow& Owner() const { return form_; }
  const controls::Control& Shown() const { return control_; }

 protected:
  ControlWindow(FormWindow& form, controls::Control& control);

  /// Creates the window at the control's bounds. \param parent null: the form
  void Create(const wchar_t* windowClass, DWORD style, DWORD exStyle = 0, HWND parent = nullptr);

  /// Called before the window's own procedure. nullopt: pass the message on.
  virtual std::optional<LRESULT> OnMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }
  /// Called after the window's own procedure.
  virtual void AfterMessage(UINT /*message*/) {}

  /// Pixels by which the window is higher than the control.
  virtual int ExtraHeight() const { return 0; }

  void Place();
  void ShowVisible();
  void ShowEnabled();
  void ShowText(StringView text);
  void TakeFocus();
  void PaintNow();
  /// Applies the form's font and the control's bounds.
  void ApplyScale();

 private:
  friend class FormWindow;
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR data);
  void ReportFocus(bool has, HWND other);

  FormWindow& form_;
  controls::Control& control_;
  HWND handle_ = nullptr;
};

/// Base of peers of type `PeerType` that consist of one window.
template <class PeerType>
class Peer : public PeerType, public ControlWindow {
 public:
  void BoundsChanged() override { Place(); }
  void VisibleChanged() override { ShowVisible(); }
  void EnabledChanged() override { ShowEnabled(); }
  void TextChanged() override {}
  void FocusRequested() override { TakeFocus(); }
  void RefreshRequested() override { PaintNow(); }

 protected:
  using ControlWindow::ControlWindow;
};

}  // namespace ktrv::windows
