#pragma once

#include <type_traits>
#include <utility>

#include "common/Logger.h"

namespace ktrv {

/// Runs the body of a procedure that must not throw. An exception is logged as one error record
/// with the procedure's context text, and `failure` is returned. A procedure that must keep its
/// result passes a reference to its result variable as `failure`. `logPath` is read when the
/// exception is logged, because the host may change it while a dialog of the body is open.
template <class Result, class Body>
Result Trap(Logger& logger, const String& logPath, StringView context, const Result& failure,
            Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    logger.LogError(logPath, Error::Current(), context, 0, true);
    return failure;
  }
}

/// The same for a body without a result.
template <class Body>
requires std::is_void_v<std::invoke_result_t<Body>>
void Trap(Logger& logger, const String& logPath, StringView context, Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (...) {
    logger.LogError(logPath, Error::Current(), context, 0, true);
  }
}

}  // namespace ktrv
