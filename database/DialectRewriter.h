#pragma once

#include "common/Text.h"
#include "database/Types.h"

namespace ktrv::database {

/// Translates functions and operators of the SQL Server and Oracle dialects for engines that know
/// neither:
///   ISNULL(x, y), NVL(x, y)   COALESCE
///   TO_CHAR(x)                x as text
///   a + b                     concatenation; null if either is null, as in SQL Server
///   a || b                    concatenation; null counts as empty, as in Oracle
/// For PostgreSQL it also adapts the columns and order of a UNION (UnionColumns.h). Everything else
/// stays unchanged, as do all texts for SQL Server, Oracle and unknown engines. A "+" next to a
/// number remains an addition.
/// \throws Error SyntaxOrPermission if the text is nested too deeply
String RewriteForEngine(StringView sql, Engine engine);

}  // namespace ktrv::database
