#include "common/Logger.h"

#include <algorithm>
#include <utility>

#include "common/Passwords.h"

namespace ktrv {
namespace {

constexpr StringView kEndOfLine = u"\r\n";

String Separator(StringView word) {
  const String stars(25, u'*');
  return stars + String(word) + stars;
}

/// Whether the unit would break a log line or control a terminal that shows the log.
bool IsControl(char16_t unit) {
  return unit < u' ' || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 || unit == 0x2029;
}

/// The text for the log: on one line, with passwords masked.
String OneLine(StringView text) {
  String line = HidePasswords(text);
  std::ranges::replace_if(line, IsControl, u' ');
  return line;
}

String TwoDigits(std::int64_t number) {
  return (number < 10 ? u"0" : u"") + ToDecimal(number);
}

/// "dd/mm/yyyy", two blanks and "hh:mm:ss" (24 hours).
String MomentText(DateTime moment) {
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date{day};
  const std::chrono::hh_mm_ss time{moment - day};
  return TwoDigits(static_cast<unsigned>(date.day())) + u"/" +
         TwoDigits(static_cast<unsigned>(date.month())) + u"/" +
         ToDecimal(static_cast<int>(date.year())) + u"  " + TwoDigits(time.hours().count()) + u":" +
         TwoDigits(time.minutes().count()) + u":" + TwoDigits(time.seconds().count());
}

}  // namespace

Logger::Logger(OperatingSystem& system, MessageBox messageBox)
    : system_(system), messageBox_(std::move(messageBox)) {}

void Logger::WriteLog(StringView path, StringView line, bool write, bool flush) noexcept {
  if (!write) return;
  try {
    system_.Append(path, ToUtf8(OneLine(line) + String(kEndOfLine)), flush);
  } catch (...) {
    // Failing to log must not stop the host.
  }
}

void Logger::LogError(StringView path, const Error& error, StringView context,
                      std::int32_t /*code*/, bool write) noexcept {
  if (!write) return;
  try {
    const String lines[] = {
        Separator(u" ERROR "),
        OneLine(context),
        u"Error Date/Time   : " + MomentText(system_.Now()),
        u"Error Number      : " + ToDecimal(error.Number()),
        u"Error Description : " + OneLine(error.Description()),
        u"Error DLLErrorNum : " + ToDecimal(error.LastSystemError()),
        u"Error Source      : " + OneLine(error.Source()),
        Separator(u"*******"),
    };
    String record;
    for (const String& line : lines) record.append(line).append(kEndOfLine);
    system_.Append(path, ToUtf8(record), false);
  } catch (...) {
    // Same as in WriteLog.
  }
}

std::int16_t Logger::ShowMessage(StringView text, std::int32_t style) {
  return messageBox_(text, kMessageTitle, style);
}

}  // namespace ktrv
