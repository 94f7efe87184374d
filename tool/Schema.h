#pragma once

#include <vector>

#include "common/Text.h"
#include "database/Connection.h"
#include "database/Types.h"

namespace ktrv::tool {

/// The statements that create the address book's own tables on the engine, from data/schema/.
/// \throws Error for an unknown engine
std::vector<String> SchemaStatements(database::Engine engine);

/// Those of them that create one table, with all that follows it. \param table its name
std::vector<String> StatementsOfTable(database::Engine engine, StringView table);

/// The same for stand-ins of the tables that the host brings, for experiments.
std::vector<String> HostSchemaStatements(database::Engine engine);

/// Executes such statements. Operators that are there are left as they are. \throws Error
void RunSchema(const std::vector<String>& statements, database::Connection& connection);

}  // namespace ktrv::tool
