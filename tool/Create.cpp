#include "tool/Create.h"

#include <algorithm>

#include "common/Error.h"
#include "data/ToolQueries.h"
#include "database/Transaction.h"
#include "tool/Query.h"
#include "tool/Schema.h"

namespace ktrv::tool {
namespace {

namespace Queries = data::ToolQueries;

bool IsThere(StringView table, database::Connection& connection) {
  try {
    const Query query(connection, Queries::NoRows(table));
    return true;
  } catch (const Error&) {
    return false;
  }
}

void RefuseExisting(const std::vector<StringView>& tables, database::Connection& connection) {
  for (const StringView table : tables) {
    if (!IsThere(table, connection)) continue;
    throw Error(ErrorNumber::InvalidArgument,
                u"The table " + String(table) + u" is already there; nothing was created");
  }
}

}  // namespace

int Create(const CreateOptions& options, Book& book, Console& console) {
  std::vector<StringView> tables(Queries::kOwnTables.begin(), Queries::kOwnTables.end());
  const database::Engine engine = book.Connection.CurrentLink()->Get().EngineKind();
  std::vector<String> statements = SchemaStatements(engine);
  if (options.HostTables) {
    tables.insert(tables.end(), Queries::kHostTables.begin(), Queries::kHostTables.end());
    const std::vector<String> host = HostSchemaStatements(engine);
    statements.insert(statements.end(), host.begin(), host.end());
  }
  RefuseExisting(tables, book.Connection);
  try {
    database::Transaction transaction(book.Connection);
    RunSchema(statements, book.Connection);
    transaction.Commit();
  } catch (...) {
    const Error error = Error::Current();
    const auto isThere = [&](StringView table) { return IsThere(table, book.Connection); };
    if (std::ranges::none_of(Queries::kOwnTables, isThere)) throw;
    throw Error(error.Number(), error.Description() +
                                    u"\nSome tables were created. When the cause is mended, "
                                    u"\"addressbook check --repair\" creates the others.");
  }
  for (const StringView table : tables) console.Messages << "created " << ToUtf8(table) << '\n';
  return ExitCode::Done;
}

}  // namespace ktrv::tool
