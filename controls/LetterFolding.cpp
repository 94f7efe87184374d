#include "controls/LetterFolding.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "controls/Language.h"

namespace ktrv::controls {
namespace {

/// Inclusive range of UTF-16 units.
struct Units {
  char16_t First;
  char16_t Last;
};

constexpr Units kSeparators[] = {
    {0x00, 0x2F}, {0x3A, 0x40}, {0x5B, 0x60}, {0x7B, 0xA9},     {0xAB, 0xB4},     {0xB6, 0xB9},
    {0xBB, 0xBF}, {0xD7, 0xD7}, {0xF7, 0xF7}, {0x2000, 0x206F}, {0x3000, 0x3003}, {0xFF08, 0xFF0F}};
// Combining marks, soft hyphen, joiners and marks of direction.
constexpr Units kIgnoredUnits[] = {{0xAD, 0xAD},     {0x300, 0x36F},   {0x1AB0, 0x1AFF},
                                   {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x202A, 0x202E},
                                   {0x2060, 0x2069}, {0x20D0, 0x20FF}, {0xFEFF, 0xFEFF}};
// Latin, Greek and Cyrillic letters. In other scripts marks distinguish words.
constexpr Units kAccented[] = {{0xC0, 0x24F}, {0x370, 0x52F}, {0x1E00, 0x1FFF}};

}  // namespace

LetterFolding::LetterFolding(const Language& language) : folded_(0x10000, u'\0') {
  for (std::size_t unit = 0; unit < folded_.size(); ++unit) {
    folded_[unit] = static_cast<char16_t>(unit);
  }
  language.ToUpper(folded_);
  // Surrogates have no case alone, but the table contains the pair DBFF DC00, which ToUpper may
  // change.
  for (char16_t unit = 0xD800; unit < 0xE000; ++unit) folded_[unit] = unit;
  for (const Units& units : kAccented) MergeAccents(language, units.First, units.Last);
  const auto set = [this](const Units& units, char16_t folded) {
    std::fill(folded_.begin() + units.First, folded_.begin() + units.Last + 1, folded);
  };
  for (const Units& units : kSeparators) set(units, u' ');
  for (const Units& units : kIgnoredUnits) set(units, kIgnored);
}

void LetterFolding::MergeAccents(const Language& language, char16_t first, char16_t last) {
  std::unordered_map<std::string, char16_t> letters;
  const auto keyOf = [&](char16_t unit) {
    std::string key;
    language.AppendSearchKey(StringView(&unit, 1), key);
    return key;
  };
  for (char16_t letter = u'A'; letter <= u'Z'; ++letter) letters.emplace(keyOf(letter), letter);
  letters.erase(std::string());
  for (char16_t unit = first; unit <= last; ++unit) {
    std::string key = keyOf(unit);
    if (key.empty()) continue;
    // The first letter with a key represents the others.
    folded_[unit] = letters.emplace(std::move(key), folded_[unit]).first->second;
  }
}

void LetterFolding::FoldInto(StringView text, String& folded) const {
  folded.clear();
  for (const char16_t each : text) {
    const char16_t unit = Fold(each);
    if (unit == kIgnored) continue;
    if (unit == u' ' && (folded.empty() || folded.back() == u' ')) continue;
    folded += unit;
  }
  if (!folded.empty() && folded.back() == u' ') folded.pop_back();
}

String LetterFolding::Folded(StringView text) const {
  String folded;
  FoldInto(text, folded);
  return folded;
}

}  // namespace ktrv::controls
