#pragma once

#include <windows.h>
#include <commctrl.h>

#include <set>

namespace ktrv::windows {

/// Counts how often a window is painted.
class PaintWatch {
 public:
  explicit PaintWatch(HWND window) : window_(window) {
    SetWindowSubclass(window_, Procedure, 1, reinterpret_cast<DWORD_PTR>(this));
  }
  ~PaintWatch() { RemoveWindowSubclass(window_, Procedure, 1); }
  PaintWatch(const PaintWatch&) = delete;
  PaintWatch& operator=(const PaintWatch&) = delete;

  int Paints = 0;
  std::set<LRESULT> Positions;  ///< that a progress bar had when it was painted

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR, DWORD_PTR self) {
    if (message == WM_PAINT) reinterpret_cast<PaintWatch*>(self)->Painted();
    return DefSubclassProc(window, message, wParam, lParam);
  }

  void Painted() {
    ++Paints;
    Positions.insert(DefSubclassProc(window_, PBM_GETPOS, 0, 0));
  }

  HWND window_;
};

}  // namespace ktrv::windows
