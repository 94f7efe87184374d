#include "tool/ContactWriter.h"

namespace ktrv::tool {

void ContactWriter::FlushIfLong() {
  constexpr std::size_t kLong = 65536;
  if (text_.size() >= kLong) Flush();
}

void ContactWriter::Flush() {
  file_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
  text_.clear();
}

}  // namespace ktrv::tool
