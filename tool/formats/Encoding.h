#pragma once

#include <istream>
#include <optional>

#include "common/Text.h"

namespace ktrv::tool {

enum class Encoding { Utf8, Utf16Le, Utf16Be, Windows1252 };

/// The encoding of a name such as "utf-8", "UTF-16LE" or "cp1252", in any case; nullopt for others.
std::optional<Encoding> EncodingOf(StringView name);

/// The encoding of the byte order mark at the start of the bytes. \param length receives the bytes
/// of the mark; unchanged if there is none
std::optional<Encoding> EncodingOfMark(std::string_view bytes, std::size_t& length);

/// The encoding of a file: that of its byte order mark; else UTF-16 if every other byte near its
/// start is mostly zero; else UTF-8 if all bytes are valid UTF-8; else Windows-1252. Reads the
/// whole stream.
Encoding DetectEncoding(std::istream& bytes);

/// The character of a byte. Bytes without one in Windows-1252 become control characters.
char16_t FromWindows1252(char byte);

}  // namespace ktrv::tool
