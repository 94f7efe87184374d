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

}  // namespace ktrv::data
