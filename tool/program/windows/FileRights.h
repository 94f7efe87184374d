#pragma once

#include <filesystem>

namespace ktrv::tool {

/// Whether only the file's owner, administrators and the system can read it. \throws Error
bool IsPrivate(const std::filesystem::path& file);

}  // namespace ktrv::tool
