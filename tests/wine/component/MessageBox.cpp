#include "tests/wine/component/MessageBox.h"

#include <utility>

namespace ktrv::tests {

std::future<std::wstring> AnswerBoxWhen(std::function<bool()> condition) {
  return std::async(std::launch::async, [condition = std::move(condition)] {
    const ULONGLONG end = GetTickCount64() + 20000;
    while (GetTickCount64() < end) {
      const HWND box = FindWindowW(nullptr, L"TALVERO Notification Server");
      DWORD process = 0;
      GetWindowThreadProcessId(box, &process);
      if (box && process == GetCurrentProcessId() && IsWindowVisible(box)) {
        wchar_t text[256] = L"";
        GetDlgItemTextW(box, 0xFFFF, text, 256);
        const ULONGLONG patience = GetTickCount64() + 10000;
        while (!condition() && GetTickCount64() < patience) Sleep(10);
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        return std::wstring(text);
      }
      Sleep(10);
    }
    return std::wstring(L"(no box)");
  });
}

}  // namespace ktrv::tests
