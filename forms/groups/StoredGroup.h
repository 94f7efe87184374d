#pragma once

#include <array>
#include <cstdint>

#include "common/Text.h"

namespace ktrv::forms {

/// Memberships whatever their order: how many there are and the sums of two fingerprints of each.
/// It takes the same few bytes for any number. Two different lists are taken for the same by an
/// accident of 1 in 2^128.
class Memberships {
 public:
  /// \param id a contact's id or a remote contact's code. \param type "S" for a contact, "R" for a
  /// remote contact
  void Add(StringView id, StringView type);
  std::size_t Count() const { return count_; }
  bool operator==(const Memberships&) const = default;

 private:
  std::size_t count_ = 0;
  std::array<std::uint64_t, 2> sums_{};
};

/// A group as its rows in the database have it.
struct StoredGroup {
  String Name;
  Memberships Members;

  bool operator==(const StoredGroup&) const = default;
};

}  // namespace ktrv::forms
