#pragma once

#include <vector>

#include "common/Text.h"

namespace ktrv::database {

/// A token of an SQL text.
struct SqlToken {
  enum class Kind {
    Word,     ///< name, keyword or quoted name
    Number,   ///< numeric literal
    Literal,  ///< text literal, including quotes and an N prefix
    Mark,     ///< operator or punctuation; "||" is one token
    Space,    ///< blanks and comments
  };
  Kind KindOf;
  StringView Text;  ///< as written; valid as long as the SQL text
};

/// The tokens of an SQL text in order; concatenated they give the text again. An unclosed literal,
/// quoted name or comment extends to the end.
std::vector<SqlToken> TokenizeSql(StringView sql);

/// Whether the token is a literal or a name whose quote is not closed, so that text appended to it
/// becomes part of it.
bool IsOpen(const SqlToken& token);

/// Appends with a space between if both would be one name or number otherwise: a parenthesis that
/// becomes a call may follow a word directly.
void AppendApart(String& sql, StringView more);

}  // namespace ktrv::database
