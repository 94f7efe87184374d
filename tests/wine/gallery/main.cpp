#include <windows.h>

#include <cstdlib>

#include "tests/wine/gallery/GalleryForm.h"
#include "windows/controls/Win32Screen.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, PSTR arguments, int) {
  ktrv::windows::Win32Screen screen;
  ktrv::gallery::GalleryForm form(screen);
  form.Show();
  const auto seconds = static_cast<DWORD>(std::strtoul(arguments, nullptr, 10));
  if (seconds > 0) SetTimer(nullptr, 0, seconds * 1000, nullptr);
  MSG message;
  while (form.IsLoaded() && GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message == WM_TIMER && !message.hwnd) form.Unload();
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}
