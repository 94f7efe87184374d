#pragma once

#include <functional>

namespace ktrv::windows {

/// Dispatches messages of this thread until `done` returns true. A WM_QUIT is posted again for the
/// host's loop.
/// \return false if it ended early: after WM_QUIT or if GetMessage failed
bool RunMessages(const std::function<bool()>& done);

}  // namespace ktrv::windows
