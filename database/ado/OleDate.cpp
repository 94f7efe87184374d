#include "database/ado/OleDate.h"

#include <cmath>

#include "database/DataError.h"

namespace ktrv::database::ado {
namespace {

using namespace std::chrono;

constexpr local_days kDayZero{year(1899) / December / 30};
constexpr local_days kFirstDay{year(100) / January / 1};
constexpr local_days kLastDay{year(9999) / December / 31};
constexpr double kMillisecondsOfDay = 86'400'000;

}  // namespace

double ToOleDate(DateTime moment) {
  const auto day = floor<days>(moment);
  if (day < kFirstDay || day > kLastDay) throw DataError(ErrorNumber::DataConversion);
  const auto number = static_cast<double>((day - kDayZero).count());
  const double fraction = static_cast<double>((moment - day).count()) / kMillisecondsOfDay;
  return number < 0 ? number - fraction : number + fraction;
}

DateTime FromOleDate(double date) {
  const double number = std::trunc(date);
  const double first = static_cast<double>((kFirstDay - kDayZero).count());
  const double last = static_cast<double>((kLastDay - kDayZero).count());
  if (!(number >= first && number <= last)) throw DataError(ErrorNumber::DataConversion);
  const double time = std::round(std::abs(date - number) * kMillisecondsOfDay);
  return DateTime(kDayZero + days(static_cast<int>(number))) +
         milliseconds(static_cast<std::int64_t>(time));
}

}  // namespace ktrv::database::ado
