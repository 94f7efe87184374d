#include "windows/controls/Clipboard.h"

#include <windows.h>

#include <cstring>

#include "common/Error.h"
#include "windows/base/Unique.h"
#include "windows/base/WideText.h"

namespace ktrv::windows {

namespace {

using UniqueMemory = Unique<HGLOBAL, [](HGLOBAL memory) { GlobalFree(memory); }>;

/// True while it is open.
using OpenedClipboard = Unique<bool, [](bool) { CloseClipboard(); }>;

/// Retries, because other programs keep the clipboard open for short times.
OpenedClipboard Open() {
  for (int attempt = 0; attempt < 20; ++attempt) {
    if (attempt > 0) Sleep(10);
    if (OpenClipboard(nullptr)) return OpenedClipboard(true);
  }
  return OpenedClipboard();
}

}  // namespace

std::optional<String> ReadClipboard() {
  const OpenedClipboard clipboard = Open();
  if (!clipboard) return std::nullopt;
  HANDLE data = GetClipboardData(CF_UNICODETEXT);
  const auto* text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr;
  if (!text) return std::nullopt;
  // The memory comes from another program and may lack the terminating zero.
  std::wstring_view units(text, GlobalSize(data) / sizeof(wchar_t));
  String result = FromWide(units.substr(0, units.find(L'\0')));
  GlobalUnlock(data);
  return result;
}

void WriteClipboard(StringView text) {
  const std::wstring wide = ToWide(text);
  const SIZE_T size = (wide.size() + 1) * sizeof(wchar_t);
  UniqueMemory memory(GlobalAlloc(GMEM_MOVEABLE, size));
  if (!memory) throw Error(ErrorNumber::OutOfMemory);
  std::memcpy(GlobalLock(memory.Get()), wide.c_str(), size);
  GlobalUnlock(memory.Get());
  const OpenedClipboard clipboard = Open();
  if (!clipboard || !EmptyClipboard() || !SetClipboardData(CF_UNICODETEXT, memory.Get())) {
    throw Error(ErrorNumber::ActionNotSupported, u"Can't open the clipboard", u"KTRVAddressBook",
                GetLastError());
  }
  memory.Release();  // now owned by the clipboard
}

}  // namespace ktrv::windows
