#include "tool/Query.h"

#include "common/Error.h"
#include "common/Variant.h"
#include "data/ImportQueries.h"

namespace ktrv::tool {
namespace {

constexpr std::size_t kBlockRows = 1000;

}  // namespace

Query::Query(database::Connection& connection, StringView text)
    : connection_(connection),
      link_(connection.LiveLink()),
      statement_(link_->Get().Prepare(text, {})) {
  statement_->LiftTimeLimit();
  statement_->Execute({});
}

Query::~Query() = default;

bool Query::Next() {
  if (!block_ || ++row_ == block_->Rows()) {
    block_ = statement_->Fetch(kBlockRows);
    row_ = 0;
    if (!block_) {
      connection_.StatementWorked();
      return false;
    }
    cells_.resize(block_->Columns());
  }
  block_->ReadRow(row_, cells_);
  return true;
}

std::size_t Query::ColumnOf(StringView name) const {
  const auto& columns = Columns();
  for (std::size_t index = 0; index < columns.size(); ++index) {
    if (EqualsIgnoringCase(columns[index].Name, name)) return index;
  }
  throw Error(ErrorNumber::ItemNotFound, u"The table has no column " + String(name));
}

std::int64_t CountOf(database::Connection& connection, StringView text) {
  Query query(connection, text);
  return query.Next() && query.Cell(0) ? ToInteger(String(*query.Cell(0))) : 0;
}

bool IsMySql(database::Connection& connection) {
  return connection.LiveLink()->Get().EngineKind() == database::Engine::MySql;
}

bool RollsBackRows(database::Connection& connection, StringView tables) {
  return !IsMySql(connection) ||
         CountOf(connection, data::ImportQueries::TablesWithoutTransactionsOfMySql(tables)) == 0;
}

}  // namespace ktrv::tool
