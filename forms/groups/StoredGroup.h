#pragma once

#include <compare>
#include <vector>

#include "common/TextIndex.h"

namespace ktrv::forms {

/// A group as its rows in the database have it.
struct StoredGroup {
  struct Membership {
    String Id;    ///< a contact's id or a remote contact's code
    String Type;  ///< "S" a contact, "R" a remote contact

    // The check takes the comparison with 0 that the compiler writes for a null pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    std::strong_ordering operator<=>(const Membership&) const = default;
  };

  String Name;
  std::vector<Membership> Members;

  /// The order of the members has no meaning.
  bool IsSameAs(const StoredGroup& other) const;
  /// Ids of the members that are contacts, in the form in which contacts have them.
  TextIndex ContactIds() const;
};

}  // namespace ktrv::forms
