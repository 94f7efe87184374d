#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "common/Text.h"

namespace ktrv::fuzz {

/// Reads the input of the fuzzer from its start. Behind its end come zeros and empty texts.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  bool AtEnd() const { return rest_.empty(); }
  std::uint8_t Byte();
  /// 0 to most, both included.
  std::size_t Number(std::size_t most);
  template <class Value>
  Value Raw() {
    Value value{};
    for (std::size_t at = 0; at < sizeof value; ++at) {
      reinterpret_cast<std::uint8_t*>(&value)[at] = Byte();
    }
    return value;
  }
  /// Up to the next line feed, which is taken too.
  String Line();
  /// The rest.
  String Text();
  std::string_view Bytes() { return std::exchange(rest_, {}); }

 private:
  std::string_view rest_;
};

/// Aborts unless it holds, which the fuzzer reports as a failure of the input.
void Demand(bool holds, const char* what);
void DemandEqual(StringView left, StringView right, const char* what);

}  // namespace ktrv::fuzz
