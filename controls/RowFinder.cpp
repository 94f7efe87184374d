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

/// The rows of the source, and of the grid itself, that may match.
using Candidates = std::array<RowSet, 2>;

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
    if (finder_.columns_.Name == 0 || words_.IsEmpty()) return -1;
    const WordIndex::Start first(words_.First());
    int worded = -1;
    const int begun = Walk(CandidatesIn(&Indexes::Names), [&](int row) {
      const auto name = [&] { return rows_.Text(row, finder_.columns_.Name); };
      if (finder_.MayBegin(rows_.OriginOf(row), first) && words_.Begin(name())) return true;
      if (worded < 0 && words_.StartWordsOf(name())) worded = row;
      return false;
    });
    return begun >= 0 ? begun : worded;
  }

  int ByName() const { return ByWords(&Indexes::Names, finder_.columns_.Name); }
  int ByCompany() const { return ByWords(&Indexes::Companies, finder_.columns_.Company); }

  int ByNumber() const {
    if (finder_.columns_.Number == 0 || number_.IsEmpty()) return -1;
    std::optional<Candidates> candidates;
    if (UsesIndex()) {
      const auto in = [&](const Indexes& each) { return each.Numbers->RowsWith(number_.Digits()); };
      candidates = Candidates{in(finder_.indexes_[0]), in(finder_.indexes_[1])};
    }
    return Walk(candidates,
                [&](int row) { return number_.IsIn(rows_.Text(row, finder_.columns_.Number)); });
  }

 private:
  bool UsesIndex() const { return path_.Length >= kFewRows; }

  std::optional<Candidates> CandidatesIn(std::optional<WordIndex> Indexes::*index) const {
    if (!UsesIndex()) return std::nullopt;
    const auto in = [&](const Indexes& each) { return CandidatesOf(*(each.*index), words_); };
    return Candidates{in(finder_.indexes_[0]), in(finder_.indexes_[1])};
  }

  int ByWords(std::optional<WordIndex> Indexes::*index, int column) const {
    if (column == 0 || words_.IsEmpty()) return -1;
    return Walk(CandidatesIn(index),
                [&](int row) { return words_.StartWordsOf(rows_.Text(row, column)); });
  }

  /// The first row of the path that matches. \param candidates the rows that may match; nullopt if
  /// any may
  template <class Matches>
  int Walk(const std::optional<Candidates>& candidates, Matches&& matches) const {
    if (areAllKnown_ && candidates && (*candidates)[0].IsEmpty() && (*candidates)[1].IsEmpty()) {
      return -1;
    }
    const int count = rows_.Count();
    const bool isNatural = rows_.IsNatural();
    bool areAllKnown = candidates.has_value();
    int row = path_.Start;
    for (int left = path_.Length; left > 0; --left, row += path_.Backward ? -1 : 1) {
      if (row < 0) row += count;
      if (row >= count) row -= count;
      if (candidates) {
        const GridRows::Origin origin = rows_.OriginOf(row);
        const RowSet& set = (*candidates)[origin.IsOwn ? 1 : 0];
        const auto place = static_cast<std::size_t>(origin.Row);
        const bool isKnown = origin.Row >= 0 && place < set.Size();
        if (isKnown && !set.Contains(place)) {
          if (!isNatural) continue;
          const int skipped = SkippedFrom(set, place);
          left -= skipped;
          row += path_.Backward ? -skipped : skipped;
          continue;
        }
        areAllKnown = areAllKnown && isKnown;
      }
      if (matches(row)) return row;
    }
    areAllKnown_ = areAllKnown;
    return -1;
  }

  /// The rows behind this one, on the path, that are no candidates, in the order of their source.
  int SkippedFrom(const RowSet& candidates, std::size_t place) const {
    const auto row = static_cast<std::int64_t>(place);
    const auto next = static_cast<std::int64_t>(candidates.NextFrom(place));
    return static_cast<int>(path_.Backward ? row - candidates.PreviousFrom(place) : next - row) - 1;
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
  indexes_[0].Start(columns);
  ForgetOwn();
}

void RowFinder::ForgetOwn() {
  indexes_[1].Start(columns_);
  ownRows_ = 0;
}

void RowFinder::Indexes::Start(const SearchColumns& columns) {
  *this = {};
  // Column 0 is the grid's fixed column.
  const auto inSource = [](int column) { return static_cast<std::size_t>(column) - 1; };
  if (columns.Name > 0) Names.emplace(inSource(columns.Name));
  if (columns.Company > 0) Companies.emplace(inSource(columns.Company));
  if (columns.Number > 0) Numbers.emplace(inSource(columns.Number));
}

void RowFinder::Indexes::Extend(const RowSource& rows, std::int64_t end,
                                const LetterFolding& folding) {
  if (Names) Names->Extend(rows, end, folding);
  if (Companies) Companies->Extend(rows, end, folding);
  if (Numbers) Numbers->Extend(rows, end);
}

void RowFinder::Extend(const RowSource& rows, const LetterFolding& folding) {
  indexes_[0].Extend(rows, rows.RecordCount(), folding);
}

bool RowFinder::ExtendOwn(const GridRows& rows, const LetterFolding& folding) {
  constexpr std::int64_t kAtOnce = 2000;
  const RowSource& own = rows.OwnRows();
  ownRows_ = std::min(ownRows_ + kAtOnce, own.RecordCount());
  indexes_[1].Extend(own, ownRows_, folding);
  return ownRows_ < own.RecordCount();
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
