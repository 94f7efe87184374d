#pragma once

#include "tool/formats/VCardReader.h"
#include "tool/import/Contact.h"

namespace ktrv::tool {

/// The values of a vCard that a contact has columns for, without our export's own properties.
RawContact StandardContactOf(const VCard& card);

}  // namespace ktrv::tool
