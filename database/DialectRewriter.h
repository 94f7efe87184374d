#pragma once

#include "common/Text.h"
#include "database/Types.h"

namespace ktrv::database {

/// The text for an engine that knows neither of the two SQL families that programs write:
///   ISNULL(x, y), NVL(x, y)   the engine's null default
///   TO_CHAR(x)                x as text
///   a + b                     the texts joined; null when one of them is null (SQL Server's sense)
///   a || b                    the texts joined; null counts as empty (Oracle's sense)
/// On PostgreSQL columns that are united are also made alike and put in order (UnionColumns.h).
/// Everything else, and every text for SQL Server, Oracle or an unknown engine, stays to the
/// letter. A "+" next to a number stays a sum.
/// \throws Error SyntaxOrPermission when the text is nested too deeply.
String RewriteForEngine(StringView sql, Engine engine);

}  // namespace ktrv::database
