#include <windows.h>

#include <istream>
#include <ostream>

#include "common/Text.h"
#include "database/odbc/OdbcDriver.h"
#include "tool/Program.h"
#include "tool/program/windows/ConsoleText.h"
#include "tool/program/windows/FileRights.h"

namespace {

std::string Utf8(const wchar_t* text) {
  return ktrv::ToUtf8(reinterpret_cast<const char16_t*>(text));
}

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const ktrv::String wide = ktrv::FromUtf8(name);
  const wchar_t* value = _wgetenv(reinterpret_cast<const wchar_t*>(wide.c_str()));
  return value ? std::optional<std::string>(Utf8(value)) : std::nullopt;
}

}  // namespace

extern "C" int wmain(int count, wchar_t** wide) {
  std::vector<std::string> arguments;
  for (int index = 1; index < count; ++index) arguments.push_back(Utf8(wide[index]));
  ktrv::tool::OutputText outText(STD_OUTPUT_HANDLE);
  ktrv::tool::OutputText messageText(STD_ERROR_HANDLE);
  ktrv::tool::InputText inText;
  std::ostream out(&outText);
  std::ostream messages(&messageText);
  messages << std::unitbuf;
  std::istream in(&inText);
  ktrv::database::OdbcDriver driver;
  ktrv::tool::Console console{out, messages, in, inText.IsConsole() && messageText.IsConsole()};
  return ktrv::tool::RunProgram(std::move(arguments),
                                {driver, EnvironmentVariable, ktrv::tool::IsPrivate}, console);
}
