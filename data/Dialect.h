#pragma once

#include "common/Text.h"

namespace ktrv::data {

/// The two families of texts that join or default text, and the case that neither is wanted.
enum class Dialect { None, Sql, Oracle };

/// The family of the host's dialect word, compared exactly: "sql" and "MYSQL" name none. The
/// address book window chooses its texts this way.
inline Dialect ExactDialect(StringView word) {
  if (word == u"ORACLE") return Dialect::Oracle;
  if (word == u"SQL") return Dialect::Sql;
  return Dialect::None;
}

/// The family of the host's dialect word, its case set aside: "Oracle" and "sql" count too. The
/// group editor chooses its texts this way.
inline Dialect FoldedDialect(StringView word) {
  return ExactDialect(ToUpperAscii(word));
}

/// Whether the host's dialect word asks for narrow text parameters.
inline bool WantsNarrowText(StringView word) {
  return ToUpperAscii(word) == u"MYSQL";
}

}  // namespace ktrv::data
