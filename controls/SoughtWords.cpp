#include "controls/SoughtWords.h"

#include <algorithm>

#include "controls/LetterFolding.h"

namespace ktrv::controls {
namespace {

/// Calls `take` with each word of a folded text until it returns false.
template <class Take>
void ForEachWord(StringView folded, Take&& take) {
  while (!folded.empty()) {
    const std::size_t end = std::min(folded.find(u' '), folded.size());
    if (!take(folded.substr(0, end))) return;
    folded.remove_prefix(std::min(end + 1, folded.size()));
  }
}

}  // namespace

SoughtWords::SoughtWords(StringView typed, const LetterFolding& folding)
    : folding_(folding), folded_(folding.Folded(typed)) {
  ForEachWord(folded_, [this](StringView word) {
    words_.push_back(word);
    return true;
  });
  std::stable_sort(words_.begin(), words_.end(),
                   [](StringView left, StringView right) { return left.size() > right.size(); });
}

int SoughtWords::CountOf(StringView word) const {
  return static_cast<int>(std::count_if(words_.begin(), words_.end(),
                                        [&](StringView each) { return each.starts_with(word); }));
}

bool SoughtWords::Begin(StringView name) const {
  if (IsEmpty()) return false;
  folding_.FoldInto(name, name_);
  return name_.starts_with(folded_);
}

bool SoughtWords::StartWordsOf(StringView name) const {
  if (IsEmpty()) return false;
  folding_.FoldInto(name, name_);
  // The words of the name that start with one typed word are among those that start with another,
  // or they are others. So it is enough to count them.
  return std::all_of(words_.begin(), words_.end(), [this](StringView wanted) {
    int missing = CountOf(wanted);
    ForEachWord(name_, [&](StringView word) {
      if (word.starts_with(wanted)) --missing;
      return missing > 0;
    });
    return missing == 0;
  });
}

}  // namespace ktrv::controls
