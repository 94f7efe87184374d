#pragma once

#include <functional>

namespace ktrv::windows {

/// Hands this thread's messages out until `done`. A request to quit that arrives meanwhile is
/// posted again for the host's own loop.
/// \return false when it ended before `done`: by such a request or because messages cannot be read.
bool RunMessages(const std::function<bool()>& done);

}  // namespace ktrv::windows
