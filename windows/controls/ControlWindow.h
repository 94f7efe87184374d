#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstdint>
#include <optional>

#include "controls/Control.h"
#include "windows/controls/Scale.h"

namespace ktrv::windows {

class FormWindow;

/// The window of one control: made with the form, subclassed, told what its parent hears of it. A
/// form outlives its own events, so handlers may use their members after they called the control.
class ControlWindow {
 public:
  virtual ~ControlWindow();
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

  /// Null after the operating system destroyed it with its parent.
  HWND Handle() const { return handle_; }

  Scale CurrentScale() const;

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(handle_, message, wParam, lParam);
  }
  template <class Structure>
  LRESULT Send(UINT message, WPARAM wParam, Structure* structure) const {
    return SendMessageW(handle_, message, wParam, reinterpret_cast<LPARAM>(structure));
  }

  /// The control whose window this is; null for windows of others.
  static ControlWindow* From(HWND window);

  /// A WM_NOTIFY of this control. Nothing: unhandled.
  virtual std::optional<LRESULT> OnNotify(NMHDR& /*header*/) { return std::nullopt; }
  /// A WM_COMMAND of this control with its notification code.
  virtual void OnCommand(WORD /*code*/) {}
  /// All controls of the form have their windows now.
  virtual void OnFormRealised() {}
  /// The form came to another resolution: fonts and bounds are renewed already.
  virtual void OnScaleChanged() {}
  /// The colour behind the text, as properties store it. Nothing: the system's.
  virtual std::optional<std::uint32_t> BackColor() const { return std::nullopt; }
  /// The form's inner size changed: for controls that lie along its edges.
  virtual void OnFormResized() {}
  /// The user presses a button by key, while this control has the focus and keeps it.
  virtual void FinishTyping() {}

  FormWindow& Owner() const { return form_; }
  const controls::Control& Shown() const { return control_; }

 protected:
  ControlWindow(FormWindow& form, controls::Control& control);

  /// Makes the window at the control's bounds. \param parent null: the form.
  void Create(const wchar_t* windowClass, DWORD style, DWORD exStyle = 0, HWND parent = nullptr);

  /// A message to the window before its own procedure sees it. Nothing: goes on to it.
  virtual std::optional<LRESULT> OnMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }
  /// After its own procedure has seen it.
  virtual void AfterMessage(UINT /*message*/) {}

  /// Pixels that the window is higher than the control.
  virtual int ExtraHeight() const { return 0; }

  void Place();
  void ShowVisible();
  void ShowEnabled();
  void ShowText(StringView text);
  void TakeFocus();
  void PaintNow();
  /// Gives the window the form's font and the control's bounds.
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

/// A peer of the type `PeerType` that is one window.
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
