#include "windows/com/Drivers.h"

#include "database/odbc/ConnectionString.h"

namespace ktrv::windows {

database::Driver& Drivers::For(StringView connectionString) {
  if (!database::odbc::KeywordValue(connectionString, u"Provider").empty()) return ado_;
  return kept_;
}

}  // namespace ktrv::windows
