#include "tests/adoserver/RecordsetObject.h"

#include <utility>

#include "database/ado/Constants.h"
#include "tests/adoserver/Conversions.h"
#include "tests/adoserver/FieldObjects.h"
#include "tests/adoserver/Refusal.h"

namespace ktrv::adoserver {

namespace AdoState = database::ado::AdoState;

const IID RecordsetObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x09}};

RecordsetObject::RecordsetObject(ConnectionObject& connection, std::shared_ptr<Cursor> cursor)
    : connection_(windows::ComPtr<ConnectionObject>::Share(&connection)),
      cursor_(std::move(cursor)) {
  Property(L"State", [this] { return Value(State()); });
  Property(L"EOF", [this] { return Value(Opened().AtEnd()); });
  Property(L"Fields", [this] {
    Opened();
    const windows::ComPtr<FieldsObject> fields(new FieldsObject(*this));
    return Value(static_cast<IDispatch*>(fields.Get()));
  });
  Method(L"GetRows", 0, 3, [this](const Arguments& arguments) { return GetRows(arguments); });
  Method(L"NextRecordset", 0, 1,
         [this](const Arguments& arguments) { return NextRecordset(arguments); });
  Method(L"MoveNext", 0, 0, [this](const Arguments&) {
    connection_->Provide([this] { OnRow().MoveNext(); });
    return Value();
  });
  Method(L"MovePrevious", 0, 0, [this](const Arguments&) -> Value {
    Opened();
    throw Refusal(kIllegalOperation);  // the rows go forward only
  });
  Method(L"AddNew", 0, 2, [this](const Arguments&) -> Value {
    Opened();
    throw Refusal(ErrorNumber::NotUpdatable);
  });
  Method(L"Close", 0, 0, [this](const Arguments&) {
    Opened().Close();
    return Value();
  });
  Method(L"Cancel", 0, 0, [this](const Arguments&) {
    if (State() & AdoState::Executing) cursor_->Cancel();
    return Value();
  });
}

RecordsetObject::~RecordsetObject() {
  cursor_->Close();
}

std::int32_t RecordsetObject::State() {
  if (cursor_->IsRunning()) return AdoState::Open | AdoState::Executing;
  connection_->IsExecuting();  // notes what has failed
  return cursor_->IsOpen() ? AdoState::Open : AdoState::Closed;
}

Cursor& RecordsetObject::Opened() {
  const std::int32_t state = State();
  if (state & AdoState::Executing) throw Refusal(ErrorNumber::StillExecuting);
  if (state == AdoState::Closed) throw Refusal(ErrorNumber::ObjectClosed);
  return *cursor_;
}

Cursor& RecordsetObject::OnRow() {
  if (Opened().AtEnd()) throw Refusal(ErrorNumber::NoCurrentRecord);
  return *cursor_;
}

Value RecordsetObject::NextRecordset(const Arguments& arguments) {
  if (State() & AdoState::Executing) throw Refusal(ErrorNumber::StillExecuting);
  // Behind rows it would have to free them first, which nobody asks for here.
  if (State() & AdoState::Open) throw Refusal(ErrorNumber::NotUpdatable);
  bool more = false;
  connection_->Provide([&] { more = cursor_->ToNextResult(); });
  if (!more) return Value(static_cast<IDispatch*>(nullptr));
  arguments.Return(0, static_cast<LONG>(cursor_->RowsAffected()));
  // The results are the next one's now.
  const auto none = std::make_shared<Cursor>(std::vector<database::Column>(), nullptr);
  const windows::ComPtr<RecordsetObject> next(
      new RecordsetObject(*connection_.Get(), std::exchange(cursor_, none)));
  return Value(static_cast<IDispatch*>(next.Get()));
}

Value RecordsetObject::GetRows(const Arguments& arguments) {
  constexpr std::int32_t kRest = -1;  // adGetRowsRest
  const std::int32_t count = arguments.Number(0, kRest);
  if (count != kRest && count < 1) throw Refusal(ErrorNumber::InvalidArgument);
  // A start at a bookmark needs another cursor, and some of the columns nobody asks for here.
  if (arguments.Has(1) || arguments.Has(2)) throw Refusal(ErrorNumber::NotUpdatable);
  Cursor& cursor = OnRow();
  const auto columns = static_cast<ULONG>(cursor.Columns().size());
  std::vector<Value> cells;
  connection_->Provide([&] {
    for (std::int32_t row = 0; row != count && !cursor.AtEnd(); ++row, cursor.MoveNext()) {
      for (std::size_t column = 0; column < columns; ++column) {
        cells.push_back(
            FieldValue(cursor.Columns()[column], cursor.Cell(column), connection_->EngineKind()));
      }
    }
  });
  SAFEARRAYBOUND bounds[] = {{columns, 0}, {static_cast<ULONG>(cells.size()) / columns, 0}};
  Value array;
  V_VT(&array.Raw()) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&array.Raw()) = SafeArrayCreate(VT_VARIANT, 2, bounds);
  VARIANT* data = nullptr;
  SafeArrayAccessData(V_ARRAY(&array.Raw()), reinterpret_cast<void**>(&data));
  for (std::size_t cell = 0; cell < cells.size(); ++cell) std::swap(data[cell], cells[cell].Raw());
  SafeArrayUnaccessData(V_ARRAY(&array.Raw()));
  return array;
}

}  // namespace ktrv::adoserver
