#pragma once

#include <optional>
#include <string>

#include "controls/FlexGrid.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/ListColumns.h"

namespace ktrv::windows {

/// Shows the whole text of the cell under the pointer if the list cuts it off.
class CutTextTip {
 public:
  /// All must outlive the object.
  CutTextTip(const ControlWindow& list, const ListColumns& columns, const controls::FlexGrid& grid)
      : list_(list), columns_(columns), grid_(grid) {}
  ~CutTextTip();
  CutTextTip(const CutTextTip&) = delete;
  CutTextTip& operator=(const CutTextTip&) = delete;

  /// Call after the list view was created.
  void Create();
  /// The pointer has moved over the list view.
  void OnMouseMove();
  /// Handles a WM_NOTIFY of the tip. nullopt: not handled.
  std::optional<LRESULT> OnNotify(NMHDR& header);

 private:
  /// A cell of the list view, 0-based; -1 for none.
  struct Cell {
    int Item = -1;
    int Column = -1;

    bool operator==(const Cell&) const = default;
  };
  Cell UnderPointer() const;
  bool IsCut(const Cell& cell, const std::wstring& text) const;

  const ControlWindow& list_;
  const ListColumns& columns_;
  const controls::FlexGrid& grid_;
  HWND tip_ = nullptr;
  Cell shown_;
  std::wstring text_;  ///< the tip refers to it
};

}  // namespace ktrv::windows
