#pragma once

#include <cstdint>

#include "database/Driver.h"

/// What differs from engine to engine and is the same through every driver.
namespace ktrv::database {

/// The engine that calls its product by this name.
Engine EngineOf(StringView product);

/// The id that the engine assigned to the row that this link inserted last into the table.
/// \param source of the failure when the engine does not tell. \throws Error
std::int64_t ReadLastInsertedId(Link& link, StringView table, StringView column, StringView source);

}  // namespace ktrv::database
