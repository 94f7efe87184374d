#include "forms/groups/PastedText.h"

#include <algorithm>
#include <unordered_set>

#include "controls/SoughtNumber.h"
#include "forms/groups/ContactRow.h"
#include "forms/groups/JobProgress.h"

namespace ktrv::forms {
namespace {

constexpr StringView kBetweenFields = u"\r\n;\t";
constexpr StringView kBlanks = u" \u00A0";

StringView WithoutBlanks(StringView text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// The digits without leading zeros, which depend on where the number is dialled.
String NumberKey(StringView number) {
  String digits = controls::SoughtNumber::DigitsOf(number);
  digits.erase(0, std::min(digits.find_first_not_of(u'0'), digits.size()));
  return digits;
}

void Note(std::unordered_map<String, std::vector<int>>& index, const String& key, int row) {
  // So many rows of one name are not told apart.
  constexpr std::size_t kMost = 1000;
  const auto found = index.find(key);
  if (found == index.end() || found->second.size() == kMost) return;
  if (found->second.empty() || found->second.back() != row) found->second.push_back(row);
}

}  // namespace

PastedText::PastedText(StringView text, const controls::Language& language) : folding_(language) {
  int record = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(kBetweenFields), text.size());
    Add(WithoutBlanks(text.substr(0, end)), record);
    if (end < text.size() && text[end] != u'\t') ++record;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

void PastedText::Add(StringView text, int record) {
  if (text.empty()) return;
  const controls::SoughtNumber number(text);
  const Rows* byNumber = number.IsEmpty() ? nullptr : &numbers_[String(number.Digits())];
  fields_.push_back({String(text), record, &names_[NameKey(text)], byNumber});
}

String PastedText::NameKey(StringView name) const {
  String key;
  for (const char16_t unit : WithoutBlanks(name)) {
    const bool isBlank = kBlanks.find(unit) != StringView::npos;
    if (!isBlank) {
      key += folding_.Fold(unit);
    } else if (key.back() != u' ') {
      key += u' ';
    }
  }
  return key;
}

void PastedText::LookAt(controls::FlexGrid& list, JobProgress& progress) {
  for (Index* index : {&names_, &numbers_}) {
    for (auto& [key, rows] : *index) rows.clear();
  }
  const ContactColumns columns(list);
  for (int row = 1; row < list.Rows(); ++row) {
    progress.Advance();
    const ContactRow contact = columns.Read(row);
    Note(names_, NameKey(contact.Name), row);
    const String number = NumberKey(contact.MobileNo);
    if (number.empty()) continue;
    Note(numbers_, number, row);
    Note(numbers_, NumberKey(contact.CountryCode) + number, row);
  }
}

int PastedText::RowOf(std::size_t field) const {
  const Rows& rows = fields_[field].Found();
  if (rows.size() == 1) return rows.front();
  // A record with name and number means the one who has both.
  const auto isMeantToo = [&](int row) {
    const auto has = [&](std::size_t other) {
      return other != field && fields_[other].Record == fields_[field].Record &&
             std::binary_search(fields_[other].Found().begin(), fields_[other].Found().end(), row);
    };
    constexpr std::size_t kNear = 5;
    const std::size_t end = std::min(field + kNear, fields_.size());
    for (std::size_t other = field - std::min(field, kNear); other < end; ++other) {
      if (has(other)) return true;
    }
    return false;
  };
  int meant = 0;
  for (const int row : rows) {
    if (!isMeantToo(row)) continue;
    if (meant > 0) return 0;
    meant = row;
  }
  return meant;
}

PastedText::Found PastedText::FindIn(controls::FlexGrid& list, JobProgress& progress) {
  LookAt(list, progress);
  Found found;
  std::unordered_set<int> taken;
  std::unordered_set<StringView> told;
  for (std::size_t field = 0; field < fields_.size(); ++field) {
    const String& text = fields_[field].Text;
    if (fields_[field].Found().empty()) {
      if (told.insert(text).second) found.Missing.push_back(text);
    } else if (const int row = RowOf(field); row == 0) {
      if (told.insert(text).second) found.Several.push_back(text);
    } else if (taken.insert(row).second) {
      found.Rows.push_back(row);
    }
  }
  return found;
}

}  // namespace ktrv::forms
