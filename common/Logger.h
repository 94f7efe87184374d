#pragma once

#include <cstdint>
#include <functional>

#include "common/Error.h"
#include "common/OperatingSystem.h"
#include "common/Text.h"

namespace ktrv {

/// The title of all message boxes.
inline constexpr StringView kMessageTitle = u"TALVERO Notification Server";

/// Styles and return values of message boxes, with the values of Windows.
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

/// Writes the log file and shows message boxes. The log is UTF-8 with CR LF line ends. Each record
/// is appended with one write to a newly opened file, so several host processes can share a log.
/// Logging never fails; a record that cannot be written is lost. Control characters and line
/// separators are replaced by blanks, and passwords of connection strings by "***".
class Logger {
 public:
  /// Shows a modal box (text, title, style) and returns the pressed button.
  using MessageBox = std::function<std::int16_t(StringView, StringView, std::int32_t)>;

  /// \param system must outlive the logger.
  Logger(OperatingSystem& system, MessageBox messageBox);

  /// Appends one line.
  /// \param write false: does nothing. \param flush true: the line is on disk when the call
  /// returns. Used for the few initialisation lines, which help when a host crashes.
  void WriteLog(StringView path, StringView line, bool write, bool flush) noexcept;

  /// Appends one error record: separator, context text, five labelled lines, closing separator.
  /// \param code always 0; unused. \param write false: does nothing.
  void LogError(StringView path, const Error& error, StringView context, std::int32_t code,
                bool write) noexcept;

  /// Shows a modal message box titled kMessageTitle. \return the pressed button (MessageAnswer)
  std::int16_t ShowMessage(StringView text, std::int32_t style);

 private:
  OperatingSystem& system_;
  MessageBox messageBox_;
};

}  // namespace ktrv
