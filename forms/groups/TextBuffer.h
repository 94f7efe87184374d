#pragma once

#include "common/Text.h"

namespace ktrv::forms {

/// Builds a text from many pieces in a buffer that grows by large steps. Its used length is counted
/// separately.
class TextBuffer {
 public:
  /// Number of units by which the buffer grows.
  static constexpr std::size_t kGrowth = 5000;

  void Append(StringView piece);

  std::size_t Used() const { return used_; }
  std::size_t Capacity() const { return buffer_.size(); }
  /// The text so far.
  String Text() const { return buffer_.substr(0, used_); }

 private:
  String buffer_;
  std::size_t used_ = 0;
};

}  // namespace ktrv::forms
