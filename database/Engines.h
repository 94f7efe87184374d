#pragma once

#include <chrono>
#include <cstdint>

#include "database/Driver.h"

/// Differences between engines that do not depend on the driver.
namespace ktrv::database {

/// The engine for a product name, as the driver reports it.
Engine EngineOf(StringView product);

/// The name of a table in the engine's catalogue, without schema, if it is written without quotes.
String NameInCatalogue(StringView table, Engine engine);

/// The statement that sets a mark in a transaction; empty for unknown engines and for SQLite, which
/// has no network round trips to save.
StringView MarkStatement(Engine engine);

/// The statement that undoes what was done since the mark.
StringView UndoToMarkStatement(Engine engine);

/// How many rows the statement, which was executed, has changed; -1 if the driver cannot tell.
std::int64_t ChangedRows(const Statement& statement, Engine engine);

/// A link that was idle for longer is tested with Answers before its next use. Statements that
/// follow faster belong to one task.
inline constexpr std::chrono::milliseconds kIdle{100};

/// Tests whether the link is alive, with a minimal query. Always true for SQLite and for unknown
/// engines.
bool Answers(Link& link);

/// Whether the text is the query of Answers.
bool IsQuestion(StringView text);

/// Whether ReadLastInsertedId works for the table. \throws Error
bool CanReadLastInsertedId(Link& link, StringView table, StringView column);

/// The id that the engine assigned to this link's last insert into the table. \param source for the
/// Error if the engine does not report the id. \throws Error
std::int64_t ReadLastInsertedId(Link& link, StringView table, StringView column, StringView source);

}  // namespace ktrv::database
