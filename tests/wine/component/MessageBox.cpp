#include "tests/wine/component/MessageBox.h"

namespace ktrv::tests {

std::future<std::wstring> AnswerBoxAfter(DWORD pause) {
  return std::async(std::launch::async, [pause] {
    Sleep(pause);
    const ULONGLONG end = GetTickCount64() + 20000;
    while (GetTickCount64() < end) {
      const HWND box = FindWindowW(nullptr, L"TALVERO Notification Server");
      DWORD process = 0;
      GetWindowThreadProcessId(box, &process);
      if (box && process == GetCurrentProcessId() && IsWindowVisible(box)) {
        wchar_t text[256] = L"";
        GetDlgItemTextW(box, 0xFFFF, text, 256);
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        return std::wstring(text);
      }
      Sleep(10);
    }
    return std::wstring(L"(no box)");
  });
}

}  // namespace ktrv::tests
