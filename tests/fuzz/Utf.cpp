#include <optional>
#include <string>
#include <unicode/ustring.h>

#include "common/Surrogates.h"
#include "tests/fuzz/Input.h"

namespace ktrv::fuzz {
namespace {

bool HasLoneSurrogate(StringView text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (IsLowSurrogate(text[at])) return true;
    if (!IsHighSurrogate(text[at])) continue;
    if (++at == text.size() || !IsLowSurrogate(text[at])) return true;
  }
  return false;
}

/// ICU's conversion; nothing if the bytes are not valid.
std::optional<String> Other(std::string_view bytes) {
  String text(bytes.size() + 1, u'\0');
  int32_t length = 0;
  UErrorCode error = U_ZERO_ERROR;
  u_strFromUTF8(text.data(), static_cast<int32_t>(text.size()), &length, bytes.data(),
                static_cast<int32_t>(bytes.size()), &error);
  if (U_FAILURE(error)) return std::nullopt;
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string Other(StringView text) {
  std::string bytes(text.size() * 3 + 1, '\0');
  int32_t length = 0;
  constexpr UChar32 kReplacement = 0xFFFD;
  UErrorCode error = U_ZERO_ERROR;
  u_strToUTF8WithSub(bytes.data(), static_cast<int32_t>(bytes.size()), &length, text.data(),
                     static_cast<int32_t>(text.size()), kReplacement, nullptr, &error);
  Demand(U_SUCCESS(error) != 0, "every text has bytes");
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

void TryBytes(std::string_view bytes) {
  const String text = FromUtf8(bytes);
  Demand(!HasLoneSurrogate(text), "bytes give whole characters");
  Demand(text.size() <= bytes.size(), "no byte gives more than a unit");
  if (const auto other = Other(bytes)) {
    DemandEqual(text, *other, "valid bytes mean what they mean elsewhere");
    Demand(ToUtf8(text) == bytes, "valid bytes come back");
  } else {
    Demand(text.find(u'\xFFFD') != String::npos, "what is not valid is to be seen");
  }
  Demand(FromUtf8(ToUtf8(text)) == text, "a text comes back");
}

void TryUnits(StringView text) {
  const std::string bytes = ToUtf8(text);
  Demand(bytes == Other(text), "a text has the same bytes elsewhere");
  Demand(!HasLoneSurrogate(text) == (FromUtf8(bytes) == text), "only whole characters come back");
}

void Try(Input input) {
  Input copy = input;
  TryBytes(input.Bytes());
  String units;
  while (!copy.AtEnd()) units += copy.Raw<char16_t>();
  TryUnits(units);
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
