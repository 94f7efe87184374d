#pragma once

#include "common/Text.h"

namespace ktrv::controls {

class Language;

/// The form in which names are searched: words in upper case, separated by single blanks, without
/// punctuation and without accents that the user's language regards as a variant of the letter.
class LetterFolding {
 public:
  explicit LetterFolding(const Language& language);

  /// The folded unit: a blank between words; kIgnored for combining marks and format characters.
  char16_t Fold(char16_t unit) const { return folded_[unit]; }
  static constexpr char16_t kIgnored = u'\0';

  /// Without leading and trailing blanks. Replaces the contents of `folded`.
  void FoldInto(StringView text, String& folded) const;
  String Folded(StringView text) const;

 private:
  void MergeAccents(const Language& language, char16_t first, char16_t last);

  String folded_;  ///< by unit
};

}  // namespace ktrv::controls
