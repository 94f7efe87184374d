#pragma once

#include <string>

#include "common/Text.h"

namespace ktrv::controls {

/// Text functions that depend on the user's language.
class Language {
 public:
  virtual ~Language() = default;

  /// Converts each unit to upper case; the length stays the same.
  virtual void ToUpper(String& text) const = 0;

  /// Appends a binary sort key. Comparing keys bytewise gives the collation order of the user's
  /// language: accented letters next to their base letters, case last. Do not store or show it.
  virtual void AppendSortKey(StringView text, std::string& keys) const = 0;

  /// Appends a binary key that is equal for texts which differ only in case, or in accents that do
  /// not make another letter in the user's language. Empty if the language knows no such key.
  virtual void AppendSearchKey(StringView text, std::string& keys) const = 0;
};

}  // namespace ktrv::controls
