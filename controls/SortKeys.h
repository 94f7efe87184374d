#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/Text.h"

namespace ktrv::controls {

class Language;

/// The sort keys of many texts in one contiguous buffer; each is created once.
class SortKeys {
 public:
  /// \param ascending false: descending
  SortKeys(const Language& language, std::size_t count, bool ascending);

  void Add(StringView text);
  std::size_t Count() const { return ends_.size(); }

  /// Sorts a portion, of about a millisecond. Add no more texts then. \return whether there is more
  bool SortOn();
  /// The indices of the texts (0-based, in order of Add), sorted by key. Stable. \pre SortOn has
  /// returned false
  std::vector<std::uint32_t> Order() const;

 private:
  struct Entry {
    /// The first bytes of the key as an integer. Most comparisons need nothing else.
    std::uint64_t Head = 0;
    std::uint32_t Place = 0;
  };

  std::string_view KeyAt(std::uint32_t place) const;
  std::string_view TailAt(std::uint32_t place) const;
  bool IsBefore(const Entry& left, const Entry& right) const;
  void SortRun();
  void MergeOn();

  const Language& language_;
  const bool ascending_;
  std::string keys_;
  std::vector<std::size_t> ends_;
  std::vector<Entry> entries_;  ///< sorted runs
  std::vector<Entry> merged_;   ///< the runs of twice the length, as far as they are merged
  std::size_t run_ = 0;         ///< the length of the runs; 0 while they are created
  // The next entries of the two runs that are merged.
  std::size_t left_ = 0;
  std::size_t right_ = 0;
};

}  // namespace ktrv::controls
