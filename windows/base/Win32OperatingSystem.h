#pragma once

#include "common/OperatingSystem.h"

namespace ktrv::windows {

/// The OperatingSystem interface on Win32.
class Win32OperatingSystem final : public OperatingSystem {
 public:
  void Append(StringView path, std::string_view bytes, bool flush) override;
  DateTime Now() override;
  String ComponentDirectory() override;
};

}  // namespace ktrv::windows
