#pragma once

#include <utility>

#include "windows/base/Entry.h"

namespace ktrv::windows {

/// Runs what the operating system called. Nothing may be thrown into its code, and the program
/// around us is not ours to end: whatever escapes is dropped and `failure` answered. Commands of
/// the forms have logged their failures before they come here.
template <class Result, class Body>
Result Guard(Result failure, Body&& body) noexcept {
  const Entry entry;
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return failure;
  }
}

}  // namespace ktrv::windows
