#pragma once

#include "common/Text.h"

namespace ktrv::tool {

/// Decodes quoted-printable text without line breaks. The bytes are UTF-8 if they are valid UTF-8,
/// else Windows-1252. An "=" without two hexadecimal digits stays as it is.
String FromQuotedPrintable(StringView text);

}  // namespace ktrv::tool
