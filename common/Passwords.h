#pragma once

#include "common/Text.h"

namespace ktrv {

/// Replaces the value of each password keyword ("PWD=...", "Password=...") by "***". An unquoted
/// value extends to the next ";".
String HidePasswords(StringView text);

/// Also replaces each occurrence of the connection string's passwords and of `password`. Passwords
/// of less than four characters are replaced only as whole words.
String HidePasswords(StringView text, StringView connectionString, StringView password = {});

}  // namespace ktrv
