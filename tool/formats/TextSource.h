#pragma once

#include <istream>
#include <string>

#include "tool/formats/Encoding.h"

namespace ktrv::tool {

/// The text of a stream, in parts. A byte that is invalid in the encoding becomes an unpaired
/// surrogate, kInvalid plus the byte, so that HasInvalid finds it.
class TextSource {
 public:
  /// \param bytes must outlive the object. \param encoding a byte order mark overrides it
  TextSource(std::istream& bytes, Encoding encoding);

  /// Replaces the text by the next part. \return false at the end, and if the stream cannot be read
  bool Next(String& text);

  static constexpr char16_t kInvalid = 0xDC00;

 private:
  std::size_t AppendUtf8(std::string_view bytes, String& text) const;
  std::size_t AppendUtf16(std::string_view bytes, String& text) const;
  /// \return the bytes used; the others are the start of a character that is cut off
  std::size_t Append(std::string_view bytes, String& text) const;

  std::istream& stream_;
  Encoding encoding_;
  std::string bytes_;  ///< read and not used yet
  bool started_ = false;
};

/// Whether the text has an unpaired surrogate, as TextSource gives for invalid bytes.
bool HasInvalid(StringView text);

}  // namespace ktrv::tool
