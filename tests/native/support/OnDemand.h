#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace ktrv::tests {

/// A dialog that is made when it is first used, after the test has said what it is opened with.
template <class Dialog>
class OnDemand {
 public:
  explicit OnDemand(std::function<std::unique_ptr<Dialog>()> make) : make_(std::move(make)) {}

  Dialog& operator*() const {
    if (!dialog_) dialog_ = make_();
    return *dialog_;
  }
  Dialog* operator->() const { return &**this; }
  /// The next use makes another one.
  void Reset() { dialog_.reset(); }

 private:
  std::function<std::unique_ptr<Dialog>()> make_;
  mutable std::unique_ptr<Dialog> dialog_;
};

}  // namespace ktrv::tests
