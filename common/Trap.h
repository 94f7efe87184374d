#pragma once

#include <type_traits>
#include <utility>

#include "common/Logger.h"

namespace ktrv {

/// Runs the body of a procedure that must not let a failure out: whatever it throws is written to
/// the log as one error record with the procedure's context text, and the failure value is the
/// result. A procedure that already has a result when it fails keeps it in a variable that
/// `failure` refers to. The log is the one that the path names when the failure comes: a host may
/// give the component another while a dialog of the body is open.
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

/// The same for a procedure without a result.
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
