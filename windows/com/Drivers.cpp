#include "windows/com/Drivers.h"

#include "database/odbc/ConnectionString.h"

namespace ktrv::windows {

Drivers::Drivers()
    : limited_(odbc_, [](StringView connectionString) {
        return database::odbc::TimeLimitsOf(connectionString);
      }) {}

void Drivers::CloseKept() noexcept {
  kept_.CloseKept();
  limited_.EndIdle();
}

database::Driver& Drivers::For(StringView connectionString) {
  if (!database::odbc::KeywordValue(connectionString, u"Provider").empty()) return ado_;
  return kept_;
}

}  // namespace ktrv::windows
