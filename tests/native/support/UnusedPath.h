#pragma once

#include <filesystem>
#include <string>

namespace ktrv::tests {

/// A path in the folder for temporary files that no other test has, in no process.
std::filesystem::path UnusedPath(const std::string& ending = {});

}  // namespace ktrv::tests
