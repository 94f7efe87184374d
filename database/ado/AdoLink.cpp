#include "database/ado/AdoLink.h"

#include "database/DialectRewriter.h"
#include "database/Engines.h"
#include "database/KeyOfOneTable.h"
#include "database/ado/AdoStatement.h"
#include "database/ado/Constants.h"
#include "database/ado/SafeArray.h"

namespace ktrv::database::ado {

AdoLink::AdoLink(StringView connectionString, StringView user, StringView password)
    : connection_(Object::Create(L"ADODB.Connection")) {
  const Value text(connectionString);
  if (user.empty() && password.empty()) {
    connection_.Call(L"Open", {&text});
  } else {
    const Value name(user);
    const Value secret(password);
    connection_.Call(L"Open", {&text, &name, &secret});
  }
  if (IsOpen()) engine_ = AskEngine();
}

AdoLink::~AdoLink() {
  try {
    if (IsOpen()) connection_.Call(L"Close");
  } catch (const Error&) {
    // The session is closed already.
  }
}

bool AdoLink::IsOpen() const {
  return (connection_.GetWhole(L"State") & AdoState::Open) != 0;
}

Engine AdoLink::AskEngine() const {
  try {
    const Value name(StringView(u"DBMS Name"));
    const Object property = connection_.Part(L"Properties").Part(L"Item", {&name});
    return EngineOf(property.Get(L"Value").Text());
  } catch (const Error&) {
    return Engine::Other;  // the provider does not report it
  }
}

std::unique_ptr<Statement> AdoLink::Prepare(StringView text,
                                            std::span<const Parameter> parameters) {
  return std::make_unique<AdoStatement>(*this, RewriteForEngine(text, engine_), parameters);
}

std::vector<String> AdoLink::KeyColumns(StringView table) {
  auto known = keyColumns_.find(String(table));
  if (known == keyColumns_.end()) {
    known = keyColumns_.emplace(table, AskKeyColumns(table)).first;
  }
  return known->second;
}

std::vector<String> AdoLink::AskKeyColumns(StringView table) const {
  const String name = NameInCatalogue(table, engine_);
  std::vector<KeyLine> lines;
  try {
    const Value kind(kPrimaryKeys);
    const Value wanted = ArrayOf({Value(), Value(), Value(StringView(name))});
    const Object rows(connection_.Call(L"OpenSchema", {&kind, &wanted}));
    const auto text = [&](StringView column) {
      const Value wantedColumn(column);
      return rows.Part(L"Fields").Part(L"Item", {&wantedColumn}).Get(L"Value").Text();
    };
    while (!rows.Get(L"EOF").Truth()) {
      lines.push_back({text(u"TABLE_CATALOG"), text(u"TABLE_SCHEMA"), text(u"COLUMN_NAME")});
      rows.Call(L"MoveNext");
    }
  } catch (const Error&) {
    lines.clear();  // the provider does not support it
  }
  return KeyOfOneTable(lines, table);
}

bool AdoLink::TellsInsertedId(StringView table, StringView column) {
  return CanReadLastInsertedId(*this, table, column);
}

std::int64_t AdoLink::LastInsertedId(StringView table, StringView column) {
  return ReadLastInsertedId(*this, table, column, u"ADODB");
}

bool AdoLink::Begin() {
  try {
    connection_.Call(L"BeginTrans");
    return true;
  } catch (const Error& error) {
    if (!IsUnsupported(error)) throw;
    return false;
  }
}

void AdoLink::Commit() {
  connection_.Call(L"CommitTrans");
}

void AdoLink::RollBack() {
  connection_.Call(L"RollbackTrans");
}

void AdoLink::PassUnlessFailed() const {
  const Object errors = connection_.Part(L"Errors");
  const auto count = static_cast<std::int32_t>(errors.GetWhole(L"Count"));
  for (std::int32_t index = 0; index < count; ++index) {
    const Value place(index);
    const Object each = errors.Part(L"Item", {&place});
    const auto code = static_cast<HRESULT>(each.GetWhole(L"Number"));
    if (code >= 0) continue;  // a warning
    throw Error(NumberOf(code), each.Get(L"Description").Text(), each.Get(L"Source").Text());
  }
}

void AdoLink::ForgetFailures() const {
  connection_.Part(L"Errors").Call(L"Clear");
}

}  // namespace ktrv::database::ado
