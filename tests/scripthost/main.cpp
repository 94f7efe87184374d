// scripthost [--with FILE]... FILE.vbs|FILE.js [ARG...]: runs a script, after those in its language
// that it uses, and ends with the code of its WScript.Quit, with 0 at its end, or with 99 after an
// error, which is told on the error stream.
#include <windows.h>
#include <shellapi.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/scripthost/Console.h"
#include "tests/scripthost/Engine.h"
#include "tests/scripthost/PlayerObject.h"
#include "tests/scripthost/ScriptFailure.h"
#include "tests/scripthost/UiObject.h"
#include "tests/scripthost/WScriptObject.h"
#include "tests/wine/desktop/Desktop.h"

namespace ktrv::scripthost {
namespace {

std::vector<std::wstring> CommandLine() {
  int count = 0;
  wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> arguments(values, values + count);
  LocalFree(values);
  return arguments;
}

std::wstring FromUtf8(const std::string& bytes) {
  const auto length = static_cast<int>(bytes.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, nullptr, 0);
  std::wstring text(static_cast<size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, text.data(), size);
  return text;
}

/// The file's text without its byte order mark; throws ScriptFailure when it cannot be read.
std::wstring ReadScript(const std::wstring& path) {
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  if (!file) {
    throw ScriptFailure{L"Cannot read " + path};
  }
  std::wstring text =
      FromUtf8(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
  return text.starts_with(L'\xFEFF') ? text.substr(1) : text;
}

int Run() {
  const std::vector<std::wstring> arguments = CommandLine();
  std::vector<std::wstring> scripts;
  auto next = arguments.begin() + 1;
  for (; arguments.end() - next >= 2 && *next == L"--with"; next += 2) {
    scripts.push_back(next[1]);
  }
  if (next == arguments.end()) {
    throw ScriptFailure{L"usage: scripthost [--with FILE]... FILE.vbs|FILE.js [ARG...]"};
  }
  const std::wstring path = *next;
  scripts.push_back(path);

  WScriptObject wscript(path, std::vector(next + 1, arguments.end()));
  UiObject ui;
  PlayerObject player(path);
  Engine engine(path.ends_with(L".vbs") ? L"VBScript" : L"JScript",
                {{L"WScript", &wscript}, {L"Ui", &ui}, {L"Player", &player}});
  for (const std::wstring& script : scripts) {
    const std::wstring failure = engine.Run(script, ReadScript(script));
    if (!failure.empty()) {
      throw ScriptFailure{failure};
    }
  }
  return 0;
}

}  // namespace
}  // namespace ktrv::scripthost

int main() {
  using namespace ktrv::scripthost;
  const ktrv::windows::Desktop desktop;
  OleInitialize(nullptr);
  int code = kScriptError;
  try {
    code = Run();
  } catch (const ScriptFailure& failure) {
    Console::PrintErrorLine(failure.description);
  }
  OleUninitialize();
  return code;
}
