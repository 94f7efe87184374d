#pragma once

#include <utility>

namespace ktrv {

/// Owns one handle and releases it with `close`.
template <class Handle, auto close>
class Unique {
 public:
  Unique() = default;
  explicit Unique(Handle handle) : handle_(handle) {}
  Unique(Unique&& other) noexcept : handle_(std::exchange(other.handle_, Handle{})) {}
  Unique& operator=(Unique&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Unique() {
    if (handle_) close(handle_);
  }

  Handle Get() const { return handle_; }
  explicit operator bool() const { return handle_ != Handle{}; }
  Handle Release() { return std::exchange(handle_, Handle{}); }

 private:
  Handle handle_{};
};

}  // namespace ktrv
