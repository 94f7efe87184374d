#include "benchmarks/GroupFloor.h"

#include <sqlext.h>

#include <algorithm>
#include <iterator>

#include "benchmarks/BareOdbc.h"
#include "benchmarks/UserInterfaceLoop.h"
#include "data/GroupQueries.h"

namespace ktrv::benchmarks {
namespace {

namespace Queries = data::GroupQueries;

/// A prepared statement with parameters bound once. The buffers must outlive it.
class BareStatement {
 public:
  BareStatement(BareOdbc& odbc, StringView sql) : handle_(odbc.NewStatement()) {
    std::string text = ToUtf8(sql);
    BareOdbc::Succeed(SQLPrepare(handle_, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS),
                      "prepare");
  }

  void Bind(std::int32_t& number) {
    BareOdbc::Succeed(SQLBindParameter(handle_, ++parameters_, SQL_PARAM_INPUT, SQL_C_SLONG,
                                       SQL_INTEGER, 0, 0, &number, 0, nullptr),
                      "bind a number");
  }
  void Bind(char16_t* text, SQLLEN& bytes, SQLULEN size) {
    BareOdbc::Succeed(SQLBindParameter(handle_, ++parameters_, SQL_PARAM_INPUT, SQL_C_WCHAR,
                                       SQL_VARCHAR, size, 0, text, 0, &bytes),
                      "bind a text");
  }
  void Execute() { BareOdbc::Succeed(SQLExecute(handle_), "execute"); }

 private:
  SQLHANDLE handle_;
  SQLUSMALLINT parameters_ = 0;
};

/// A text parameter.
struct TextArgument {
  char16_t Units[100] = {};
  SQLLEN Bytes = 0;

  void Set(StringView text) {
    Bytes = static_cast<SQLLEN>(sizeof(char16_t) * std::min(text.size(), std::size(Units)));
    text.copy(Units, std::size(Units));
  }
};

}  // namespace

double SaveByBareOdbc(const std::string& connectionString, std::int32_t groupId,
                      const String& groupName, const std::vector<String>& contactIds) {
  BareOdbc odbc(connectionString);
  const auto start = Clock::now();
  TextArgument name;
  TextArgument contact;
  TextArgument letter;
  name.Set(groupName);
  letter.Set(u"S");

  BareStatement rename(odbc, Queries::kRenameGroup);
  rename.Bind(name.Units, name.Bytes, 100);
  rename.Bind(groupId);
  rename.Execute();
  BareStatement clear(odbc, Queries::kClearMembers);
  clear.Bind(groupId);
  clear.Execute();
  BareStatement insert(odbc, Queries::kInsertMember);
  insert.Bind(groupId);
  insert.Bind(contact.Units, contact.Bytes, 50);
  insert.Bind(letter.Units, letter.Bytes, 1);
  for (const String& id : contactIds) {
    contact.Set(id);
    insert.Execute();
  }
  return SecondsSince(start);
}

}  // namespace ktrv::benchmarks
