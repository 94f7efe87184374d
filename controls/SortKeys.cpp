#include "controls/SortKeys.h"

#include <algorithm>
#include <utility>

#include "controls/Language.h"

namespace ktrv::controls {
namespace {

constexpr std::size_t kHeadSize = 8;
constexpr std::size_t kFirstRun = 2048;
constexpr std::size_t kMergedAtOnce = 8192;

std::uint64_t HeadOf(std::string_view key) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < kHeadSize; ++i) {
    head = (head << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return head;
}

}  // namespace

SortKeys::SortKeys(const Language& language, std::size_t count, bool ascending)
    : language_(language), ascending_(ascending) {
  ends_.reserve(count);
  entries_.reserve(count);
}

void SortKeys::Add(StringView text) {
  language_.AppendSortKey(text, keys_);
  ends_.push_back(keys_.size());
}

std::string_view SortKeys::KeyAt(std::uint32_t place) const {
  const std::size_t start = place == 0 ? 0 : ends_[place - 1];
  return std::string_view(keys_).substr(start, ends_[place] - start);
}

std::string_view SortKeys::TailAt(std::uint32_t place) const {
  const std::string_view key = KeyAt(place);
  return key.substr(std::min(key.size(), kHeadSize));
}

bool SortKeys::IsBefore(const Entry& left, const Entry& right) const {
  if (left.Head != right.Head) return ascending_ == (left.Head < right.Head);
  const int order = TailAt(left.Place).compare(TailAt(right.Place));
  if (order != 0) return ascending_ == (order < 0);
  return left.Place < right.Place;
}

bool SortKeys::SortOn() {
  if (run_ == 0) {
    SortRun();
  } else if (run_ < Count()) {
    MergeOn();
  }
  return run_ < Count();
}

void SortKeys::SortRun() {
  const std::size_t first = entries_.size();
  const std::size_t end = std::min(first + kFirstRun, Count());
  for (std::size_t place = first; place < end; ++place) {
    const auto index = static_cast<std::uint32_t>(place);
    entries_.push_back({HeadOf(KeyAt(index)), index});
  }
  std::sort(entries_.begin() + static_cast<std::ptrdiff_t>(first), entries_.end(),
            [this](const Entry& left, const Entry& right) { return IsBefore(left, right); });
  if (end < Count()) return;
  run_ = kFirstRun;
  if (run_ < Count()) merged_.reserve(Count());
}

void SortKeys::MergeOn() {
  const std::size_t end = std::min(merged_.size() + kMergedAtOnce, Count());
  while (merged_.size() < end) {
    const std::size_t start = merged_.size() / (2 * run_) * (2 * run_);
    const std::size_t middle = std::min(start + run_, Count());
    const std::size_t last = std::min(start + 2 * run_, Count());
    if (merged_.size() == start) {
      left_ = start;
      right_ = middle;
    }
    for (const std::size_t stop = std::min(last, end); merged_.size() < stop;) {
      const bool isRight =
          left_ == middle || (right_ < last && IsBefore(entries_[right_], entries_[left_]));
      merged_.push_back(entries_[isRight ? right_++ : left_++]);
    }
  }
  if (end < Count()) return;
  entries_.swap(merged_);
  merged_.clear();
  run_ *= 2;
}

std::vector<std::uint32_t> SortKeys::Order() const {
  std::vector<std::uint32_t> places(entries_.size());
  std::transform(entries_.begin(), entries_.end(), places.begin(),
                 [](const Entry& entry) { return entry.Place; });
  return places;
}

}  // namespace ktrv::controls
