#include "common/TextIndex.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <stdexcept>
#include <utility>

namespace ktrv {

std::optional<std::size_t> TextIndex::Find(StringView text, std::size_t guess) const {
  if (guess < Count() && At(guess) == text) return guess;
  if (slots_.empty()) return std::nullopt;
  const std::uint32_t number = slots_[Place(text, HashOf(text))].Number;
  return number == kFree ? std::nullopt : std::optional<std::size_t>(number);
}

bool TextIndex::Add(StringView text) {
  if (Contains(text)) return false;
  Reserve(Count() + 1);
  const std::uint32_t hash = HashOf(text);
  const std::size_t place = Place(text, hash);
  texts_.resize(ends_.empty() ? 0 : ends_.back());  // an Add that failed may have left its text
  if (text.size() > kMost - texts_.size()) throw std::length_error("TextIndex");
  texts_ += text;
  ends_.push_back(static_cast<std::uint32_t>(texts_.size()));
  slots_[place] = {hash, static_cast<std::uint32_t>(Count() - 1)};
  return true;
}

void TextIndex::Reserve(std::size_t count) {
  constexpr std::size_t kFewest = 16;
  // Load factor of at most 2/3, so that probe sequences stay short.
  const std::size_t slots = std::bit_ceil(std::max(count + count / 2, kFewest));
  if (slots > slots_.size()) Spread(slots);
}

void TextIndex::Clear() {
  *this = TextIndex();
}

std::uint32_t TextIndex::HashOf(StringView text) {
  return static_cast<std::uint32_t>(std::hash<StringView>()(text));
}

StringView TextIndex::At(std::size_t number) const {
  const std::size_t begin = number == 0 ? 0 : ends_[number - 1];
  return StringView(texts_).substr(begin, ends_[number] - begin);
}

std::size_t TextIndex::Place(StringView text, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t place = hash & mask;; place = (place + 1) & mask) {
    const Slot& slot = slots_[place];
    if (slot.Number == kFree || (slot.Hash == hash && At(slot.Number) == text)) return place;
  }
}

void TextIndex::Spread(std::size_t slots) {
  const std::vector<Slot> former = std::exchange(slots_, std::vector<Slot>(slots));
  const std::size_t mask = slots - 1;
  for (const Slot& slot : former) {
    if (slot.Number == kFree) continue;
    std::size_t place = slot.Hash & mask;
    while (slots_[place].Number != kFree) place = (place + 1) & mask;
    slots_[place] = slot;
  }
}

}  // namespace ktrv
