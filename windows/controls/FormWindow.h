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

/// The window of one form and what its controls' windows share: the resolution, the font, the
/// focus.
class FormWindow final : public controls::FormPeer {
 public:
  explicit FormWindow(controls::Form& form);
  ~FormWindow() override;
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  /// The form whose window this is; null for windows of others.
  static FormWindow* From(HWND window);

  /// The window of the form; null when it has none.
  static FormWindow* Of(const controls::Form& form);

  /// To be called when all controls have their windows.
  void Realised();

  HWND Handle() const { return handle_; }
  Scale CurrentScale() const { return scale_; }
  HFONT Font() const { return font_.Get(); }
  /// Inner size in pixels.
  SIZE InnerSize() const;

  void Add(ControlWindow& window);
  void Remove(ControlWindow& window);

  /// Gives a control's window the focus, at once or when the form is shown.
  void Focus(HWND control);
  /// To the next control in tab order.
  void FocusNext(bool backward = false);
  /// The control's window that has the focus; it gets it again when the form becomes active.
  void RememberFocus(HWND control) { focus_ = control; }

  /// Goes to the control that the letter stands underlined for, or presses it.
  /// \return false when there is none.
  bool TakeMnemonic(wchar_t letter);

  /// Tells a control's window what its parent heard of it. Nothing: not one of ours, or unhandled.
  static std::optional<LRESULT> Reflect(UINT message, WPARAM wParam, LPARAM lParam);

  void CaptionChanged() override;
  void SizeChanged() override;
  void PointerChanged() override;
  void Show() override;
  void ShowModal() override;
  void Hide() override;
  void TakeInput() override;

  bool IsWorking() const { return form_.IsWorking(); }
  /// Whether the form takes no such message to this window of it, because it works.
  bool IsLocked(HWND window, UINT message) const;
  /// \return whether the message is a key's; one that presses the button which ends the work did
  /// so.
  bool TakeKeyWhileWorking(const MSG& message);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static const wchar_t* ClassName();
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  /// Shows the form where it takes neither the front nor the keyboard from what is open and modal,
  /// and disabled until that is closed.
  void ShowBehind(ModalDisabling& open);
  void PressButtonOf(WORD command);
  static std::optional<LRESULT> BackgroundOf(HWND control, HDC target);
  bool SetPointerShape(HWND under, LPARAM lParam) const;
  HWND StopButton() const;
  DWORD Style() const;
  DWORD ExStyle() const;
  void LimitSize(MINMAXINFO& limits) const;
  void OnSize(WPARAM kind);
  void OnScaleChanged(int dpi, const RECT& place);
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
  bool hidden_ = false;  ///< Hide was called since it was last shown
  std::optional<ModalDisabling> disabling_;
};

}  // namespace ktrv::windows
