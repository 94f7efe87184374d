#pragma once

#include "common/OperatingSystem.h"

namespace ktrv::windows {

/// Windows as the log sees it.
class Win32OperatingSystem final : public OperatingSystem {
 public:
  void Append(StringView path, std::string_view bytes, bool flush) override;
  DateTime Now() override;
  String ComponentDirectory() override;
};

}  // namespace ktrv::windows
