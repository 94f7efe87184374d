#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "common/Logger.h"
#include "common/Variant.h"

/// Routines that every dialog shares.
namespace ktrv::Global {

/// Whether the address has the form that the server accepts. Only the first "@" and the first "."
/// are looked at; the rules and their oddities stand in the source. An address of more than 32767
/// units is a trapped failure: logged as an error record, and the answer is false.
bool ValidateEmail(Logger& logger, StringView logPath, StringView address);

/// Whether a numeric box accepts the key with this character code: the digits, backspace (8), tab
/// (9), copy (3), "." and ";" unless refused, and paste (22) when the clipboard holds a number of 0
/// or more. \param clipboard asked only for a paste; nothing when the clipboard holds no text.
bool KeyFilterNumeric(std::int16_t code, bool refusePoint, bool refuseSemicolon,
                      const std::function<std::optional<String>()>& clipboard);

/// What a numeric box takes of a text that is pasted: a number of 0 or more, without the blanks,
/// tabs and line ends around it, which a spreadsheet's cells bring along; nothing of any other.
std::optional<String> PastedNumber(StringView text);

/// The value, or the default text when it is null.
Variant NullToDefault(const Variant& value, const String& defaultText);

}  // namespace ktrv::Global
