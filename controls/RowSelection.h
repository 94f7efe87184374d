#pragma once

#include <vector>

namespace ktrv::controls {

/// The selected rows of a grid, kept as ranges: all of a million rows are one of them.
class RowSelection {
 public:
  /// Both ends belong to it.
  struct Range {
    int First = 0;
    int Last = 0;

    bool operator==(const Range&) const = default;
  };

  /// From top to bottom; no two of them touch.
  const std::vector<Range>& Ranges() const { return ranges_; }
  bool Contains(int row) const;
  int Count() const;
  std::vector<int> Rows() const;

  void Clear() { ranges_.clear(); }
  void Add(int first, int last);
  void Remove(int first, int last);
  /// The row is gone from the grid; those behind it moved up.
  void RowGone(int row);

 private:
  std::vector<Range> ranges_;
};

}  // namespace ktrv::controls
