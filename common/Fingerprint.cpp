#include "common/Fingerprint.h"

namespace ktrv {

// The finalizer of splitmix64.
std::uint64_t Mixed(std::uint64_t value) {
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
  return value ^ (value >> 31);
}

// FNV-1a, mixed so that sums of fingerprints do not cancel out.
std::uint64_t Fingerprint(StringView text, std::uint64_t start) {
  std::uint64_t hash = start;
  for (const char16_t unit : text) hash = (hash ^ unit) * 0x00000100000001B3;
  return Mixed(hash);
}

}  // namespace ktrv
