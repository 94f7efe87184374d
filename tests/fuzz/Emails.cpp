#include "common/Global.h"
#include "tests/fuzz/Input.h"
#include "tests/native/common/RecordingSystem.h"

namespace ktrv::fuzz {
namespace {

/// The rules one by one; positions count from 1.
bool IsValid(const String& address) {
  const auto mid = [&](std::size_t from, std::size_t count) {
    return from > address.size() ? String() : address.substr(from - 1, count);
  };
  const std::size_t n = address.size();
  std::size_t ats = 0;
  std::size_t a = 0;
  std::size_t d = 0;
  for (std::size_t i = 1; i <= n; ++i) {
    const char16_t unit = address[i - 1];
    if (unit == u'@' && ++ats == 2) return false;
    if (unit == u'@') a = i;
    if (unit == u'.' && d == 0) d = i;
  }
  if (a == 0 || d == 0) return false;
  if (mid(d, std::to_string(d).size() + 1) == u"..") return false;
  return mid(n, 1) != u"." && mid(1, 1) != u"@" && mid(a, 2) != u"@." && mid(d, 2) != u".@";
}

void Try(Input input) {
  // Fills up to the limit of the counter, and to positions of two digits: few inputs are so long.
  const std::size_t more = input.Byte();
  constexpr std::size_t kMost = 32767;
  String address = input.Text();
  const std::size_t filling = more < 0xF0 ? more % 0x20 : kMost - 8 + more % 0x10;
  if (address.size() < filling) address.insert(0, filling - address.size(), u'x');
  tests::RecordingSystem system;
  Logger logger(system, {});
  const bool valid = Global::ValidateEmail(logger, u"log", address);
  Demand(valid == (address.size() <= kMost && IsValid(address)), "the address is judged rightly");
  Demand(system.Appends.size() == (address.size() > kMost ? 1U : 0U),
         "only what is too long is recorded");
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
