#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "controls/Form.h"
#include "windows/base/Unique.h"
#include "windows/controls/Drawing.h"
#include "windows/controls/ModalDisabling.h"
#include "windows/controls/Scale.h"

namespace ktrv::windows {

class ControlWindow;

/// The window of a form, and what the windows of its controls share: DPI, font, focus.
class FormWindow final : public controls::FormPeer {
 public:
  explicit FormWindow(controls::Form& form);
  ~FormWindow() override;
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  /// The object of a form's window; null for other windows.
  static FormWindow* From(HWND window);

  /// The window of the form; null if it has none.
  static FormWindow* Of(const controls::Form& form);

  /// Call when all controls have their windows.
  void Realised();

  HWND Handle() const { return handle_; }
  Scale CurrentScale() const { return scale_; }
  HFONT Font() const { return font_.Get(); }
  /// Inner size in pixels.
  SIZE InnerSize() const;

  void Add(ControlWindow& window);
  void Remove(ControlWindow& window);

  /// Sets the focus to a control's window, now or when the form is shown.
  void Focus(HWND control);
  /// Moves the focus to the next control in tab order.
  void FocusNext(bool backward = false);
  /// Stores the focused control, to restore the focus when the form is activated.
  void RememberFocus(HWND control) { focus_ = control; }

  /// The label right before the control in tab order; null if there is none.
  const ControlWindow* LabelOf(const ControlWindow& control) const;

  /// Handles an access key: focuses or presses its control.
  /// \return false if no control has it
  bool TakeMnemonic(wchar_t letter);
  /// Handles a key press that is a shortcut of the form. \return false if it is none
  bool TakeShortcut(const MSG& message);

  /// Reflects a notification or a request for colours from the parent to the control's window.
  /// nullopt: not one of ours, or not handled.
  static std::optional<LRESULT> Reflect(UINT message, WPARAM wParam, LPARAM lParam);

  void CaptionChanged() override;
  void SizeChanged() override;
  void PointerChanged() override;
  void Show() override;
  void ShowModal() override;
  void Hide() override;
  void TakeInput() override;

  bool IsWorking() const { return form_.IsWorking(); }
  /// Whether the message to one of the form's windows is discarded during Form::Work.
  bool IsLocked(HWND window, UINT message) const;
  /// Handles a keyboard message during Form::Work: Escape and the stop button's access key stop the
  /// work. \return whether it is a keyboard message
  bool TakeKeyWhileWorking(const MSG& message);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static const wchar_t* ClassName();
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  /// Shows the form behind the open modal window, disabled and without activation.
  void ShowBehind(ModalDisabling& open);
  void PressButtonOf(WORD command);
  static std::optional<LRESULT> BackgroundOf(HWND control, HDC target);
  bool SetPointerShape(HWND under, LPARAM lParam) const;
  HWND StopButton() const;
  /// Takes a posted close command, as the taskbar sends it, as a press of the stop button.
  void TakeCloseCommand();
  DWORD Style() const;
  DWORD ExStyle() const;
  void LimitSize(MINMAXINFO& limits) const;
  void OnSize(WPARAM kind);
  void OnScaleChanged(int dpi, const RECT& place);
  /// The user has chosen another message font.
  void RenewFont();
  void OnDestroyed();
  void RestoreFocus();
  void CenterOnMonitor();
  void RenewIcons();
  HWND FirstControl() const;

  controls::Form& form_;
  HWND handle_ = nullptr;
  Scale scale_;
  UniqueFont font_;
  UniqueIcon smallIcon_;
  UniqueIcon largeIcon_;
  std::vector<ControlWindow*> windows_;
  HWND focus_ = nullptr;
  bool placed_ = false;
  bool hidden_ = false;  ///< Hide was called since the last Show
  std::optional<ModalDisabling> disabling_;
};

}  // namespace ktrv::windows
