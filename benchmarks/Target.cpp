#include "benchmarks/Target.h"

#include "database/Engines.h"
#include "database/odbc/ConnectionString.h"

namespace ktrv::benchmarks {

String ConnectionStringOf(const std::string& database) {
  const String text = FromUtf8(database);
  return text.find(u'=') != String::npos ? text : u"Driver=SQLite3;Database=" + text;
}

std::string BareConnectionStringOf(const std::string& database) {
  return ToUtf8(database::odbc::CompleteConnectionString(ConnectionStringOf(database), {}, {}));
}

database::Engine EngineOfDatabase(const std::string& database) {
  return database::EngineOf(database::odbc::KeywordValue(ConnectionStringOf(database), u"Driver"));
}

std::string NameOf(const std::string& database) {
  if (database.find('=') == std::string::npos) return database.substr(database.rfind('/') + 1);
  return ToUtf8(database::odbc::KeywordValue(FromUtf8(database), u"Driver"));
}

}  // namespace ktrv::benchmarks
