#include "forms/groups/StoredGroup.h"

namespace ktrv::forms {
namespace {

/// FNV-1a, followed by the finalizer of splitmix64, so that sums do not cancel out.
std::uint64_t Fingerprint(std::uint64_t start, StringView id, StringView type) {
  std::uint64_t hash = start;
  const auto take = [&](char16_t unit) { hash = (hash ^ unit) * 0x00000100000001B3; };
  for (const char16_t unit : id) take(unit);
  take(u'\0');
  for (const char16_t unit : type) take(unit);
  hash = (hash ^ (hash >> 30)) * 0xBF58476D1CE4E5B9;
  hash = (hash ^ (hash >> 27)) * 0x94D049BB133111EB;
  return hash ^ (hash >> 31);
}

}  // namespace

void Memberships::Add(StringView id, StringView type) {
  ++count_;
  sums_[0] += Fingerprint(0xCBF29CE484222325, id, type);  // FNV's offset basis
  sums_[1] += Fingerprint(0x9E3779B97F4A7C15, id, type);
}

}  // namespace ktrv::forms
