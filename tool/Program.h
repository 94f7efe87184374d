#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "database/Driver.h"
#include "tool/Console.h"

namespace ktrv::tool {

/// What the program needs of its system.
struct Platform {
  database::Driver& Driver;
  /// The value in UTF-8; nullopt if it is not set.
  std::function<std::optional<std::string>(const std::string& name)> EnvironmentVariable;
  /// Whether nobody but the file's owner and the system's administrators can read it. \throws Error
  std::function<bool(const std::filesystem::path& file)> IsPrivate;
};

/// Runs the program. \param arguments in UTF-8, without the program's name. \return an ExitCode
int RunProgram(std::vector<std::string> arguments, const Platform& platform,
               Console& console) noexcept;

}  // namespace ktrv::tool
