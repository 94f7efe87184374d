#pragma once

#include <string>

#include "common/Text.h"
#include "database/Types.h"

/// What a measurement's database is called on the command line: the path of an SQLite file, or an
/// ODBC connection string.
namespace ktrv::benchmarks {

String ConnectionStringOf(const std::string& database);
/// The same as the product hands it to the driver, in bytes.
std::string BareConnectionStringOf(const std::string& database);
database::Engine EngineOfDatabase(const std::string& database);
/// For a table: the file's name, or the driver's.
std::string NameOf(const std::string& database);

}  // namespace ktrv::benchmarks
