#pragma once

#include "common/Text.h"

namespace ktrv::data {

/// The two families of query texts (they concatenate and default text differently), or neither.
enum class Dialect { None, Sql, Oracle };

/// The family of the host's dialect word, case-sensitive: "sql" and "MYSQL" give None. Used by the
/// address book window.
inline Dialect ExactDialect(StringView word) {
  if (word == u"ORACLE") return Dialect::Oracle;
  if (word == u"SQL") return Dialect::Sql;
  return Dialect::None;
}

/// The family of the host's dialect word, case-insensitive. Used by the group editor.
inline Dialect FoldedDialect(StringView word) {
  return ExactDialect(ToUpperAscii(word));
}

/// Whether the dialect word ("MYSQL" in any case) selects narrow text parameters.
inline bool WantsNarrowText(StringView word) {
  return ToUpperAscii(word) == u"MYSQL";
}

}  // namespace ktrv::data
