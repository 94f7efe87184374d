#include "tool/Utf8.h"

namespace ktrv::tool {

void AppendUtf8(std::string& bytes, StringView text) {
  const std::size_t start = bytes.size();
  bytes.resize(start + text.size());
  char* to = bytes.data() + start;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] >= 0x80) {
      bytes.resize(start + at);
      bytes += ToUtf8(text.substr(at));
      return;
    }
    *to++ = static_cast<char>(text[at]);
  }
}

}  // namespace ktrv::tool
