#pragma once

#include "common/Text.h"

namespace ktrv::database {

/// For PostgreSQL, which rejects a UNION of a number with a text. Where the united SELECTs have
/// columns with different names at the same place, such as ID and CODE, all are cast to text.
/// Everything else stays unchanged.
String UniteUnlikeColumns(StringView sql);

/// For PostgreSQL, which returns the rows of a UNION in an arbitrary order, whereas other engines
/// sort them by the first column. Adds ORDER BY 1 unless the text has ORDER BY or UNION ALL.
String WithOrderOfUnion(StringView sql);

}  // namespace ktrv::database
