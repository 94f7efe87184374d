#pragma once

#include <array>
#include <string>
#include <vector>

#include "controls/FlexGrid.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Drawing.h"
#include "windows/controls/PictureCache.h"

namespace ktrv::windows {

/// A list view that asks for the cells it shows, so that rows cost nothing here.
class FlexGridWindow final : public Peer<controls::FlexGridPeer> {
 public:
  FlexGridWindow(FormWindow& form, controls::FlexGrid& grid);

  void ColumnsChanged() override;
  void RowsChanged() override;
  void RowsAppended() override;
  void HeadingChanged(int column) override;
  void SelectionChanged() override;
  void RowShown(int row) override;
  void RedrawChanged() override;

  std::optional<LRESULT> OnNotify(NMHDR& header) override;
  void OnScaleChanged() override;

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void AfterMessage(UINT message) override;

 private:
  /// Keeps the list view from painting. Calls may nest.
  class RedrawOff {
   public:
    explicit RedrawOff(FlexGridWindow& grid);
    ~RedrawOff();
    RedrawOff(const RedrawOff&) = delete;
    RedrawOff& operator=(const RedrawOff&) = delete;

   private:
    FlexGridWindow& grid_;
  };

  /// Rows that came are shown together, a little later.
  static constexpr UINT_PTR kRowsTimer = 0x4B54;
  void ShowAppended();
  /// The form's font in the grid's own family, where it has one.
  void ApplyFont();
  bool appended_ = false;  ///< rows came that are not shown

  std::vector<int> VisibleColumns() const;
  /// The grid's column of the list view's; null when the grid's columns went meanwhile.
  const controls::GridColumn* ColumnOf(int listColumn) const;
  HWND Header() const;
  void InsertColumn(int listColumn);
  void UpdateColumn(int listColumn);
  void SetItemState(int item, UINT state, UINT mask);
  void ShowSelection();

  void GiveCell(LVITEMW& item);
  LRESULT FindItem(const NMLVFINDITEMW& search);
  void OnItemChanged(const NMLISTVIEW& change);
  void OnRangeChanged(const NMLVODSTATECHANGE& change);
  void TakeSelection(int first, int last, bool selected);
  /// Takes the selection as it is on the screen. The list view tells neither the rows that are no
  /// longer selected when Shift selects a range, nor a range of a single row.
  void ReadSelection();
  bool MayChangeSelection(UINT message) const;
  bool IsShown(int row, UINT state) const;
  /// Whether the list view has just these rows selected.
  bool AreShown(const controls::RowSelection& rows) const;
  void OnClick(controls::MouseButton button, const NMITEMACTIVATE& click);
  LRESULT OnDraw(const NMLVCUSTOMDRAW& draw);
  void DrawPictures(HDC target, int item);
  bool OnKey(WPARAM key);
  std::optional<LRESULT> OnHeader(const NMHEADERW& header);
  void FitColumn(int listColumn);

  controls::FlexGrid& grid_;
  UniqueFont font_;            ///< none while the grid has the form's
  UniqueImageList rowHeight_;  ///< a list view's rows are as high as its pictures
  /// The grid's column of each of the list view's.
  std::vector<int> shown_;
  /// What the list view has selected, as far as it has told.
  controls::RowSelection selected_;
  int focused_ = 0;
  controls::RowSelection::Range range_;  ///< told last since the selection was read
  PictureCache pictures_;
  int changing_ = 0;  ///< more than 0 while the form, not the user, changes the list view
  int redrawOff_ = 0;
  bool painting_ = false;
  /// Texts that the list view was given last; it may look at more than one at a time.
  std::array<std::wstring, 4> given_;
  std::size_t nextGiven_ = 0;
};

}  // namespace ktrv::windows
