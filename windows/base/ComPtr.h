#pragma once

#include <utility>

namespace ktrv::windows {

/// Owns one reference to a COM object.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  /// Takes over the caller's reference.
  explicit ComPtr(T* object) : object_(object) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() {
    if (object_) object_->Release();
  }

  /// Adds a reference to the object and owns it.
  static ComPtr Share(T* object) {
    if (object) object->AddRef();
    return ComPtr(object);
  }

  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  T* Release() { return std::exchange(object_, nullptr); }

  /// An out parameter that receives a reference. Releases the present one first.
  T** Out() {
    *this = ComPtr();
    return &object_;
  }

 private:
  T* object_ = nullptr;
};

}  // namespace ktrv::windows
