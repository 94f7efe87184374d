#include "controls/SortKeys.h"

#include <algorithm>
#include <string_view>

#include "controls/Language.h"

namespace ktrv::controls {
namespace {

/// The first bytes of a key as an integer. Most comparisons need nothing else.
constexpr std::size_t kHeadSize = 8;

struct Entry {
  std::uint64_t Head = 0;
  std::uint32_t Place = 0;
};

std::uint64_t HeadOf(std::string_view key) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < kHeadSize; ++i) {
    head = (head << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return head;
}

std::string_view TailOf(std::string_view key) {
  return key.substr(std::min(key.size(), kHeadSize));
}

}  // namespace

SortKeys::SortKeys(const Language& language, std::size_t count) : language_(language) {
  ends_.reserve(count);
}

void SortKeys::Add(StringView text) {
  language_.AppendSortKey(text, keys_);
  ends_.push_back(keys_.size());
}

std::string_view SortKeys::KeyAt(std::uint32_t place) const {
  const std::size_t start = place == 0 ? 0 : ends_[place - 1];
  return std::string_view(keys_).substr(start, ends_[place] - start);
}

std::vector<std::uint32_t> SortKeys::Order(bool ascending) const {
  std::vector<Entry> entries(ends_.size());
  for (std::uint32_t place = 0; place < entries.size(); ++place) {
    entries[place] = {HeadOf(KeyAt(place)), place};
  }
  std::sort(entries.begin(), entries.end(), [&](const Entry& left, const Entry& right) {
    if (left.Head != right.Head) return ascending == (left.Head < right.Head);
    const int order = TailOf(KeyAt(left.Place)).compare(TailOf(KeyAt(right.Place)));
    if (order != 0) return ascending == (order < 0);
    return left.Place < right.Place;
  });
  std::vector<std::uint32_t> places(entries.size());
  std::transform(entries.begin(), entries.end(), places.begin(),
                 [](const Entry& entry) { return entry.Place; });
  return places;
}

}  // namespace ktrv::controls
