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
};

}  // namespace ktrv::controls
