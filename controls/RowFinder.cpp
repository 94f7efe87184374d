#include "controls/RowFinder.h"

#include <algorithm>
#include <utility>

#include "controls/SoughtNumber.h"
#include "controls/SoughtWords.h"

namespace ktrv::controls {
namespace {

/// An index finds the candidates of all rows at once. For fewer rows than this it is faster to read
/// their texts.
constexpr int kFewRows = 4000;

/// The rows of a search: from the start in one direction, and then from the other end on.
struct Path {
  int Start = 0;
  bool Backward = false;
  int Length = 0;
};

/// Exact but for words that are longer than an index entry.
RowSet CandidatesOf(const WordIndex& index, const SoughtWords& words) {
  RowSet candidates(0);
  for (const StringView word : words.LongestFirst()) {
    RowSet rows = index.RowsWith(WordIndex::Start(word), words.CountOf(word));
    if (candidates.Size() == 0) {
      candidates = std::move(rows);
    } else {
      candidates.Intersect(rows);
    }
    if (candidates.IsEmpty()) break;
  }
  return candidates;
}

}  // namespace

/// One search along a path.
class RowFinder::Search {
 public:
  Search(const RowFinder& finder, const GridRows& rows, const LetterFolding& folding,
         StringView typed, Path path)
      : finder_(finder), rows_(rows), words_(typed, folding), number_(typed), path_(path) {}

  /// The first name that starts with the text; if there is none, the first with its words.
  int ByNameStart() const {
    if (!finder_.names_ || words_.IsEmpty()) return -1;
    const auto candidates = CandidatesIn(finder_.names_);
    const WordIndex::Start first(words_.First());
    int worded = -1;
    const int begun = Walk(candidates, [&](int row) {
      const auto name = [&] { return rows_.Text(row, finder_.columns_.Name); };
      if (MayBegin(row, first) && words_.Begin(name())) return true;
      if (worded < 0 && words_.StartWordsOf(name())) worded = row;
      return false;
    });
    return begun >= 0 ? begun : worded;
  }

  int ByName() const { return ByWords(finder_.names_, finder_.columns_.Name); }
  int ByCompany() const { return ByWords(finder_.companies_, finder_.columns_.Company); }

  int ByNumber() const {
    if (!finder_.numbers_ || number_.IsEmpty()) return -1;
    std::optional<RowSet> candidates;
    if (UsesIndex()) candidates = finder_.numbers_->RowsWith(number_.Digits());
    return Walk(candidates,
                [&](int row) { return number_.IsIn(rows_.Text(row, finder_.columns_.Number)); });
  }

 private:
  bool UsesIndex() const { return path_.Length >= kFewRows; }

  std::optional<RowSet> CandidatesIn(const std::optional<WordIndex>& index) const {
    if (!UsesIndex()) return std::nullopt;
    return CandidatesOf(*index, words_);
  }

  int ByWords(const std::optional<WordIndex>& index, int column) const {
    if (!index || words_.IsEmpty()) return -1;
    return Walk(CandidatesIn(index),
                [&](int row) { return words_.StartWordsOf(rows_.Text(row, column)); });
  }

  bool MayBegin(int row, const WordIndex::Start& word) const {
    const std::int64_t source = rows_.SourceRow(row);
    if (source < 0 || static_cast<std::size_t>(source) >= finder_.names_->Rows()) return true;
    return finder_.MayBegin(static_cast<std::size_t>(source), word);
  }

  /// The first row of the path that matches. \param candidates the rows of the source that may
  /// match; nullopt if any may
  template <class Matches>
  int Walk(const std::optional<RowSet>& candidates, Matches&& matches) const {
    if (areAllKnown_ && candidates && candidates->IsEmpty()) return -1;
    const int count = rows_.Count();
    const bool isNatural = rows_.IsNatural();
    bool areAllKnown = candidates.has_value();
    int row = path_.Start;
    for (int left = path_.Length; left > 0; --left, row += path_.Backward ? -1 : 1) {
      if (row < 0) row += count;
      if (row >= count) row -= count;
      if (candidates && !IsAmong(*candidates, row)) {
        if (!isNatural) continue;
        const int skipped = SkippedFrom(*candidates, row);
        left -= skipped;
        row += path_.Backward ? -skipped : skipped;
        continue;
      }
      areAllKnown = areAllKnown && IsKnown(*candidates, row);
      if (matches(row)) return row;
    }
    areAllKnown_ = areAllKnown;
    return -1;
  }

  /// Whether the row is in the index.
  bool IsKnown(const RowSet& candidates, int row) const {
    const std::int64_t source = rows_.SourceRow(row);
    return source >= 0 && static_cast<std::size_t>(source) < candidates.Size();
  }

  /// Whether the row is a candidate or not in the index.
  bool IsAmong(const RowSet& candidates, int row) const {
    return !IsKnown(candidates, row) ||
           candidates.Contains(static_cast<std::size_t>(rows_.SourceRow(row)));
  }

  /// In the order of the source: the rows behind this one, on the path, that are no candidates.
  int SkippedFrom(const RowSet& candidates, int row) const {
    const auto place = static_cast<std::size_t>(row);
    if (path_.Backward) return row - static_cast<int>(candidates.PreviousFrom(place)) - 1;
    return static_cast<int>(candidates.NextFrom(place)) - row - 1;
  }

  const RowFinder& finder_;
  const GridRows& rows_;
  const SoughtWords words_;
  const SoughtNumber number_;
  const Path path_;
  /// Whether a walk has seen that the indexes know all rows of the path.
  mutable bool areAllKnown_ = false;
};

void RowFinder::Start(const SearchColumns& columns) {
  columns_ = columns;
  names_.reset();
  companies_.reset();
  numbers_.reset();
  // Column 0 is the grid's fixed column.
  const auto inSource = [](int column) { return static_cast<std::size_t>(column) - 1; };
  if (columns.Name > 0) names_.emplace(inSource(columns.Name));
  if (columns.Company > 0) companies_.emplace(inSource(columns.Company));
  if (columns.Number > 0) numbers_.emplace(inSource(columns.Number));
}

void RowFinder::Extend(const RowSource& rows, const LetterFolding& folding) {
  if (names_) names_->Extend(rows, folding);
  if (companies_) companies_->Extend(rows, folding);
  if (numbers_) numbers_->Extend(rows);
}

int RowFinder::First(const GridRows& rows, const LetterFolding& folding, StringView typed,
                     int start) const {
  const int length = std::max(rows.Count() - start, 0);
  const Search search(*this, rows, folding, typed, {.Start = start, .Length = length});
  int row = search.ByNameStart();
  if (row < 0) row = search.ByCompany();
  return row < 0 ? search.ByNumber() : row;
}

int RowFinder::Next(const GridRows& rows, const LetterFolding& folding, StringView typed, int row,
                    bool backward) const {
  const int count = rows.Count();
  const int start = backward ? (row < 0 ? count : row) - 1 : row + 1;
  const Search search(*this, rows, folding, typed,
                      {.Start = start, .Backward = backward, .Length = count});
  int next = search.ByName();
  if (next < 0) next = search.ByCompany();
  return next < 0 ? search.ByNumber() : next;
}

}  // namespace ktrv::controls
