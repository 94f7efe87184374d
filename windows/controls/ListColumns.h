#pragma once

#include <vector>

#include "controls/FlexGrid.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/PictureCache.h"

namespace ktrv::windows {

/// The columns of a list view: shows a grid's visible columns, their headings and pictures.
class ListColumns {
 public:
  /// Both must outlive the object.
  ListColumns(ControlWindow& list, controls::FlexGrid& grid) : list_(list), grid_(grid) {}

  /// Whether the shown columns differ from the grid's visible ones.
  bool AreOthers() const { return Visible() != shown_; }
  /// Replaces all columns of the list view by the visible ones of the grid.
  void Replace();
  /// Shows the grid's first columns, until it has columns with names.
  void ShowFirst();
  /// Whether the first column has pictures before its texts.
  bool HasPicturesBefore() const;
  /// Whether the item's row is marked in column 0.
  bool IsMarked(int item) const;
  /// Whether a shown column has a key.
  bool AreNamed() const;
  /// Updates headings and widths.
  void Update();
  void HeadingChanged(int column);

  /// The grid's column of a list view column; nullopt if the grid no longer has it.
  std::optional<int> Find(int listColumn) const;

  /// Handles a WM_NOTIFY of the header control. nullopt: not handled.
  std::optional<LRESULT> OnHeader(const NMHEADERW& header);
  LRESULT OnDraw(NMLVCUSTOMDRAW& draw);

  /// The list view's header control.
  HWND Header() const { return reinterpret_cast<HWND>(list_.Send(LVM_GETHEADER)); }

 private:
  std::vector<int> Visible() const;
  void UpdateColumn(int listColumn);
  void Fit(int listColumn);
  void DrawPictures(HDC target, int item);
  /// Draws the mark of an item in the right half of its cell. \return the rest of the cell
  RECT DrawMark(HDC target, int item, RECT cell);
  void DrawPictureBefore(HDC target, int item);
  void DrawSelected(NMLVCUSTOMDRAW& draw) const;

  ControlWindow& list_;
  controls::FlexGrid& grid_;
  /// The grid's column for each list view column.
  std::vector<int> shown_;
  PictureCache pictures_;
};

}  // namespace ktrv::windows
