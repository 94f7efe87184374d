#pragma once

#include "common/Text.h"

namespace ktrv::controls {

class Language;

/// A table of the upper case of each UTF-16 unit, so that a million names can be searched
/// case-insensitively between two keystrokes.
class CaseFolding {
 public:
  explicit CaseFolding(const Language& language);

  char16_t Fold(char16_t unit) const { return capitals_[unit]; }
  String Folded(StringView text) const;

  /// \param prefix already folded
  bool StartsWith(StringView text, StringView prefix) const;

 private:
  String capitals_;
};

}  // namespace ktrv::controls
