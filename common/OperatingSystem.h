#pragma once

#include <string_view>

#include "common/Text.h"
#include "common/Variant.h"

namespace ktrv {

/// The operating system functions that the log needs.
class OperatingSystem {
 public:
  virtual ~OperatingSystem() = default;

  /// Appends the bytes to the file in one piece, also while other processes append to it. Creates a
  /// missing file, but not its folder.
  /// \param flush true: the bytes are on disk when the call returns.
  /// \throws Error DriverFailure when the file cannot be written.
  virtual void Append(StringView path, std::string_view bytes, bool flush) = 0;

  /// The local time.
  virtual DateTime Now() = 0;

  /// The folder of the component, without a trailing separator.
  virtual String ComponentDirectory() = 0;
};

}  // namespace ktrv
