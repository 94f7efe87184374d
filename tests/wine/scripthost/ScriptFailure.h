#pragma once

#include <string>

namespace ktrv::scripthost {

/// A failure that the script sees as an error with this description.
struct ScriptFailure {
  std::wstring description;
};

}  // namespace ktrv::scripthost
