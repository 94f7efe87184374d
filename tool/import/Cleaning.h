#pragma once

#include <optional>
#include <vector>

#include "tool/import/Contact.h"

namespace ktrv::tool {

/// How dates such as 5/17/1985 are written. Other forms are unambiguous.
enum class DateOrder { MonthFirst, DayFirst };

/// A contact of a file, checked by the rules of the contact editor.
struct CheckedContact {
  Contact Cleaned;
  String Refusal;             ///< why it is not imported; empty if it can be
  std::vector<String> Notes;  ///< for the user, such as values that are left out
};

/// Numbers lose what people put between digits; dates and the sex are parsed.
CheckedContact CheckContact(const RawContact& raw, DateOrder order);

/// The number as the contact editor takes it: digits only. Other texts stay as they are.
String CleanNumber(StringView number);

/// A date in the forms of ISO 8601, "17.5.1985" or, with the order, "5/17/1985"; a time of day is
/// dropped. nullopt for other texts
std::optional<DateTime> ParseDate(StringView text, DateOrder order);

}  // namespace ktrv::tool
