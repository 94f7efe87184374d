#pragma once

#include <chrono>
#include <cstdint>

#include "database/Driver.h"

/// What differs from engine to engine and is the same through every driver.
namespace ktrv::database {

/// The engine that calls its product by this name.
Engine EngineOf(StringView product);

/// The name under which the engine's catalogue holds a table that is written without quotes,
/// without its schema.
String NameInCatalogue(StringView table, Engine engine);

/// Statements that follow each other faster than this are one task of the program. A link that was
/// idle for longer is asked whether it Answers before it is used.
inline constexpr std::chrono::milliseconds kIdle{100};

/// Whether the link still reaches its engine. Asks by the smallest of queries; a file is always
/// reached, and of an engine that the component does not know nothing is asked.
bool Answers(Link& link);

/// Whether the text is the query of Answers.
bool IsQuestion(StringView text);

/// Whether ReadLastInsertedId can tell the id of a new row of the table. \throws Error
bool CanReadLastInsertedId(Link& link, StringView table, StringView column);

/// The id that the engine assigned to the row that this link inserted last into the table.
/// \param source of the failure when the engine does not tell. \throws Error
std::int64_t ReadLastInsertedId(Link& link, StringView table, StringView column, StringView source);

}  // namespace ktrv::database
