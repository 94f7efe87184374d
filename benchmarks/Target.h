#pragma once

#include <string>

#include "common/Text.h"
#include "database/Types.h"

/// Databases on the command line: the path of an SQLite file, or an ODBC connection string.
namespace ktrv::benchmarks {

String ConnectionStringOf(const std::string& database);
/// The same in bytes, as the product passes it to the driver.
std::string BareConnectionStringOf(const std::string& database);
database::Engine EngineOfDatabase(const std::string& database);
/// The name in tables: that of the file or driver.
std::string NameOf(const std::string& database);

}  // namespace ktrv::benchmarks
