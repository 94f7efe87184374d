#pragma once

#include <vector>

#include "common/Text.h"

namespace ktrv::database {

/// One piece of an SQL text.
struct SqlToken {
  enum class Kind {
    Word,     ///< name, keyword or quoted name
    Number,   ///< numeric literal
    Literal,  ///< text literal, quotes and an N in front included
    Mark,     ///< operator or punctuation; "||" is one
    Space,    ///< blanks and comments
  };
  Kind KindOf;
  StringView Text;  ///< as written; valid while the SQL text lives
};

/// The pieces of an SQL text in order; joined they give the text again. A literal, quoted name or
/// comment that is not closed goes to the end of the text.
std::vector<SqlToken> TokenizeSql(StringView sql);

}  // namespace ktrv::database
