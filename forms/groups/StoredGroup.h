#pragma once

#include <array>
#include <cstdint>

#include "common/Text.h"

namespace ktrv::forms {

/// Memberships regardless of their order, represented by their number and the sums of two hashes,
/// so the memory is constant. Different ones compare equal by chance with a probability of 2^-128.
class Memberships {
 public:
  /// \param id a contact's id or a remote contact's code. \param type "S": contact; "R": remote
  /// contact
  void Add(StringView id, StringView type);
  std::size_t Count() const { return count_; }
  bool operator==(const Memberships&) const = default;

 private:
  std::size_t count_ = 0;
  std::array<std::uint64_t, 2> sums_{};
};

/// A group as stored in the database.
struct StoredGroup {
  String Name;
  Memberships Members;

  bool operator==(const StoredGroup&) const = default;
};

}  // namespace ktrv::forms
