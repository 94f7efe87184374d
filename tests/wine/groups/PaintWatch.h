#pragma once

#include <windows.h>
#include <commctrl.h>

#include <set>
#include <string>
#include <vector>

namespace ktrv::windows {

/// Counts how often a window is painted, and with what.
class PaintWatch {
 public:
  explicit PaintWatch(HWND window) : window_(window) {
    SetWindowSubclass(window_, Procedure, 1, reinterpret_cast<DWORD_PTR>(this));
  }
  ~PaintWatch() { RemoveWindowSubclass(window_, Procedure, 1); }
  PaintWatch(const PaintWatch&) = delete;
  PaintWatch& operator=(const PaintWatch&) = delete;

  int Paints = 0;
  std::set<LRESULT> Positions;      ///< that a progress bar had when it was painted
  std::vector<std::wstring> Texts;  ///< that it had, each once until it was another

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR, DWORD_PTR self) {
    if (message == WM_PAINT) reinterpret_cast<PaintWatch*>(self)->Painted();
    return DefSubclassProc(window, message, wParam, lParam);
  }

  void Painted() {
    ++Paints;
    Positions.insert(DefSubclassProc(window_, PBM_GETPOS, 0, 0));
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)), L' ');
    GetWindowTextW(window_, text.data(), static_cast<int>(text.size()) + 1);
    if (Texts.empty() || Texts.back() != text) Texts.push_back(std::move(text));
  }

  HWND window_;
};

}  // namespace ktrv::windows
