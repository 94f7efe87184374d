#pragma once

#include <functional>

namespace ktrv::scripthost::MessagePump {

/// Handles this thread's messages until the condition holds or the time is up; says whether it
/// held. \param milliseconds of waiting at most.
bool RunUntil(const std::function<bool()>& condition, unsigned long milliseconds);

}  // namespace ktrv::scripthost::MessagePump
