#pragma once

#include "common/Text.h"

namespace ktrv::controls {

class Language;

/// The capital of every UTF-16 unit in a table, so that a million names can be compared regardless
/// of case between two keys of a typist.
class CaseFolding {
 public:
  explicit CaseFolding(const Language& language);

  char16_t Fold(char16_t unit) const { return capitals_[unit]; }
  String Folded(StringView text) const;

  /// \param prefix folded.
  bool StartsWith(StringView text, StringView prefix) const;

 private:
  String capitals_;
};

}  // namespace ktrv::controls
