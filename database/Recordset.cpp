#include "database/Recordset.h"

#include <algorithm>
#include <utility>

#include "database/Conversion.h"
#include "database/DataError.h"
#include "database/RecordsetContents.h"

namespace ktrv::database {

Recordset::Recordset(Environment environment) : environment_(std::move(environment)) {}

Recordset::~Recordset() = default;

Recordset::Recordset(Recordset&& other) noexcept
    : Location(other.Location),
      BackgroundFetchSize(other.BackgroundFetchSize),
      FetchProgress(std::move(other.FetchProgress)),
      FetchComplete(std::move(other.FetchComplete)),
      environment_(std::move(other.environment_)) {
  Take(std::move(other.contents_));
}

Recordset& Recordset::operator=(Recordset&& other) noexcept {
  if (this != &other) {
    Location = other.Location;
    BackgroundFetchSize = other.BackgroundFetchSize;
    FetchProgress = std::move(other.FetchProgress);
    FetchComplete = std::move(other.FetchComplete);
    environment_ = std::move(other.environment_);
    Take(std::move(other.contents_));
  }
  return *this;
}

void Recordset::Take(std::unique_ptr<Contents> contents) {
  contents_ = std::move(contents);
  if (contents_) contents_->Owner = this;
}

Recordset::Contents& Recordset::Opened() const {
  if (!contents_) throw DataError(ErrorNumber::ObjectClosed);
  return *contents_;
}

void Recordset::Open(StringView source, StringView connectionString, OpenOptions options) {
  if (contents_) throw DataError(ErrorNumber::ObjectOpen);
  if (Trim(source).empty()) throw DataError(ErrorNumber::NoCommandText);
  auto contents = std::make_unique<Contents>(options.Lock != LockType::ReadOnly);
  contents->Source = source;
  DatabaseAddress address{String(connectionString), {}, {}};
  if (options.Async) {
    contents->StartFetch(environment_, std::move(address),
                         static_cast<std::size_t>(std::max<std::int64_t>(BackgroundFetchSize, 1)));
    Take(std::move(contents));
    return;
  }
  const auto link = std::make_shared<SharedLink>(address.Open(environment_));
  const auto statement = link->Get().Prepare(source, {});
  statement->Execute({});
  if (statement->Columns().empty()) return;
  contents->ReadAll(*statement);
  if (contents->Updatable) {
    contents->OwnLink = link;
    contents->ConnectionLink = link;
  }
  Take(std::move(contents));
}

void Recordset::Open(StringView source, Connection& connection, OpenOptions options) {
  if (contents_) throw DataError(ErrorNumber::ObjectOpen);
  if (!connection.CurrentLink()) throw DataError(ErrorNumber::InvalidConnection);
  if (Trim(source).empty()) throw DataError(ErrorNumber::NoCommandText);
  auto contents = std::make_unique<Contents>(options.Lock != LockType::ReadOnly);
  contents->Source = source;
  if (options.Async) {
    contents->ConnectionLink = connection.CurrentLink();
    contents->StartFetch(environment_, connection.Address(),
                         static_cast<std::size_t>(std::max<std::int64_t>(BackgroundFetchSize, 1)));
    Take(std::move(contents));
    return;
  }
  const auto& link = connection.LiveLink();
  contents->ConnectionLink = link;
  const auto statement = link->Get().Prepare(source, {});
  statement->Execute({});
  const bool hasRows = !statement->Columns().empty();
  if (hasRows) contents->ReadAll(*statement);
  connection.StatementWorked();  // only after its rows were read
  if (hasRows) Take(std::move(contents));
}

void Recordset::ReadAll(Statement& statement) {
  if (statement.Columns().empty()) return;
  constexpr bool kUpdatable = false;
  auto contents = std::make_unique<Contents>(kUpdatable);
  contents->ReadAll(statement);
  Take(std::move(contents));
}

void Recordset::Disconnect() {
  Contents& contents = Opened();
  contents.Updatable = false;
  contents.OwnLink.reset();
}

void Recordset::Cancel() {
  if (contents_ && contents_->Fetch) contents_->Fetch->Cancel();
}

void Recordset::Close() {
  Opened();
  contents_.reset();
}

ObjectState Recordset::State() const {
  if (!contents_) return ObjectState::Closed;
  return contents_->Fetch ? ObjectState::Fetching : ObjectState::Open;
}

bool Recordset::EndOfFile() const {
  return !Opened().OnRow();
}

bool Recordset::BeginningOfFile() const {
  return !Opened().Adding && contents_->Rows.Count() == 0;
}

void Recordset::MoveFirst() {
  MoveTo(0);
}

void Recordset::MoveNext() {
  Opened().Write();
  if (!contents_->OnRow()) throw DataError(ErrorNumber::NoCurrentRecord);
  ++contents_->Position;
}

void Recordset::MoveTo(std::int64_t row) {
  Opened().Write();
  if (row < 0 || row >= contents_->Rows.Count()) throw DataError(ErrorNumber::NoCurrentRecord);
  contents_->Position = row;
}

Variant Recordset::Field(StringView name) const {
  const std::size_t column = Opened().ColumnOf(name);
  if (!contents_->OnRow()) throw DataError(ErrorNumber::NoCurrentRecord);
  return contents_->Value(column);
}

void Recordset::SetField(StringView name, const Variant& value) {
  const std::size_t column = Opened().ColumnOf(name);
  contents_->UpdateLink();
  if (!contents_->OnRow()) throw DataError(ErrorNumber::NoCurrentRecord);
  contents_->Pending[column] = ConvertTo(contents_->Columns[column].Type, value);
}

std::int64_t Recordset::RecordCount() const {
  return Opened().Rows.Count();
}

const std::vector<Column>& Recordset::Columns() const {
  return Opened().Columns;
}

std::optional<std::size_t> Recordset::ColumnIndex(StringView name) const {
  const auto& columns = Opened().Columns;
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& column) {
    return EqualsIgnoringCase(column.Name, name);
  });
  if (found == columns.end()) return std::nullopt;
  return static_cast<std::size_t>(found - columns.begin());
}

std::optional<StringView> Recordset::CellText(std::int64_t row, std::size_t column) const {
  return Opened().Rows.Cell(row, column);
}

void Recordset::AddNew() {
  Opened().UpdateLink();
  contents_->Write();
  contents_->Adding = true;
}

void Recordset::Update() {
  Opened().Write();
}

bool Recordset::IsInDoubt() const {
  return Opened().InDoubt;
}

NewRow Recordset::AddedRow() const {
  return Opened().Added;
}

bool Recordset::FindAdded(const NewRow& row) {
  return Opened().FindAdded(row);
}

void Recordset::CancelUpdate() {
  Opened().Adding = false;
  contents_->Pending.clear();
}

void Recordset::Resync() {
  if (!Opened().OnRow() || contents_->Adding) throw DataError(ErrorNumber::NoCurrentRecord);
  contents_->ReadAgain();
}

}  // namespace ktrv::database
