#include "tests/scripthost/Console.h"

#include <windows.h>

#include <string>

namespace ktrv::scripthost::Console {
namespace {

void Write(DWORD stream, std::wstring_view text) {
  const auto length = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
  bytes += '\n';
  DWORD written = 0;
  WriteFile(GetStdHandle(stream), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
            nullptr);
}

}  // namespace

void PrintLine(std::wstring_view text) {
  Write(STD_OUTPUT_HANDLE, text);
}

void PrintErrorLine(std::wstring_view text) {
  Write(STD_ERROR_HANDLE, text);
}

}  // namespace ktrv::scripthost::Console
