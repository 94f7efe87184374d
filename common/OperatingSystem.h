#pragma once

#include <string_view>

#include "common/Text.h"
#include "common/Variant.h"

namespace ktrv {

/// What the log needs from the operating system.
class OperatingSystem {
 public:
  virtual ~OperatingSystem() = default;

  /// Appends the bytes to the file in one piece, whatever other processes append at the same time,
  /// and closes it again. The file is made when there is none; its folder is not.
  /// \param flush whether the bytes are to be on the disk before the call returns.
  /// \throws Error DriverFailure when the file cannot be written.
  virtual void Append(StringView path, std::string_view bytes, bool flush) = 0;

  /// The wall clock in the user's time zone.
  virtual DateTime Now() = 0;

  /// The folder that holds the component, without a separator at the end.
  virtual String ComponentDirectory() = 0;
};

}  // namespace ktrv
