#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "common/Error.h"
#include "common/OperatingSystem.h"

namespace ktrv::tests {

/// An operating system whose files are kept in memory, one entry for each append.
class RecordingSystem final : public OperatingSystem {
 public:
  struct Appended {
    String Path;
    std::string Bytes;
    bool Flush = false;
  };

  void Append(StringView path, std::string_view bytes, bool flush) override {
    const std::lock_guard lock(mutex_);
    if (Full) throw Error(ErrorNumber::DriverFailure, u"The disk is full.");
    Appends.push_back({String(path), std::string(bytes), flush});
  }
  DateTime Now() override { return Clock; }
  String ComponentDirectory() override { return u"C:\\component"; }

  std::string Contents() const {
    std::string all;
    for (const Appended& append : Appends) all += append.Bytes;
    return all;
  }

  bool Full = false;
  DateTime Clock = *ParseDateTime(u"2024-03-05 07:08:09");
  std::vector<Appended> Appends;

 private:
  std::mutex mutex_;
};

}  // namespace ktrv::tests
