#include "database/odbc/OdbcDriver.h"

#include "database/ado/AdoDriver.h"

namespace ktrv::database {

// Takes the place of the driver of that name in programs that link this file: whoever asks it for
// an ODBC string gets the link through ADO's provider for ODBC.

std::unique_ptr<Link> OdbcDriver::Open(StringView connectionString, StringView user,
                                       StringView password) {
  return AdoDriver().Open(u"Provider=MSDASQL;" + String(connectionString), user, password);
}

}  // namespace ktrv::database
