#include "tool/formats/TextSource.h"

#include <utility>

#include "common/Surrogates.h"

namespace ktrv::tool {
namespace {

constexpr std::size_t kPart = 65536;  // bytes

char16_t Invalid(char byte) {
  return static_cast<char16_t>(TextSource::kInvalid + static_cast<unsigned char>(byte));
}

}  // namespace

TextSource::TextSource(std::istream& bytes, Encoding encoding)
    : stream_(bytes), encoding_(encoding) {}

bool TextSource::Next(String& text) {
  text.clear();
  while (text.empty()) {
    const std::size_t held = bytes_.size();
    bytes_.resize(held + kPart);
    stream_.read(bytes_.data() + held, kPart);
    const auto count = static_cast<std::size_t>(stream_.gcount());
    bytes_.resize(held + count);
    if (!std::exchange(started_, true)) {
      std::size_t length = 0;
      encoding_ = EncodingOfMark(bytes_, length).value_or(encoding_);
      bytes_.erase(0, length);
    }
    bytes_.erase(0, Append(bytes_, text));
    if (count > 0) continue;
    for (const char byte : std::exchange(bytes_, {})) text += Invalid(byte);
    return !text.empty();
  }
  return true;
}

std::size_t TextSource::Append(std::string_view bytes, String& text) const {
  switch (encoding_) {
    case Encoding::Utf8:
      return AppendUtf8(bytes, text);
    case Encoding::Utf16Le:
    case Encoding::Utf16Be:
      return AppendUtf16(bytes, text);
    case Encoding::Windows1252:
      break;
  }
  for (const char byte : bytes) text += FromWindows1252(byte);
  return bytes.size();
}

std::size_t TextSource::AppendUtf8(std::string_view bytes, String& text) const {
  constexpr std::size_t kLongest = 4;  // bytes of a code point
  const std::size_t size = bytes.size();
  while (!bytes.empty()) {
    std::size_t ascii = 0;
    while (ascii < bytes.size() && static_cast<unsigned char>(bytes[ascii]) < 0x80) ++ascii;
    text.append(bytes.begin(), bytes.begin() + ascii);
    bytes.remove_prefix(ascii);
    if (bytes.empty()) break;
    const DecodedUtf8 decoded = DecodeUtf8(bytes);
    if (decoded.Length > 0) {
      AppendCodePoint(text, decoded.Code);
      bytes.remove_prefix(decoded.Length);
    } else if (bytes.size() < kLongest && stream_) {
      break;  // the next bytes may complete it
    } else {
      text += Invalid(bytes.front());
      bytes.remove_prefix(1);
    }
  }
  return size - bytes.size();
}

std::size_t TextSource::AppendUtf16(std::string_view bytes, String& text) const {
  const std::size_t low = encoding_ == Encoding::Utf16Le ? 0 : 1;
  const auto at = [&](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
  std::size_t used = 0;
  for (; used + 1 < bytes.size(); used += 2) {
    text += static_cast<char16_t>(at(used + low) | at(used + 1 - low) << 8);
  }
  return used;
}

bool HasInvalid(StringView text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!IsHighSurrogate(text[at]) && !IsLowSurrogate(text[at])) continue;
    const bool isPair =
        IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
    if (!isPair) return true;
    ++at;
  }
  return false;
}

}  // namespace ktrv::tool
