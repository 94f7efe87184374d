#pragma once

#include <vector>

namespace ktrv::controls {

/// The selected rows of a grid, stored as ranges. Selecting a million adjacent rows takes one
/// range.
class RowSelection {
 public:
  /// Inclusive range.
  struct Range {
    int First = 0;
    int Last = 0;

    bool operator==(const Range&) const = default;
  };

  /// Sorted; neither overlapping nor adjacent.
  const std::vector<Range>& Ranges() const { return ranges_; }
  bool Contains(int row) const;
  int Count() const;
  std::vector<int> Rows() const;

  void Clear() { ranges_.clear(); }
  void Add(int first, int last);
  void Remove(int first, int last);
  /// The row was removed from the grid; later rows moved up.
  void RowGone(int row);

 private:
  std::vector<Range> ranges_;
};

}  // namespace ktrv::controls
