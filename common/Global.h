#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "common/Logger.h"
#include "common/Variant.h"

/// Routines shared by all dialogs.
namespace ktrv::Global {

/// Whether the server accepts the address. Checks only the first "@" and the first "."; the source
/// explains the rules. An address of more than 32767 units is logged as an error record and gives
/// false.
bool ValidateEmail(Logger& logger, StringView logPath, StringView address);

/// The same without a log. \throws Error Overflow for an address of more than 32767 units
bool IsValidEmail(StringView address);

/// Whether a numeric box accepts the character code of a key: digits, backspace (8), tab (9), copy
/// (3), "." and ";" unless refused, and paste (22) if the clipboard holds a number >= 0.
/// \param clipboard called only for a paste; nullopt when the clipboard holds no text.
bool KeyFilterNumeric(std::int16_t code, bool refusePoint, bool refuseSemicolon,
                      const std::function<std::optional<String>()>& clipboard);

/// The text to paste into a numeric box: a number >= 0 without surrounding blanks, tabs and line
/// ends (spreadsheets copy them); nullopt for other texts.
std::optional<String> PastedNumber(StringView text);

/// The value, or the default text for null.
Variant NullToDefault(const Variant& value, const String& defaultText);

}  // namespace ktrv::Global
