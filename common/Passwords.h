#pragma once

#include "common/Text.h"

namespace ktrv {

/// The text with "***" in the place of each value that a connection string's password keyword has
/// in it ("PWD=…", "Password=…"). A value that is not quoted is taken to go on to the next ";".
String HidePasswords(StringView text);

/// The same, and also without the passwords of the connection string and without `password`,
/// wherever they stand in the text. Those of less than four characters are looked for as words.
String HidePasswords(StringView text, StringView connectionString, StringView password = {});

}  // namespace ktrv
