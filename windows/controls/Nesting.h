#pragma once

namespace ktrv::windows {

/// Counts how deep inside something the program is.
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
