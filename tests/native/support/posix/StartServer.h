#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace ktrv::tests {

/// Starts a server of this name with its data in the folder, and keeps it until this process has
/// ended. \return its port \throws std::runtime_error
std::uint16_t StartServer(const std::string& engine, const std::filesystem::path& folder);

}  // namespace ktrv::tests
