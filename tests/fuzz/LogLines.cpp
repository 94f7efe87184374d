#include "common/Logger.h"
#include "common/Passwords.h"
#include "database/odbc/ConnectionString.h"
#include "tests/fuzz/Input.h"
#include "tests/native/common/RecordingSystem.h"

namespace ktrv::fuzz {
namespace {

constexpr std::size_t kSeparatorLines = 2;
constexpr std::size_t kLabelled = 6;

/// Lines that end with CR LF and hold no other control character.
std::size_t CountLines(const std::string& bytes) {
  const String text = FromUtf8(bytes);
  Demand(ToUtf8(text) == bytes, "the log is UTF-8");
  std::size_t lines = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t unit = text[at];
    if (text.substr(at, 2) == u"\r\n") {
      ++lines;
      ++at;
      continue;
    }
    const bool breaks =
        unit < u' ' || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029;
    Demand(!breaks, "a line stays a line");
  }
  Demand(text.ends_with(u"\r\n"), "a line is ended");
  return lines;
}

/// Whether it must be hidden everywhere: short ones are only hidden as words, "***" is the
/// replacement, and blanks before a value are no part of it.
bool IsSecret(StringView password) {
  while (!password.empty() && password.front() <= u' ') password.remove_prefix(1);
  constexpr std::size_t kShort = 4;
  return password.size() >= kShort && password.find(u'*') == StringView::npos;
}

void TryPasswords(const String& connection, const String& given, const String& line) {
  const String written = database::odbc::KeywordValue(connection, u"Pwd");
  for (const String& text : {line, line + written + given, connection + line, given + connection}) {
    const String hidden = HidePasswords(text, connection, given);
    for (const String& password : {written, given}) {
      if (!IsSecret(password)) continue;
      Demand(hidden.find(password) == String::npos, "no password is to be seen");
    }
  }
}

void TryLog(const String& context, const String& line) {
  tests::RecordingSystem system;
  Logger logger(system, {});
  logger.WriteLog(u"log", line, true, false);
  logger.LogError(u"log", Error(1, line, context), context, 0, true);
  Demand(system.Appends.size() == 2, "each record in one piece");
  Demand(CountLines(system.Appends[0].Bytes) == 1, "one line");
  Demand(CountLines(system.Appends[1].Bytes) == kLabelled + kSeparatorLines, "one record");
  const String secret = u"Pwd=Sesame7;";
  logger.WriteLog(u"log", secret + line, true, false);
  Demand(system.Appends[2].Bytes.starts_with("Pwd=***;"), "a password is hidden");
}

void Try(Input input) {
  const String first = input.Line();
  const String second = input.Line();
  const String third = input.Text();
  TryPasswords(first, second, third);
  TryLog(first, third);
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
