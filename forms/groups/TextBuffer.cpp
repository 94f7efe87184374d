#include "forms/groups/TextBuffer.h"

namespace ktrv::forms {

void TextBuffer::Append(StringView piece) {
  if (used_ + piece.size() >= buffer_.size()) {
    buffer_.append(piece.size() <= kGrowth ? kGrowth : piece.size(), u' ');
  }
  buffer_.replace(used_, piece.size(), piece);
  used_ += piece.size();
}

}  // namespace ktrv::forms
