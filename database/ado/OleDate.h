#pragma once

#include "common/Variant.h"

namespace ktrv::database::ado {

/// Converts to an OLE date: days since 30 December 1899, with the time of day as fraction, which is
/// added to the absolute value of negative dates. Resolution 1 ms. \throws Error DataConversion
/// before the year 100
double ToOleDate(DateTime moment);

/// \throws Error DataConversion outside the years 100 to 9999
DateTime FromOleDate(double date);

}  // namespace ktrv::database::ado
