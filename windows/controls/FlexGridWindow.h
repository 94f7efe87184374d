#pragma once

#include <array>
#include <string>
#include <vector>

#include "controls/FlexGrid.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Drawing.h"
#include "windows/controls/PictureCache.h"

namespace ktrv::windows {

/// A virtual list view: it requests the cells it shows, so rows need no memory here.
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
  /// Suspends painting of the list view. Nestable.
  class RedrawOff {
   public:
    explicit RedrawOff(FlexGridWindow& grid);
    ~RedrawOff();
    RedrawOff(const RedrawOff&) = delete;
    RedrawOff& operator=(const RedrawOff&) = delete;

   private:
    FlexGridWindow& grid_;
  };

  /// Timer that shows appended rows together, after a short delay.
  static constexpr UINT_PTR kRowsTimer = 0x4B54;
  void ShowAppended();
  /// Applies the form's font with the grid's own font family, if it has one.
  void ApplyFont();
  bool appended_ = false;  ///< rows were appended that are not shown yet

  std::vector<int> VisibleColumns() const;
  /// The grid's column of a list view column; null if the grid no longer has it.
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
  /// Reads the selection from the list view. It does not notify of rows that Shift selections
  /// deselect, nor of a range with a single row.
  void ReadSelection();
  bool MayChangeSelection(UINT message) const;
  bool IsShown(int row, UINT state) const;
  /// Whether exactly these rows are selected in the list view.
  bool AreShown(const controls::RowSelection& rows) const;
  void OnClick(controls::MouseButton button, const NMITEMACTIVATE& click);
  LRESULT OnDraw(const NMLVCUSTOMDRAW& draw);
  void DrawPictures(HDC target, int item);
  bool OnKey(WPARAM key);
  std::optional<LRESULT> OnHeader(const NMHEADERW& header);
  void FitColumn(int listColumn);

  controls::FlexGrid& grid_;
  UniqueFont font_;            ///< null: the grid uses the form's font
  UniqueImageList rowHeight_;  ///< its image size sets the row height
  /// The grid's column for each list view column.
  std::vector<int> shown_;
  /// The selection of the list view, as far as it was notified.
  controls::RowSelection selected_;
  int focused_ = 0;
  controls::RowSelection::Range range_;  ///< range of the last notification since ReadSelection
  PictureCache pictures_;
  int changing_ = 0;  ///< > 0 while the program, not the user, changes the list view
  int redrawOff_ = 0;
  bool painting_ = false;
  /// The last texts passed to the list view, which may use several at a time.
  std::array<std::wstring, 4> given_;
  std::size_t nextGiven_ = 0;
};

}  // namespace ktrv::windows
