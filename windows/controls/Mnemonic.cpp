#include "windows/controls/Mnemonic.h"

#include <algorithm>
#include <array>

namespace ktrv::windows {

namespace {

wchar_t Capital(wchar_t letter) {
  CharUpperBuffW(&letter, 1);
  return letter;
}

/// The access key in a text, as upper case; 0 if there is none.
wchar_t MnemonicIn(const wchar_t* text) {
  for (std::size_t i = 0; text[i] && text[i + 1]; ++i) {
    if (text[i] != L'&') continue;
    if (text[i + 1] != L'&') return Capital(text[i + 1]);
    ++i;  // "&&" is a literal ampersand
  }
  return 0;
}

}  // namespace

bool IsMnemonicIn(const wchar_t* text, wchar_t letter) {
  return MnemonicIn(text) == Capital(letter);
}

bool IsMnemonicOf(HWND window, wchar_t letter) {
  std::array<wchar_t, 128> text{};
  GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  return IsMnemonicIn(text.data(), letter);
}

bool PressMnemonic(std::span<const HWND> controls, wchar_t letter) {
  const auto canBeUsed = [](HWND control) {
    return IsWindowVisible(control) && IsWindowEnabled(control);
  };
  for (auto place = controls.begin(); place != controls.end(); ++place) {
    HWND control = *place;
    if (!canBeUsed(control) || !IsMnemonicOf(control, letter)) continue;
    const LRESULT kind = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    if (kind & (DLGC_BUTTON | DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) {
      SetFocus(control);
      PostMessageW(control, BM_CLICK, 0, 0);
      return true;
    }
    if (!(kind & DLGC_STATIC)) continue;
    // A label belongs to the next control, which may be in another window: the band of a cool bar.
    const auto named = std::find_if(place + 1, controls.end(), [&](HWND next) {
      return canBeUsed(next) && GetWindowLongPtrW(next, GWL_STYLE) & WS_TABSTOP;
    });
    if (named == controls.end()) return true;
    SetFocus(*named);
    if (SendMessageW(*named, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) {
      SendMessageW(*named, EM_SETSEL, 0, -1);
    }
    return true;
  }
  return false;
}

}  // namespace ktrv::windows
