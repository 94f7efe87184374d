#pragma once

#include "tool/formats/VCardReader.h"
#include "tool/import/Contact.h"

namespace ktrv::tool {

/// The values of any vCard. One of our export gives the values of its own properties, and those of
/// standard properties that another program has changed since, with a note.
RawContact ContactOf(const VCard& card);

}  // namespace ktrv::tool
