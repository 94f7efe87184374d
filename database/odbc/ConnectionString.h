#pragma once

#include "common/Text.h"
#include "database/TimeLimits.h"

namespace ktrv::database::odbc {

/// The value of a keyword in an ODBC connection string, without braces; empty if the keyword is
/// absent. Keywords are case-insensitive.
String KeywordValue(StringView connectionString, StringView keyword);

/// Appends a keyword with its value, in braces if needed.
String WithKeyword(StringView connectionString, StringView keyword, StringView value);

/// Whether the driver is PostgreSQL's or unknown, as with a DSN.
bool MayBePostgreSql(StringView connectionString);

/// Completes the program's connection string for the driver: adds user and password if not empty,
/// and the following settings unless present. SQLite: fetch rows while the query runs (StepAPI), do
/// not create missing files (NoCreat), wait up to 3 seconds for a locked file. PostgreSQL: send
/// arrays of parameters in batches of 500.
String CompleteConnectionString(StringView connectionString, StringView user, StringView password);

/// The time limits in the string, in whole seconds: "Connect Timeout", "Command Timeout" and the
/// spellings of other libraries. \param otherwise limits that the string does not contain
TimeLimits TimeLimitsOf(StringView connectionString, TimeLimits otherwise = {});

/// The login timeout for a driver, which it applies to each server of the string in turn: their
/// sum is the limit to connect. 0 means no limit.
std::chrono::seconds LongestForEachServer(StringView connectionString);

}  // namespace ktrv::database::odbc
