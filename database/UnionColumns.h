#pragma once

#include "common/Text.h"

namespace ktrv::database {

/// The text for PostgreSQL, which unites no number with a text, as the other engines do: where the
/// same place of two united SELECTs holds columns of different names, such as ID and CODE, both are
/// taken as texts. Everything else stays to the letter.
String UniteUnlikeColumns(StringView sql);

/// The text for PostgreSQL, which gives the rows of a UNION in no order that a user could make out,
/// where the other engines give them by their first column: with that order, unless it has one.
String WithOrderOfUnion(StringView sql);

}  // namespace ktrv::database
