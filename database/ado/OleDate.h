#pragma once

#include "common/Variant.h"

namespace ktrv::database::ado {

/// Automation's form of a date: days since 30 December 1899, with the time of day as fraction,
/// which counts away from zero on the days before. To the millisecond. \throws Error DataConversion
/// before the year 100, where that form begins.
double ToOleDate(DateTime moment);

/// \throws Error DataConversion outside the years 100 to 9999.
DateTime FromOleDate(double date);

}  // namespace ktrv::database::ado
