#include "tool/Program.h"

#include <fstream>
#include <iterator>
#include <utility>

#include "common/Error.h"
#include "common/Passwords.h"
#include "data/Dialect.h"
#include "database/Connection.h"
#include "database/odbc/ConnectionString.h"
#include "tool/Arguments.h"
#include "tool/Files.h"
#include "tool/JsonText.h"

namespace ktrv::tool {
namespace {

constexpr const char* kVariable = "ADDRESSBOOK_CONNECT";

/// A complaint about the arguments.
struct UsageError {
  std::string Text;
};

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find_first_of("\r\n"));
}

std::string ReadConnectFile(const std::string& name, const Platform& platform) {
  const std::filesystem::path path = PathOf(name);
  std::ifstream file(path, std::ios::binary);
  if (!file) throw UsageError{"cannot read the file of --connect-file: " + name};
  if (!platform.IsPrivate(path)) {
    throw UsageError{"others can read the file of --connect-file: " + name +
                     "; let only its owner read it (chmod 600)"};
  }
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
  return FirstLine(text);
}

String ConnectionStringOf(const Arguments& arguments, const Platform& platform) {
  std::string text;
  std::string complaint;
  if (arguments.Connect) {
    text = *arguments.Connect;
    complaint = "the connection string of --connect is empty";
  } else if (arguments.ConnectFile) {
    text = ReadConnectFile(*arguments.ConnectFile, platform);
    complaint = "the first line of the file of --connect-file is empty";
  } else {
    text = platform.EnvironmentVariable(kVariable).value_or("");
    complaint = std::string("no connection string: give --connect, --connect-file or ") + kVariable;
  }
  String connection = FromUtf8(text);
  if (Trim(connection).empty()) throw UsageError{complaint};
  using database::odbc::KeywordValue;
  if (!KeywordValue(connection, u"Provider").empty()) {
    throw UsageError{"an OLE DB connection string (Provider=) is not supported; give one of ODBC"};
  }
  const bool sqlite =
      ToUpperAscii(KeywordValue(connection, u"Driver")).find(u"SQLITE") != String::npos;
  if (arguments.CreatesDatabase && sqlite && KeywordValue(connection, u"NoCreat").empty()) {
    connection = database::odbc::WithKeyword(connection, u"NoCreat", u"0");
  }
  return connection;
}

data::Dialect DialectOf(const Arguments& arguments, const database::Connection& connection) {
  if (!arguments.Dialect.empty()) return data::FoldedDialect(FromUtf8(arguments.Dialect));
  const bool oracle = connection.CurrentLink()->Get().EngineKind() == database::Engine::Oracle;
  return oracle ? data::Dialect::Oracle : data::Dialect::Sql;
}

/// Makes what a failed command has written well-formed, and tells scripts that it is not all.
void CompleteJson(StringView error, Console& console) {
  const bool isInArray = console.Written == JsonPart::Rows;
  std::string json = isInArray ? ",\n{" : console.Written == JsonPart::Members ? "" : "{";
  json += "\"error\": ";
  AppendJson(json, error);
  console.Out << json << (isInArray ? "}\n]\n" : "}\n");
}

int RunCommand(const Arguments& arguments, const String& connectionString, const Platform& platform,
               Console& console) {
  try {
    database::Connection connection(
        {[&platform](StringView) -> database::Driver& { return platform.Driver; },
         [](const auto&) {}});
    connection.Open(connectionString);
    if (!connection.CurrentLink()) throw Error(ErrorNumber::ObjectClosed);
    Book book{connection, DialectOf(arguments, connection)};
    return arguments.Run(book, console);
  } catch (...) {
    const String text = HidePasswords(Error::Current().Description(), connectionString);
    if (console.Json) CompleteJson(text, console);
    console.Messages << "addressbook: " << ToUtf8(text) << '\n';
    return ExitCode::Failed;
  }
}

}  // namespace

int RunProgram(std::vector<std::string> arguments, const Platform& platform,
               Console& console) noexcept {
  try {
    const auto parsed = ParseArguments(std::move(arguments), console);
    if (const int* code = std::get_if<int>(&parsed)) return *code;
    const auto& accepted = std::get<Arguments>(parsed);
    console.Json = accepted.Json;
    const int code =
        RunCommand(accepted, ConnectionStringOf(accepted, platform), platform, console);
    console.Out.flush();
    if (console.Out) return code;
    console.Messages << "addressbook: the output could not be written\n";
  } catch (const UsageError& error) {
    console.Messages << "addressbook: " << error.Text << '\n';
    return ExitCode::Usage;
  } catch (...) {
    console.Messages << "addressbook: " << Error::Current().what() << '\n';
  }
  return ExitCode::Failed;
}

}  // namespace ktrv::tool
