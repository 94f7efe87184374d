#pragma once

#include <utility>

#include "windows/base/Entry.h"

namespace ktrv::windows {

/// Runs a callback of the operating system. An exception must not reach the caller, and must not
/// terminate the host process. So all exceptions are swallowed and `failure` is returned. Form
/// commands have logged theirs before.
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
