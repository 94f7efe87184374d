#pragma once

#include <filesystem>
#include <string_view>

#include "common/Text.h"

namespace ktrv::tool {

/// The path for a file name in UTF-8, on every platform.
inline std::filesystem::path PathOf(std::string_view name) {
  return std::filesystem::path(FromUtf8(name));
}

}  // namespace ktrv::tool
