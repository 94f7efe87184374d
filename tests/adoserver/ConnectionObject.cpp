#include "tests/adoserver/ConnectionObject.h"

#include <algorithm>

#include "database/ado/Constants.h"
#include "database/odbc/ConnectionString.h"
#include "database/odbc/OdbcStatement.h"
#include "tests/adoserver/PropertyObjects.h"
#include "tests/adoserver/RecordsetObject.h"
#include "tests/adoserver/Refusal.h"

namespace ktrv::adoserver {
namespace {

using namespace database;

/// What the provider hands on to ODBC. No test has a semicolon in a value.
String WithoutProvider(StringView text) {
  const StringView keyword = u"Provider=";
  String kept;
  while (!text.empty()) {
    const StringView pair = text.substr(0, text.find(u';'));
    text.remove_prefix(std::min(pair.size() + 1, text.size()));
    if (EqualsIgnoringCase(LTrim(pair).substr(0, keyword.size()), keyword)) continue;
    kept.append(kept.empty() ? u"" : u";").append(pair);
  }
  return kept;
}

StringView NameOf(Engine engine) {
  switch (engine) {
    case Engine::SqlServer:
      return u"Microsoft SQL Server";
    case Engine::Oracle:
      return u"Oracle";
    case Engine::MySql:
      return u"MySQL";
    case Engine::PostgreSql:
      return u"PostgreSQL";
    case Engine::Sqlite:
      return u"SQLite";
    case Engine::Other:
      break;
  }
  return u"unknown";
}

}  // namespace

const IID ConnectionObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x03}};

ConnectionObject::ConnectionObject() {
  Property(L"State", [this] {
    if (!IsOpen()) return Value(ado::AdoState::Closed);
    return Value(ado::AdoState::Open | (IsExecuting() ? ado::AdoState::Executing : 0));
  });
  Property(
      L"ConnectionString", [this] { return Value(StringView(text_)); },
      [this](const Arguments& arguments) {
        if (IsOpen()) throw Refusal(ErrorNumber::ObjectOpen);
        text_ = arguments.Text(0);
      });
  Property(L"Errors", [this] { return Value(static_cast<IDispatch*>(errors_.Get())); });
  Property(L"Properties", [this] {
    RefuseUnlessOpen();
    const windows::ComPtr<PropertiesObject> properties(
        new PropertiesObject({{u"DBMS Name", String(NameOf(link_->EngineKind()))}}));
    return Value(static_cast<IDispatch*>(properties.Get()));
  });
  Method(L"Open", 0, 4, [this](const Arguments& arguments) { return Open(arguments); });
  Method(L"Close", 0, 0, [this](const Arguments&) { return Close(); });
  Method(L"Cancel", 0, 0, [this](const Arguments&) { return Cancel(); });
  Method(L"BeginTrans", 0, 0, [this](const Arguments&) { return BeginTrans(); });
  Method(L"CommitTrans", 0, 0, [this](const Arguments&) { return EndTrans(true); });
  Method(L"RollbackTrans", 0, 0, [this](const Arguments&) { return EndTrans(false); });
  Method(L"OpenSchema", 1, 3, [this](const Arguments& arguments) { return OpenSchema(arguments); });
}

ConnectionObject::~ConnectionObject() {
  if (IsOpen()) Close();
}

void ConnectionObject::RefuseUnlessOpen() const {
  if (!IsOpen()) throw Refusal(ErrorNumber::ObjectClosed);
}

Value ConnectionObject::Open(const Arguments& arguments) {
  if (IsOpen()) throw Refusal(ErrorNumber::ObjectOpen);
  if (arguments.Has(0)) text_ = arguments.Text(0);
  const String user = arguments.Has(1) ? arguments.Text(1) : String();
  const String password = arguments.Has(2) ? arguments.Text(2) : String();
  if (arguments.Number(3, -1) != -1) throw Refusal(ErrorNumber::NotUpdatable);
  const String provider = odbc::KeywordValue(text_, u"Provider");
  const bool known = provider.empty() || EqualsIgnoringCase(provider, u"MSDASQL") ||
                     EqualsIgnoringCase(provider, u"MSDASQL.1");
  if (!known) throw Refusal(kProviderNotFound);
  Provide(
      [&] { link_ = std::make_unique<odbc::OdbcLink>(WithoutProvider(text_), user, password); });
  return Value();
}

Value ConnectionObject::Close() {
  RefuseUnlessOpen();
  for (const auto& each : cursors_) {
    if (const auto cursor = each.lock()) cursor->Close();
  }
  cursors_.clear();
  inTransaction_ = false;
  link_.reset();
  return Value();
}

Value ConnectionObject::Cancel() {
  RefuseUnlessOpen();
  for (const auto& each : cursors_) {
    if (const auto cursor = each.lock(); cursor && cursor->IsRunning()) cursor->Cancel();
  }
  return Value();
}

Value ConnectionObject::BeginTrans() {
  RefuseUnlessOpen();
  if (inTransaction_) throw Refusal(ErrorNumber::NotUpdatable);  // none within another
  Provide([&] {
    if (!link_->Begin()) throw Refusal(ErrorNumber::NotUpdatable);
  });
  inTransaction_ = true;
  return Value(std::int32_t{1});
}

Value ConnectionObject::EndTrans(bool commit) {
  RefuseUnlessOpen();
  if (!inTransaction_) throw Refusal(ErrorNumber::NotUpdatable);
  inTransaction_ = false;
  Provide([&] { commit ? link_->Commit() : link_->RollBack(); });
  return Value();
}

bool ConnectionObject::IsExecuting() {
  bool executing = false;
  for (const auto& each : cursors_) {
    const auto cursor = each.lock();
    if (!cursor) continue;
    if (cursor->IsRunning()) executing = true;
    if (const auto failure = cursor->IsRunning() ? std::nullopt : cursor->TakeFailure()) {
      errors_->Note(*failure);
    }
  }
  return executing;
}

std::shared_ptr<Cursor> ConnectionObject::NewCursor(const String& text,
                                                    std::vector<Parameter> parameters,
                                                    std::vector<Variant> values) {
  std::erase_if(cursors_, [](const auto& each) { return each.expired(); });
  // Past the link's own Prepare, which would bring the text into the engine's dialect: ADO does
  // not.
  auto statement = std::make_unique<odbc::OdbcStatement>(*link_, text, parameters);
  auto cursor = std::make_shared<Cursor>(std::move(statement), std::move(values));
  cursors_.push_back(cursor);
  return cursor;
}

Value ConnectionObject::OpenSchema(const Arguments& arguments) {
  RefuseUnlessOpen();
  if (IsExecuting()) throw Refusal(ErrorNumber::StillExecuting);
  if (arguments.Number(0) != ado::kPrimaryKeys) throw Refusal(ErrorNumber::NotUpdatable);
  if (!arguments.Has(1) || V_VT(&arguments.At(1)) != (VT_ARRAY | VT_VARIANT)) {
    throw Refusal(ErrorNumber::InvalidArgument);
  }
  constexpr LONG kTableName = 2;
  Value table;
  LONG place = kTableName;
  if (FAILED(SafeArrayGetElement(V_ARRAY(&arguments.At(1)), &place, &table.Raw())) ||
      table.Text().empty()) {
    throw Refusal(ErrorNumber::InvalidArgument);
  }
  auto rows = std::make_unique<RowBlock>(4);
  for (const String& name : link_->KeyColumns(table.Text())) {
    rows->BeginRow();
    rows->AddNull();
    rows->AddNull();
    rows->Add(table.Text());
    rows->Add(name);
  }
  if (rows->Rows() == 0) rows.reset();
  const std::vector<Column> columns = {{u"TABLE_CATALOG", DataType::VarWChar, 128},
                                       {u"TABLE_SCHEMA", DataType::VarWChar, 128},
                                       {u"TABLE_NAME", DataType::VarWChar, 128},
                                       {u"COLUMN_NAME", DataType::VarWChar, 128}};
  const auto cursor = std::make_shared<Cursor>(columns, std::move(rows));
  const windows::ComPtr<RecordsetObject> recordset(new RecordsetObject(*this, cursor));
  return Value(static_cast<IDispatch*>(recordset.Get()));
}

}  // namespace ktrv::adoserver
