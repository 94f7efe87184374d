#include "tool/program/windows/ConsoleText.h"

#include <algorithm>

#include "common/Text.h"

namespace ktrv::tool {
namespace {

bool IsConsoleHandle(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0;
}

/// The bytes before an incomplete character at the end.
std::size_t WholeCharacters(std::string_view text) {
  constexpr std::size_t kLongest = 4;
  for (std::size_t back = 1; back <= std::min(kLongest - 1, text.size()); ++back) {
    const auto byte = static_cast<unsigned char>(text[text.size() - back]);
    if (byte < 0x80) break;
    if (byte < 0xC0) continue;
    const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
    return length > back ? text.size() - back : text.size();
  }
  return text.size();
}

}  // namespace

OutputText::OutputText(DWORD standardHandle)
    : handle_(GetStdHandle(standardHandle)), isConsole_(IsConsoleHandle(handle_)) {
  setp(buffer_.data(), buffer_.data() + buffer_.size());
}

OutputText::int_type OutputText::overflow(int_type unit) {
  if (sync() != 0) return traits_type::eof();
  if (!traits_type::eq_int_type(unit, traits_type::eof())) {
    *pptr() = traits_type::to_char_type(unit);
    pbump(1);
  }
  return traits_type::not_eof(unit);
}

int OutputText::sync() {
  const auto size = static_cast<std::size_t>(pptr() - pbase());
  const std::size_t whole = isConsole_ ? WholeCharacters({pbase(), size}) : size;
  const bool written = isConsole_ ? WriteToConsole({pbase(), whole}) : Write(pbase(), whole);
  std::copy(pbase() + whole, pptr(), pbase());
  setp(buffer_.data(), buffer_.data() + buffer_.size());
  pbump(static_cast<int>(size - whole));
  return written ? 0 : -1;
}

bool OutputText::Write(const char* bytes, std::size_t size) const {
  while (size > 0) {
    DWORD written = 0;
    if (!WriteFile(handle_, bytes, static_cast<DWORD>(size), &written, nullptr)) return false;
    bytes += written;
    size -= written;
  }
  return true;
}

bool OutputText::WriteToConsole(std::string_view text) const {
  const String wide = FromUtf8(text);
  // Older systems refuse long writes.
  constexpr std::size_t kMost = 8192;
  for (std::size_t at = 0; at < wide.size();) {
    const auto units = static_cast<DWORD>(std::min(kMost, wide.size() - at));
    DWORD written = 0;
    if (!WriteConsoleW(handle_, wide.data() + at, units, &written, nullptr) || written == 0) {
      return false;
    }
    at += written;
  }
  return true;
}

InputText::InputText()
    : handle_(GetStdHandle(STD_INPUT_HANDLE)), isConsole_(IsConsoleHandle(handle_)) {}

InputText::int_type InputText::underflow() {
  constexpr DWORD kUnits = 4096;
  DWORD read = 0;
  if (isConsole_) {
    std::array<char16_t, kUnits> units{};
    if (!ReadConsoleW(handle_, units.data(), kUnits, &read, nullptr)) read = 0;
    text_ = ToUtf8(StringView(units.data(), read));
  } else {
    text_.resize(kUnits);
    if (!ReadFile(handle_, text_.data(), kUnits, &read, nullptr)) read = 0;
    text_.resize(read);
  }
  setg(text_.data(), text_.data(), text_.data() + text_.size());
  return text_.empty() ? traits_type::eof() : traits_type::to_int_type(text_.front());
}

}  // namespace ktrv::tool
