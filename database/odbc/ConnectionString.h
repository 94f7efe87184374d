#pragma once

#include "common/Text.h"

namespace ktrv::database::odbc {

/// The value of a keyword of an ODBC connection string, without the braces that may surround it;
/// empty when the keyword is absent. Keywords match regardless of case.
String KeywordValue(StringView connectionString, StringView keyword);

/// The string with the keyword at its end; the value is put in braces when it needs them.
String WithKeyword(StringView connectionString, StringView keyword, StringView value);

/// The string that a driver is given for what the program gave: the user and the password added
/// when not empty, and for SQLite's driver the settings that the component relies on unless the
/// string says otherwise: rows come while the query still runs, a missing file is a failure and not
/// a new database, and a locked file is given up after 3 seconds. PostgreSQL's driver is told to
/// send what runs together in few parts.
String CompleteConnectionString(StringView connectionString, StringView user, StringView password);

}  // namespace ktrv::database::odbc
