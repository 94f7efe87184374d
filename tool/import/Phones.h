#pragma once

#include <optional>

#include "tool/import/Contact.h"

namespace ktrv::tool {

/// A phone number of a file with what the file says of its kind.
struct Phone {
  String Kind;  ///< such as "cell", "Work Fax"; any case
  String Number;
};

/// Gives each number the field of its kind; further numbers of a kind are left out. A number of no
/// known kind is the mobile number if there is no other.
class PhoneSorting {
 public:
  void Add(const Phone& phone, RawContact& contact);
  /// Call after the last number.
  void Finish(RawContact& contact);

 private:
  String unknown_;  ///< the first number of no known kind
};

}  // namespace ktrv::tool
