#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

#include "common/Error.h"
#include "database/odbc/OdbcDriver.h"
#include "tool/Program.h"

namespace {

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value ? std::optional<std::string>(value) : std::nullopt;
}

bool IsPrivate(const std::filesystem::path& file) {
  struct stat facts {};
  if (stat(file.c_str(), &facts) != 0) {
    throw ktrv::Error(ktrv::ErrorNumber::DriverFailure, u"cannot read the rights of a file",
                      u"addressbook", static_cast<std::uint32_t>(errno));
  }
  const bool ours = facts.st_uid == geteuid() || facts.st_uid == 0;
  return ours && (facts.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

}  // namespace

int main(int count, char** arguments) {
  std::ios::sync_with_stdio(false);
  ktrv::database::OdbcDriver driver;
  ktrv::tool::Console console{std::cout, std::cerr, std::cin,
                              isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0};
  return ktrv::tool::RunProgram({arguments + (count > 0 ? 1 : 0), arguments + count},
                                {driver, EnvironmentVariable, IsPrivate}, console);
}
