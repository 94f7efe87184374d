#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "common/RowSource.h"
#include "controls/GridRows.h"
#include "controls/NumberIndex.h"
#include "controls/WordIndex.h"

namespace ktrv::controls {

/// Columns of a grid in which a typed text is sought; 0 for none.
struct SearchColumns {
  int Name = 0;
  int Company = 0;
  int Number = 0;

  bool operator==(const SearchColumns&) const = default;
};

/// Finds rows by a typed text: by the words of the name, if no row has such a name by the words of
/// the company, and if there is none either, by the digits of the number. Indexes the rows of a
/// source and those of the grid itself, so that a search among a million rows takes a few
/// milliseconds.
class RowFinder {
 public:
  /// Clears the index.
  void Start(const SearchColumns& columns);
  /// As Start without columns; nothing is found then.
  void Stop() { Start({}); }
  const SearchColumns& Columns() const { return columns_; }
  /// Indexes the rows that the source has got since the last call.
  void Extend(const RowSource& rows, const LetterFolding& folding);
  /// The same for rows of the grid itself, some milliseconds at most. \return whether there are
  /// more
  bool ExtendOwn(const GridRows& rows, const LetterFolding& folding);
  /// The grid has discarded its own rows.
  void ForgetOwn();

  /// The first row from `start` whose name starts with the text; if there is none, the first one
  /// that matches it otherwise. Rows are 0-based, in display order. \return -1 if there is none
  int First(const GridRows& rows, const LetterFolding& folding, StringView typed, int start) const;
  /// The next matching row after this one, or the previous one before it. The search continues at
  /// the other end of the list and may return the same row. \param row -1: outside the list
  int Next(const GridRows& rows, const LetterFolding& folding, StringView typed, int row,
           bool backward) const;

  /// False if the name of the row cannot start with the word. \pre Columns().Name is a column
  bool MayBegin(const GridRows::Origin& row, const WordIndex::Start& word) const {
    const WordIndex& names = *indexes_[row.IsOwn ? 1 : 0].Names;
    const auto place = static_cast<std::size_t>(row.Row);
    return row.Row < 0 || place >= names.Rows() || names.MayBegin(place, word);
  }

 private:
  class Search;

  struct Indexes {
    std::optional<WordIndex> Names;
    std::optional<WordIndex> Companies;
    std::optional<NumberIndex> Numbers;

    void Start(const SearchColumns& columns);
    void Extend(const RowSource& rows, std::int64_t end, const LetterFolding& folding);
  };

  SearchColumns columns_;
  std::array<Indexes, 2> indexes_;  ///< of the source's rows and of the grid's own
  std::int64_t ownRows_ = 0;        ///< that are indexed
};

}  // namespace ktrv::controls
