#include "tests/native/support/FakeOperatingSystem.h"

#include "common/Error.h"

namespace ktrv::tests {

String FakeOperatingSystem::TextOf(StringView path) const {
  const auto file = files_.find(String(path));
  return file == files_.end() ? String() : FromUtf8(file->second);
}

void FakeOperatingSystem::Append(StringView path, std::string_view bytes, bool flush) {
  if (FailsToAppend) throw Error(ErrorNumber::DriverFailure, u"The disk is full.");
  if (flush) ++Flushes;
  files_[String(path)].append(bytes);
}

}  // namespace ktrv::tests
