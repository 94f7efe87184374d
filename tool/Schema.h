#pragma once

#include <vector>

#include "common/Text.h"
#include "database/Types.h"

namespace ktrv::tool {

/// The statements that create the address book's own tables on the engine, from data/schema/.
/// \throws Error for an unknown engine
std::vector<String> SchemaStatements(database::Engine engine);

/// The same for stand-ins of the tables that the host brings, for experiments.
std::vector<String> HostSchemaStatements(database::Engine engine);

}  // namespace ktrv::tool
