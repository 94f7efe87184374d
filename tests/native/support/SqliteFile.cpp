#include "tests/native/support/SqliteFile.h"

#include <cstdlib>
#include <random>

namespace ktrv::tests {
namespace {

/// TMPDIR if it is set; else a folder in memory if there is one with enough room, since tests would
/// spend most of their time on waiting for a disk.
std::string Folder() {
  if (const char* const wish = std::getenv("TMPDIR")) return wish;
  constexpr std::uintmax_t kEnough = std::uintmax_t{512} * 1024 * 1024;
  std::error_code missing;
  const auto memory = std::filesystem::space(SqliteFile::FileOf("/dev/shm"), missing);
  return !missing && memory.available >= kEnough ? "/dev/shm" : "/tmp";
}

}  // namespace

SqliteFile::SqliteFile() {
  std::random_device random;
  path_ = Folder() + "/ktrv-test-" + std::to_string(random()) + std::to_string(random()) + ".db";
  database::Connection connection(Surroundings());
  connection.Open(ConnectionString() + u";NoCreat=0");
  connection.Execute(u"PRAGMA user_version = 1");  // puts the file's header in place
}

SqliteFile::~SqliteFile() {
  for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
    std::error_code ignored;
    std::filesystem::remove(FileOf(path_ + suffix), ignored);
  }
}

String SqliteFile::ConnectionStringOf(const std::string& path) {
  return u"Driver=SQLite3;Database=" + FromUtf8(path);
}

database::Environment SqliteFile::Surroundings(std::function<void(std::function<void()>)> post) {
  return {[this](StringView) -> database::Driver& { return driver_; }, std::move(post)};
}

void SqliteFile::Run(std::initializer_list<StringView> statements) {
  database::Connection connection(Surroundings());
  connection.Open(ConnectionString());
  for (const StringView statement : statements) connection.Execute(statement);
}

std::filesystem::path SqliteFile::FileOf(const std::string& path) {
  const std::u8string utf8(path.begin(), path.end());
#ifdef _WIN32
  return u8"Z:" + utf8;
#else
  return utf8;
#endif
}

}  // namespace ktrv::tests
