#include "database/odbc/OdbcStatement.h"

#include <algorithm>
#include <utility>

#include "common/ScopeExit.h"
#include "database/DataError.h"
#include "database/ManyRows.h"

namespace ktrv::database::odbc {
namespace {

constexpr std::size_t kUnitsOfText = 512;  // buffer of a text that can be read again
constexpr std::size_t kUnitsOfNumber = 64;
constexpr std::int64_t kLongestBound = 4000;  // units of a bound text that cannot

DataType TypeOf(SQLSMALLINT type, SQLSMALLINT fraction) {
  switch (type) {
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return DataType::Integer;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return fraction == 0 ? DataType::Integer : DataType::Double;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return DataType::Double;
    case SQL_BIT:
      return DataType::Boolean;
    case SQL_DATETIME:
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return DataType::Date;
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_LONGVARCHAR:
      return DataType::VarChar;
    default:
      return DataType::VarWChar;
  }
}

bool IsLong(SQLSMALLINT type) {
  return type == SQL_LONGVARCHAR || type == SQL_WLONGVARCHAR || type == SQL_LONGVARBINARY;
}

ColumnBuffer::Form FormOf(SQLSMALLINT type, Engine engine) {
  // SQLite stores any type in any column; only text returns each value unchanged.
  if (engine == Engine::Sqlite) return ColumnBuffer::Form::Text;
  switch (type) {
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return ColumnBuffer::Form::Double;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return ColumnBuffer::Form::Timestamp;
    default:
      return ColumnBuffer::Form::Text;
  }
}

/// SQLCancel of these drivers interrupts all statements of the connection and frees the rows of the
/// given statement, which another thread may be reading. So another statement handle without rows
/// is used.
bool FreesRowsWhenCancelled(Engine engine) {
  return engine == Engine::Sqlite || engine == Engine::MySql;
}

}  // namespace

OdbcStatement::OdbcStatement(const OdbcLink& link, String text,
                             std::span<const Parameter> parameters)
    : link_(link),
      text_(std::move(text)),
      parameters_(parameters.begin(), parameters.end()),
      handle_(link.NewStatement()),
      arguments_(parameters.size()) {
  if (FreesRowsWhenCancelled(link.EngineKind())) interrupter_.emplace(link.NewStatement());
  if (link.StatementLimit().count() != 0) LimitTime(link.StatementLimit());
}

void OdbcStatement::LiftTimeLimit() {
  if (link_.StatementLimit().count() != 0) LimitTime(std::chrono::seconds(0));
}

/// Errors are ignored, because the caller enforces the limit too.
void OdbcStatement::LimitTime(std::chrono::seconds longest) const {
  SQLSetStmtAttr(handle_.Get(), SQL_ATTR_QUERY_TIMEOUT,
                 Number(static_cast<SQLULEN>(longest.count())), SQL_IS_UINTEGER);
}

SQLRETURN OdbcStatement::Check(SQLRETURN result) const {
  return Checked(result, SQL_HANDLE_STMT, handle_.Get(), link_.HowToSpeak());
}

void OdbcStatement::PassUnlessCancelled() const {
  if (cancelled_) {
    throw Error(ErrorNumber::CommandCancelled,
                DataError(ErrorNumber::OperationCancelled).Description(),
                link_.HowToSpeak().Source);
  }
}

void OdbcStatement::Execute(std::span<const Variant> values) {
  ExecuteToFirstResult(values);
  // SQL Server returns the row counts of a trigger's statements first, then the statement's own.
  // Until all are read it accepts no other statement on the session, and a failure among them stays
  // unknown.
  while (!fetching_ && ToNextResult()) PassUnlessCancelled();
}

void OdbcStatement::ExecuteToFirstResult(std::span<const Variant> values) {
  CloseCursor();
  PassUnlessCancelled();
  if (values.size() != parameters_.size()) throw DataError(ErrorNumber::InvalidArgument);
  BindValues(values);
  ExecuteBound();
}

void OdbcStatement::ExecuteBound() {
  Run();
  DescribeColumns();
  fetching_ = !columns_.empty();
  rowsAffected_ = -1;
  if (fetching_) {
    BindColumns();
  } else {
    TakeRowCount();
  }
}

void OdbcStatement::TakeRowCount() {
  SQLLEN rows = -1;
  // A later result of no rows may say so by its return code only.
  const bool isNone = Check(SQLRowCount(handle_.Get(), &rows)) == SQL_NO_DATA;
  if (isNone || rows >= 0) rowsAffected_ = isNone ? 0 : rows;
}

bool OdbcStatement::ExecuteAll(std::span<const std::vector<Variant>> rows) {
  if (link_.EngineKind() == Engine::Sqlite) return ExecuteManyRows(rows);
  if (link_.EngineKind() == Engine::Other) return false;
  if (!PassesParameterArrays()) return false;
  CloseCursor();
  PassUnlessCancelled();
  std::vector<SQLUSMALLINT> states(rows.size(), SQL_PARAM_UNUSED);
  SQLULEN processed = 0;
  // Resets the statement to single rows and releases the pointers.
  const ScopeExit restore([handle = handle_.Get()] {
    SQLSetStmtAttr(handle, SQL_ATTR_PARAMSET_SIZE, Number(1), 0);
    SQLSetStmtAttr(handle, SQL_ATTR_PARAM_STATUS_PTR, nullptr, 0);
    SQLSetStmtAttr(handle, SQL_ATTR_PARAMS_PROCESSED_PTR, nullptr, 0);
    SQLFreeStmt(handle, SQL_RESET_PARAMS);
  });
  if (SQLSetStmtAttr(handle_.Get(), SQL_ATTR_PARAMSET_SIZE, Number(rows.size()), 0) !=
      SQL_SUCCESS) {
    return false;
  }
  SetSetting(SQL_ATTR_PARAM_BIND_TYPE, Number(SQL_PARAM_BIND_BY_COLUMN));
  SetSetting(SQL_ATTR_PARAM_STATUS_PTR, states.data());
  SetSetting(SQL_ATTR_PARAMS_PROCESSED_PTR, &processed);
  argumentsOfAll_.resize(parameters_.size());
  for (std::size_t index = 0; index < parameters_.size(); ++index) {
    if (!argumentsOfAll_[index].Bind(handle_.Get(), index, parameters_[index], rows,
                                     link_.EngineKind(), link_.HowToSpeak())) {
      return false;
    }
  }
  if (!prepared_) Give(SQLPrepare, SQLPrepareW);
  ran_ = prepared_ = true;
  Check(SQLExecute(handle_.Get()));
  while (ToNextResult()) PassUnlessCancelled();
  const bool allRan = std::all_of(states.begin(), states.end(), [](SQLUSMALLINT state) {
    return state == SQL_PARAM_SUCCESS || state == SQL_PARAM_SUCCESS_WITH_INFO;
  });
  if (!allRan || processed != rows.size()) {
    throw Error(ErrorNumber::DriverFailure, u"Not all rows were written",
                link_.HowToSpeak().Source);
  }
  return true;
}

/// SQLite's driver compiles the statement again for each row of an array, which takes longer than
/// to insert the row. So several rows are inserted by one statement.
bool OdbcStatement::ExecuteManyRows(std::span<const std::vector<Variant>> rows) {
  constexpr std::size_t kMostParameters = 999;  // of versions before 3.32
  if (parameters_.empty() || parameters_.size() > kMostParameters) return false;
  const std::size_t many = kMostParameters / parameters_.size();
  if (!manyRows_) {
    const String text = InsertOfRows(text_, many);
    if (text.empty()) return false;
    std::vector<Parameter> parameters;
    for (std::size_t row = 0; row < many; ++row) {
      parameters.insert(parameters.end(), parameters_.begin(), parameters_.end());
    }
    manyRows_ = std::make_unique<OdbcStatement>(link_, text, parameters);
  }
  for (; rows.size() >= many; rows = rows.subspan(many)) {
    PassUnlessCancelled();
    for (std::size_t row = 0; row < many; ++row) {
      manyRows_->BindValues(rows[row], row * parameters_.size());
    }
    manyRows_->ExecuteBound();
  }
  for (const auto& row : rows) Execute(row);
  return true;
}

void OdbcStatement::SetSetting(SQLINTEGER setting, SQLPOINTER value) const {
  Check(SQLSetStmtAttr(handle_.Get(), setting, value, 0));
}

bool OdbcStatement::ToNextResult() {
  if (!link_.HasFurtherResults() || Check(SQLMoreResults(handle_.Get())) == SQL_NO_DATA) {
    return false;
  }
  SQLSMALLINT columns = 0;
  Check(SQLNumResultCols(handle_.Get(), &columns));
  if (columns == 0) TakeRowCount();
  return true;
}

void OdbcStatement::Run() {
  // Most statements run once. Preparing costs a network round trip, which pays off from the second
  // execution on. SQLite has no network.
  if (!ran_ && link_.EngineKind() != Engine::Sqlite) {
    Give(SQLExecDirect, SQLExecDirectW);
    ran_ = true;
    return;
  }
  if (!prepared_) Give(SQLPrepare, SQLPrepareW);
  prepared_ = true;
  Check(SQLExecute(handle_.Get()));
}

template <class Narrowly, class Widely>
void OdbcStatement::Give(Narrowly narrowly, Widely widely) {
  if (link_.HowToSpeak().Utf8) {
    const std::string bytes = ToUtf8(text_);
    Check(narrowly(handle_.Get(), Narrow(bytes), static_cast<SQLINTEGER>(bytes.size())));
  } else {
    Check(widely(handle_.Get(), Wide(text_), static_cast<SQLINTEGER>(text_.size())));
  }
}

void OdbcStatement::BindValues(std::span<const Variant> values, std::size_t first) {
  for (std::size_t index = first; index < first + values.size(); ++index) {
    arguments_[index].Bind(handle_.Get(), static_cast<SQLUSMALLINT>(index + 1), parameters_[index],
                           values[index - first], link_.EngineKind(), link_.HowToSpeak());
  }
}

void OdbcStatement::DescribeColumns() {
  SQLSMALLINT count = 0;
  Check(SQLNumResultCols(handle_.Get(), &count));
  columns_.clear();
  types_.clear();
  for (SQLSMALLINT number = 1; number <= count; ++number) {
    constexpr SQLSMALLINT kNameUnits = 256;
    const auto column = static_cast<SQLUSMALLINT>(number);
    char16_t wide[kNameUnits] = {};
    char narrow[kNameUnits] = {};
    SQLSMALLINT type = 0;
    SQLSMALLINT fraction = 0;
    SQLULEN size = 0;
    if (link_.HowToSpeak().Utf8) {
      Check(SQLDescribeCol(handle_.Get(), column, reinterpret_cast<SQLCHAR*>(narrow), kNameUnits,
                           nullptr, &type, &size, &fraction, nullptr));
    } else {
      Check(SQLDescribeColW(handle_.Get(), column, Wide(wide), kNameUnits, nullptr, &type, &size,
                            &fraction, nullptr));
    }
    Column described;
    described.Name = link_.HowToSpeak().Utf8 ? FromUtf8(narrow) : String(wide);
    described.Type = TypeOf(type, fraction);
    if (IsTextType(described.Type) && !IsLong(type))
      described.Size = static_cast<std::int64_t>(size);
    columns_.push_back(std::move(described));
    types_.push_back(type);
  }
}

void OdbcStatement::BindColumns() {
  buffers_.clear();
  bool bind = true;
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    const Column& column = columns_[index];
    const bool text = IsTextType(column.Type);
    std::size_t units = text ? kUnitsOfText : kUnitsOfNumber;
    if (text && !link_.CanReadAgain()) {
      // Such a driver returns only bound columns in full; after the first unbound one, SQLGetData
      // must read all columns in order.
      bind = bind && column.Size > 0 && column.Size <= kLongestBound;
      units = static_cast<std::size_t>(2 * column.Size);  // a character may have two units
    }
    buffers_.emplace_back(
        static_cast<SQLUSMALLINT>(index + 1),
        bind ? FormOf(types_[index], link_.EngineKind()) : ColumnBuffer::Form::Text,
        bind ? units : 0);
  }
  Check(SQLFreeStmt(handle_.Get(), SQL_UNBIND));
  for (ColumnBuffer& buffer : buffers_) buffer.Bind(handle_.Get(), link_.HowToSpeak());
}

std::unique_ptr<RowBlock> OdbcStatement::Fetch(std::size_t rows) {
  if (!fetching_) return nullptr;
  auto block = std::make_unique<RowBlock>(columns_.size(), rows);
  for (; rows > 0; --rows) {
    PassUnlessCancelled();
    if (Check(SQLFetch(handle_.Get())) == SQL_NO_DATA) {
      CloseCursor();
      break;
    }
    block->BeginRow();
    for (ColumnBuffer& buffer : buffers_) {
      buffer.AddTo(*block, handle_.Get(), link_.HowToSpeak());
    }
  }
  if (block->Rows() == 0) return nullptr;
  block->Finish();
  return block;
}

void OdbcStatement::Cancel() noexcept {
  cancelled_ = true;
  SQLCancel(interrupter_ ? interrupter_->Get() : handle_.Get());
}

void OdbcStatement::CloseCursor() noexcept {
  // Close now, not when the statement is destroyed: on some engines an open cursor holds locks.
  if (std::exchange(fetching_, false)) SQLFreeStmt(handle_.Get(), SQL_CLOSE);
}

}  // namespace ktrv::database::odbc
