#pragma once

#include <vector>

#include "controls/FlexGrid.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/PictureCache.h"

namespace ktrv::windows {

/// The columns of a grid that its list view shows, their headings and the pictures in them.
class ListColumns {
 public:
  /// Both must outlive this.
  ListColumns(ControlWindow& list, controls::FlexGrid& grid) : list_(list), grid_(grid) {}

  /// Whether other columns are to be shown than those that are.
  bool AreOthers() const { return Visible() != shown_; }
  /// Takes the columns out and puts those in that are to be shown.
  void Replace();
  bool AreNamed() const;
  /// Shows headings and widths anew.
  void Update();
  void HeadingChanged(int column);

  /// The grid's column of the list view's; nothing when the grid's columns went meanwhile.
  std::optional<int> Find(int listColumn) const;

  /// A WM_NOTIFY of the list view's header. Nothing: unhandled.
  std::optional<LRESULT> OnHeader(const NMHEADERW& header);
  LRESULT OnDraw(const NMLVCUSTOMDRAW& draw);

  /// The list view's window with the headings.
  HWND Header() const { return reinterpret_cast<HWND>(list_.Send(LVM_GETHEADER)); }

 private:
  std::vector<int> Visible() const;
  void UpdateColumn(int listColumn);
  void Fit(int listColumn);
  void DrawPictures(HDC target, int item);

  ControlWindow& list_;
  controls::FlexGrid& grid_;
  /// The grid's column of each of the list view's.
  std::vector<int> shown_;
  PictureCache pictures_;
};

}  // namespace ktrv::windows
