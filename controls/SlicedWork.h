#pragma once

#include <functional>
#include <memory>

#include "controls/Screen.h"

namespace ktrv::controls {

/// Long work on the user-interface thread. Works in slices of 20 ms: the first one at once, each
/// further one from the message queue, so that the user is not kept waiting.
class SlicedWork {
 public:
  /// Does a portion of the work, which should take a few milliseconds. \return whether there is
  /// more. An exception ends the work.
  using Portion = std::function<bool()>;

  /// Replaces the present work. \param screen must outlive the work
  void Start(Screen& screen, Portion portion);
  void Stop() { portion_.reset(); }
  bool IsRunning() const { return portion_ != nullptr; }

 private:
  void RunSlice(Screen& screen);

  std::shared_ptr<Portion> portion_;
};

}  // namespace ktrv::controls
