#pragma once

#include <unordered_map>

#include "controls/FlexGrid.h"

namespace ktrv {

/// The place of the user in a list of contacts, kept until the list is loaded again: the chosen row
/// by kind and id, or the next one if that is gone, and how far the list is scrolled. What the user
/// selects or scrolls to meanwhile stays. The list's columns have the keys ID and CONTACTTYPE.
class ListPlace {
 public:
  /// \pre the grid shows a list
  explicit ListPlace(const controls::FlexGrid& grid);

  /// Rows have arrived in the grid, behind the others. Goes to the row if it is there.
  void RowsCame(controls::FlexGrid& grid);
  /// All rows are there. Goes to the row, or to the next one.
  /// \param isComplete whether no rows are missing; otherwise the next one may be a wrong one
  void RowsAreThere(controls::FlexGrid& grid, bool isComplete);

 private:
  struct Sought {
    String Kind;
    int Rank;  ///< 0 for the row itself, then the rows that may take its place, the best first
  };
  struct Found {
    int Row = 0;
    int Rank = 0;
  };

  void Add(const controls::FlexGrid& grid, int row);
  void Look(const controls::FlexGrid& grid);
  bool HasRow() const { return found_.Rank == 0 && found_.Row > 0; }
  void GoTo(controls::FlexGrid& grid);
  void Scroll(controls::FlexGrid& grid, int top);

  std::unordered_multimap<String, Sought> sought_;  ///< by id
  Found found_;
  int top_ = 0;       ///< the first visible row
  int above_ = 0;     ///< rows between it and the chosen one
  int looked_ = 0;    ///< rows that were compared
  int selected_ = 0;  ///< the row that was selected; 0 for none yet
  int shownTop_ = 1;  ///< the first visible row, unless the user has scrolled
};

}  // namespace ktrv
