#include "tests/adoserver/CommandObject.h"

#include <algorithm>

#include "database/SqlTokenizer.h"
#include "database/ado/Constants.h"
#include "tests/adoserver/Conversions.h"
#include "tests/adoserver/RecordsetObject.h"
#include "tests/adoserver/Refusal.h"

namespace ktrv::adoserver {
namespace {

using namespace database;

constexpr std::int32_t kUnknownText = 8;  // adCmdUnknown

std::size_t CountMarks(StringView text) {
  const auto tokens = TokenizeSql(text);
  return static_cast<std::size_t>(std::count_if(
      tokens.begin(), tokens.end(), [](const SqlToken& token) { return token.Text == u"?"; }));
}

}  // namespace

const IID CommandObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x08}};

CommandObject::CommandObject() : type_(kUnknownText) {
  Property(
      L"ActiveConnection", [this] { return Value(static_cast<IDispatch*>(connection_.Get())); },
      [this](const Arguments& arguments) { SetConnection(arguments); });
  Property(
      L"CommandText", [this] { return Value(StringView(text_)); },
      [this](const Arguments& arguments) { text_ = arguments.Text(0); });
  Property(
      L"CommandType", [this] { return Value(type_); },
      [this](const Arguments& arguments) {
        const std::int32_t type = arguments.Number(0);
        if (type != ado::kCommandText && type != kUnknownText) {
          throw Refusal(ErrorNumber::InvalidArgument);
        }
        type_ = type;
      });
  Property(
      L"Prepared", [this] { return Value(prepared_); },
      [this](const Arguments& arguments) {
        if (V_VT(&arguments.At(0)) != VT_BOOL) throw Refusal(ErrorNumber::InvalidArgument);
        prepared_ = V_BOOL(&arguments.At(0)) != VARIANT_FALSE;
      });
  Property(
      L"CommandTimeout", [this] { return Value(timeout_); },
      [this](const Arguments& arguments) {
        if (arguments.Number(0) < 0) throw Refusal(ErrorNumber::InvalidArgument);
        timeout_ = arguments.Number(0);
      });
  Property(L"Parameters", [this] { return Value(static_cast<IDispatch*>(parameters_.Get())); });
  Method(L"CreateParameter", 0, 5,
         [this](const Arguments& arguments) { return CreateParameter(arguments); });
  Method(L"Execute", 0, 3, [this](const Arguments& arguments) { return Execute(arguments); });
}

void CommandObject::SetConnection(const Arguments& arguments) {
  auto* const connection = OwnObject<ConnectionObject>(arguments.Object(0));
  if (!connection) throw Refusal(ErrorNumber::InvalidArgument);
  if (!connection->IsOpen()) throw Refusal(ErrorNumber::InvalidConnection);
  connection_ = windows::ComPtr<ConnectionObject>::Share(connection);
}

Value CommandObject::CreateParameter(const Arguments& arguments) {
  constexpr std::int32_t kReturnValue = 4;  // adParamReturnValue, the last of the directions
  const String name = arguments.Has(0) ? arguments.Text(0) : String();
  const std::int32_t type = arguments.Number(1, 0);
  const std::int32_t direction = arguments.Number(2, ado::kInput);
  const std::int32_t size = arguments.Number(3, 0);
  const bool valid = (type == 0 || IsParameterType(type)) && direction >= ado::kInput &&
                     direction <= kReturnValue && size >= 0;
  if (!valid) throw Refusal(ErrorNumber::InvalidArgument);
  const windows::ComPtr<ParameterObject> made(new ParameterObject(name, type, direction, size));
  if (arguments.Has(4)) made->SetValue(arguments.At(4));
  return Value(static_cast<IDispatch*>(made.Get()));
}

void CommandObject::RefuseUnlessReady() const {
  if (!connection_ || !connection_->IsOpen()) throw Refusal(ErrorNumber::InvalidConnection);
  if (connection_->IsExecuting()) throw Refusal(ErrorNumber::StillExecuting);
  if (Trim(text_).empty()) throw Refusal(ErrorNumber::NoCommandText);
  if (parameters_->All().size() < CountMarks(text_)) throw Refusal(kParameterWithoutValue);
}

std::shared_ptr<Cursor> CommandObject::NewCursor() const {
  std::vector<Parameter> parameters;
  std::vector<Variant> values;
  for (const auto& each : parameters_->All()) {
    parameters.push_back(each->ForOdbc());
    values.push_back(each->ValueForOdbc());
  }
  return connection_->NewCursor(text_, std::move(parameters), std::move(values));
}

Value CommandObject::Execute(const Arguments& arguments) {
  // Values in an array are part of ADO that this server does without.
  if (arguments.Has(1)) throw Refusal(ErrorNumber::NotUpdatable);
  const std::int32_t options = arguments.Number(2, kUnknownText);
  const std::int32_t known = ado::kCommandText | kUnknownText | ado::kAsyncExecute;
  if ((options & ~known) != 0) throw Refusal(ErrorNumber::InvalidArgument);
  RefuseUnlessReady();
  std::shared_ptr<Cursor> cursor;
  connection_->Provide([&] {
    cursor = NewCursor();
    if (options & ado::kAsyncExecute) {
      cursor->RunInBackground();
    } else {
      cursor->Run();
    }
  });
  if ((options & ado::kAsyncExecute) == 0) {
    arguments.Return(0, static_cast<LONG>(cursor->RowsAffected()));
  }
  const windows::ComPtr<RecordsetObject> recordset(new RecordsetObject(*connection_.Get(), cursor));
  return Value(static_cast<IDispatch*>(recordset.Get()));
}

}  // namespace ktrv::adoserver
