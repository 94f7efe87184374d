#include "windows/base/WindowClass.h"

#include "common/Error.h"
#include "windows/base/Module.h"

namespace ktrv::windows {

WindowClass::WindowClass(const wchar_t* name, WNDPROC procedure, Look look) : name_(name) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = ThisModule();
  if (look.Cursor) description.hCursor = LoadCursorW(nullptr, look.Cursor);
  if (look.Color >= 0) {
    description.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(look.Color) + 1);
  }
  description.lpszClassName = name;
  if (!RegisterClassExW(&description)) {
    throw Error(ErrorNumber::OutOfMemory, u"Can't register a window class.", {}, GetLastError());
  }
}

WindowClass::~WindowClass() {
  UnregisterClassW(name_, ThisModule());
}

}  // namespace ktrv::windows
