#pragma once

namespace ktrv::windows {

/// Increments a nesting depth for its lifetime.
class Nesting {
 public:
  explicit Nesting(int& depth) : depth_(depth) { ++depth_; }
  ~Nesting() { --depth_; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;

 private:
  int& depth_;
};

}  // namespace ktrv::windows
