#pragma once

#include "tool/formats/VCardReader.h"
#include "tool/import/Contact.h"

namespace ktrv::tool {

/// The values of a vCard that a contact has columns for, without our export's own properties.
/// \param hasMobile whether the mobile number is known, so that a number of no kind is not taken
/// for it
RawContact StandardContactOf(const VCard& card, bool hasMobile = false);

}  // namespace ktrv::tool
