#pragma once

#include "tool/formats/VCardReader.h"
#include "tool/import/Contact.h"

namespace ktrv::tool {

/// The values of a vCard that a contact has columns for.
RawContact ContactOf(const VCard& card);

}  // namespace ktrv::tool
