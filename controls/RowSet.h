#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ktrv::controls {

/// A set of rows, numbered from 0, one bit each.
class RowSet {
 public:
  explicit RowSet(std::size_t size) : size_(size), bits_((size + 63) / 64) {}

  /// The number of rows that may be in the set.
  std::size_t Size() const { return size_; }
  void Add(std::size_t row) { bits_[row / 64] |= Bit(row); }
  bool Contains(std::size_t row) const { return (bits_[row / 64] & Bit(row)) != 0; }
  /// Removes the rows that are not in the other set. \pre the same size
  void Intersect(const RowSet& other) {
    for (std::size_t i = 0; i < bits_.size(); ++i) bits_[i] &= other.bits_[i];
  }
  /// The first row of the set from this one on; Size() if there is none. \pre row < Size()
  std::size_t NextFrom(std::size_t row) const {
    std::size_t place = row / 64;
    std::uint64_t bits = bits_[place] & ~(Bit(row) - 1);
    while (bits == 0) {
      if (++place == bits_.size()) return size_;
      bits = bits_[place];
    }
    return place * 64 + static_cast<std::size_t>(std::countr_zero(bits));
  }
  /// The last row of the set up to this one; -1 if there is none. \pre row < Size()
  std::int64_t PreviousFrom(std::size_t row) const {
    std::size_t place = row / 64;
    std::uint64_t bits = bits_[place] & ((Bit(row) << 1) - 1);
    while (bits == 0) {
      if (place == 0) return -1;
      bits = bits_[--place];
    }
    return static_cast<std::int64_t>(place * 64) + 63 - std::countl_zero(bits);
  }
  bool IsEmpty() const { return size_ == 0 || NextFrom(0) == size_; }

 private:
  static std::uint64_t Bit(std::size_t row) { return std::uint64_t{1} << row % 64; }

  std::size_t size_;
  std::vector<std::uint64_t> bits_;
};

}  // namespace ktrv::controls
