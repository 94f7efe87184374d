#pragma once

#include <vector>

#include "common/Text.h"

namespace ktrv::controls {

class LetterFolding;

/// The words of a typed text, compared with names. Case, punctuation, repeated blanks and accents
/// are ignored as by LetterFolding.
class SoughtWords {
 public:
  /// The folding must outlive the object.
  SoughtWords(StringView typed, const LetterFolding& folding);
  SoughtWords(const SoughtWords&) = delete;
  SoughtWords& operator=(const SoughtWords&) = delete;

  /// An empty text matches nothing.
  bool IsEmpty() const { return folded_.empty(); }
  /// The words, folded; the longest first.
  const std::vector<StringView>& LongestFirst() const { return words_; }
  /// How many of the words start with this one. A name matches if for each of them it has at least
  /// as many words that start with it.
  int CountOf(StringView word) const;
  /// The first word as typed, folded. \pre not empty
  StringView First() const { return StringView(folded_).substr(0, folded_.find(u' ')); }

  /// Whether the name starts with the typed text.
  bool Begin(StringView name) const;
  /// Whether each typed word is the start of another word of the name, in any order.
  bool StartWordsOf(StringView name) const;

 private:
  const LetterFolding& folding_;
  String folded_;
  std::vector<StringView> words_;  ///< parts of folded_
  mutable String name_;            ///< reused, to avoid an allocation for each name
};

}  // namespace ktrv::controls
