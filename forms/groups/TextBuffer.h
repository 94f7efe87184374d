#pragma once

#include "common/Text.h"

namespace ktrv::forms {

/// A text that is put together from many pieces, in a buffer that grows by large steps and counts
/// separately how much of it is in use.
class TextBuffer {
 public:
  /// Units by which the buffer grows when a piece no longer fits.
  static constexpr std::size_t kGrowth = 5000;

  void Append(StringView piece);

  std::size_t Used() const { return used_; }
  std::size_t Capacity() const { return buffer_.size(); }
  /// The pieces so far.
  String Text() const { return buffer_.substr(0, used_); }

 private:
  String buffer_;
  std::size_t used_ = 0;
};

}  // namespace ktrv::forms
