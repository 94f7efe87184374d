#pragma once

#include <string>

namespace ktrv::scripthost {

/// The host's exit code after an error of a script.
inline constexpr int kScriptError = 99;

/// A failure that the script sees as an error with this description.
struct ScriptFailure {
  std::wstring description;
};

}  // namespace ktrv::scripthost
