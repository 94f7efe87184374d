#pragma once

#include <cstdint>
#include <functional>

#include "common/Error.h"
#include "common/OperatingSystem.h"
#include "common/Text.h"

namespace ktrv {

/// The title of every message box of the component.
inline constexpr StringView kMessageTitle = u"TALVERO Notification Server";

/// Styles of message boxes and the buttons that they answer, as Windows codes them.
namespace MessageStyle {
inline constexpr std::int32_t Ok = 0;
inline constexpr std::int32_t OkCancel = 1;
inline constexpr std::int32_t YesNo = 4;
inline constexpr std::int32_t Critical = 16;
inline constexpr std::int32_t Question = 32;
inline constexpr std::int32_t Exclamation = 48;
inline constexpr std::int32_t DefaultButton2 = 256;
}  // namespace MessageStyle

namespace MessageAnswer {
inline constexpr std::int16_t Ok = 1;
inline constexpr std::int16_t Cancel = 2;
inline constexpr std::int16_t Yes = 6;
inline constexpr std::int16_t No = 7;
}  // namespace MessageAnswer

/// Writes the log file and shows message boxes. The file is UTF-8 with CR LF at the end of a line;
/// it is opened, appended to in one piece and closed for every record, so that several host
/// processes can write one log. A log that cannot be written is left unwritten: logging never
/// fails. Control characters and line separators become blanks, so that a line stays a line, and
/// the values of a connection string's password keywords become "***".
class Logger {
 public:
  /// Shows a modal box with (text, title, style) and returns the button pressed.
  using MessageBox = std::function<std::int16_t(StringView, StringView, std::int32_t)>;

  /// \param system must outlive the logger.
  Logger(OperatingSystem& system, MessageBox messageBox);

  /// Appends one line.
  /// \param write false leaves the line out. \param flush whether the line is to be on the disk
  /// when the call returns: wanted for the few lines of the initialisation, which explain a host
  /// that died.
  void WriteLog(StringView path, StringView line, bool write, bool flush) noexcept;

  /// Appends one error record: a separator, the context text on a line of its own, the five
  /// labelled lines and a closing separator. \param code 0 always; kept for the callers' sake.
  /// \param write false leaves the record out.
  void LogError(StringView path, const Error& error, StringView context, std::int32_t code,
                bool write) noexcept;

  /// Shows a modal message box titled kMessageTitle and returns the button pressed (MessageAnswer).
  std::int16_t ShowMessage(StringView text, std::int32_t style);

 private:
  OperatingSystem& system_;
  MessageBox messageBox_;
};

}  // namespace ktrv
