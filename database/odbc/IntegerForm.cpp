#include "database/odbc/IntegerForm.h"

#include <limits>

namespace ktrv::database::odbc {

IntegerForm IntegerForm::Of(std::int64_t number) {
  using Narrow = std::numeric_limits<std::int32_t>;
  if (number >= Narrow::min() && number <= Narrow::max()) return {SQL_C_SLONG, SQL_INTEGER, 10};
  return {SQL_C_SBIGINT, SQL_BIGINT, 19};
}

}  // namespace ktrv::database::odbc
