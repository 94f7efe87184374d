#pragma once

#include <utility>

namespace ktrv {

/// Runs a function at the end of the scope. The function must not throw.
template <class End>
class ScopeExit {
 public:
  explicit ScopeExit(End end) : end_(std::move(end)) {}
  ~ScopeExit() { end_(); }
  ScopeExit(const ScopeExit&) = delete;
  ScopeExit& operator=(const ScopeExit&) = delete;

 private:
  End end_;
};

}  // namespace ktrv
