#include "forms/groups/PastedText.h"

#include <algorithm>
#include <unordered_set>

#include "controls/SoughtNumber.h"
#include "forms/groups/ContactRow.h"
#include "forms/groups/JobProgress.h"

namespace ktrv::forms {
namespace {

using controls::SoughtNumber;

constexpr StringView kBetweenFields = u"\r\n;\t";
constexpr StringView kBlanks = u" \u00A0";

StringView WithoutBlanks(StringView text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsInternational(StringView number) {
  const StringView start = number.substr(0, number.find_first_of(u"123456789"));
  return start.find(u'+') != StringView::npos || start.find(u"00") != StringView::npos;
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
  const SoughtNumber number(text);
  Index& numbers = IsInternational(text) ? internationalNumbers_ : numbers_;
  const Rows* byNumber = number.IsEmpty() ? nullptr : &numbers[String(number.Digits())];
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
  for (Index* index : {&names_, &numbers_, &internationalNumbers_}) {
    for (auto& [key, rows] : *index) rows.clear();
  }
  const ContactColumns columns(list);
  for (int row = 1; row < list.Rows(); ++row) {
    progress.Advance();
    const ContactRow contact = columns.Read(row);
    Note(names_, NameKey(contact.Name), row);
    const String number = SoughtNumber::SignificantDigitsOf(contact.MobileNo);
    if (number.empty()) continue;
    const String withCountry = SoughtNumber::SignificantDigitsOf(contact.CountryCode) + number;
    Note(numbers_, number, row);
    Note(numbers_, withCountry, row);
    // 49 1234 in another country is not +49 1234.
    Note(internationalNumbers_, withCountry, row);
  }
}

std::optional<bool> PastedText::HasOther(std::size_t field, int row) const {
  constexpr std::size_t kNear = 5;
  const std::size_t end = std::min(field + kNear, fields_.size());
  std::optional<bool> has;
  for (std::size_t other = field - std::min(field, kNear); other < end; ++other) {
    const Field& each = fields_[other];
    if (each.Record != fields_[field].Record || each.IsNumber() == fields_[field].IsNumber() ||
        each.Found().empty()) {
      continue;
    }
    has = has.value_or(false) || std::binary_search(each.Found().begin(), each.Found().end(), row);
  }
  return has;
}

void PastedText::Find(std::size_t field, Found& found) const {
  const Field& sought = fields_[field];
  const Rows& rows = sought.Found();
  if (rows.empty()) {
    found.Missing.push_back(sought.Text);
    return;
  }
  Rows meant = rows;
  // A record with name and number means the one who has both.
  if (HasOther(field, rows.front())) {
    std::erase_if(meant, [&](int row) { return !*HasOther(field, row); });
  }
  if (meant.size() == 1) {
    found.Rows.push_back(meant.front());
  } else if (meant.empty()) {
    found.Differing.push_back(sought.Text);
  } else {
    found.Several.push_back(sought.Text);
  }
}

PastedText::Found PastedText::FindIn(controls::FlexGrid& list, JobProgress& progress) {
  LookAt(list, progress);
  Found found;
  for (std::size_t field = 0; field < fields_.size(); ++field) Find(field, found);
  const auto keepFirst = [](auto& values) {
    std::unordered_set<typename std::decay_t<decltype(values)>::value_type> known;
    std::erase_if(values, [&](const auto& each) { return !known.insert(each).second; });
  };
  keepFirst(found.Rows);
  keepFirst(found.Missing);
  keepFirst(found.Several);
  keepFirst(found.Differing);
  return found;
}

}  // namespace ktrv::forms
