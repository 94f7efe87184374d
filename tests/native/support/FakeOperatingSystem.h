#pragma once

#include <map>

#include "common/OperatingSystem.h"

namespace ktrv::tests {

/// Keeps in memory what is appended to files; the clock stands still.
class FakeOperatingSystem final : public OperatingSystem {
 public:
  bool FailsToAppend = false;
  int Flushes = 0;  ///< how often something was appended that had to be on the disk at once
  String Folder = u"C:\\Component";
  DateTime Clock{std::chrono::sys_days(std::chrono::year(2024) / 2 / 29).time_since_epoch() +
                 std::chrono::hours(13) + std::chrono::minutes(5)};

  /// What was appended to the file.
  String TextOf(StringView path) const;

  void Append(StringView path, std::string_view bytes, bool flush) override;
  DateTime Now() override { return Clock; }
  String ComponentDirectory() override { return Folder; }

 private:
  std::map<String, std::string> files_;
};

}  // namespace ktrv::tests
