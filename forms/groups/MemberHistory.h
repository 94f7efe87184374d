#pragma once

#include <deque>
#include <vector>

#include "forms/groups/ContactRow.h"

namespace ktrv::forms {

/// The last changes of the member list, to undo them.
class MemberHistory {
 public:
  struct Removed {
    int Row = 0;  ///< its row number before
    ContactRow Contact;
  };
  struct Change {
    std::vector<String> Added;  ///< ids
    std::vector<Removed> Gone;  ///< in ascending order of row numbers
  };

  /// Starts a change; the oldest one may be forgotten. \return it, valid until the next call
  Change& Begin();
  /// Forgets the last change if nothing has changed.
  void End();
  bool IsEmpty() const { return changes_.empty(); }
  /// \pre there is one
  const Change& Last() const { return changes_.back(); }
  /// Removes and returns it.
  Change TakeLast();
  void Clear() { changes_.clear(); }
  /// The contact has other texts now; undoing must not bring back the former ones.
  void Update(const ContactRow& contact);

 private:
  std::deque<Change> changes_;
};

}  // namespace ktrv::forms
