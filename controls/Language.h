#pragma once

#include <string>

#include "common/Text.h"

namespace ktrv::controls {

/// What the user's language decides about text.
class Language {
 public:
  virtual ~Language() = default;

  /// The capital of each unit, one for one, so that positions stay.
  virtual void ToUpper(String& text) const = 0;

  /// Appends bytes whose order is the order of the texts in the user's language (accented letters
  /// beside their base letters, case last). Not meant to be kept or shown.
  virtual void AppendSortKey(StringView text, std::string& keys) const = 0;
};

}  // namespace ktrv::controls
