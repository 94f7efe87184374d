#include "forms/groups/PastedText.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <unordered_set>
#include <utility>

#include "controls/SoughtNumber.h"
#include "forms/groups/ContactRow.h"
#include "forms/groups/JobProgress.h"

namespace ktrv::forms {
namespace {

using controls::SoughtNumber;

constexpr StringView kLineEnds = u"\r\n";
constexpr StringView kBlanks = u" \u00A0";

StringView WithoutBlanks(StringView text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

struct CopiedColumns {
  std::size_t Name;
  std::size_t Number;
};
/// Where names and numbers are, if the line has the headings of the address book's list.
std::optional<CopiedColumns> ColumnsOf(StringView line) {
  std::optional<std::size_t> name;
  std::optional<std::size_t> number;
  for (std::size_t column = 0;; ++column) {
    const std::size_t end = std::min(line.find(u'\t'), line.size());
    const StringView heading = WithoutBlanks(line.substr(0, end));
    if (heading == u"Name") name = column;
    if (heading == u"Mobile No") number = column;
    if (end == line.size()) break;
    line.remove_prefix(end + 1);
  }
  if (!name || !number) return std::nullopt;
  return CopiedColumns{*name, *number};
}

bool IsInternational(StringView number) {
  const StringView start = number.substr(0, number.find_first_of(u"123456789"));
  return start.find(u'+') != StringView::npos || start.find(u"00") != StringView::npos;
}

}  // namespace

PastedText::PastedText(StringView text, const controls::Language& language) : folding_(language) {
  const std::optional<CopiedColumns> copied =
      ColumnsOf(text.substr(0, text.find_first_of(kLineEnds)));
  if (copied) text.remove_prefix(std::min(text.find_first_of(kLineEnds), text.size()));
  const String separators = String(kLineEnds) + (copied ? u"\t" : u"\t;");
  std::size_t column = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(separators), text.size());
    const bool counts = !copied || column == copied->Name || column == copied->Number;
    const bool isLast = end == text.size() || text[end] != u'\t';
    column = isLast ? 0 : column + 1;
    const StringView field = counts ? WithoutBlanks(text.substr(0, end)) : StringView();
    if (!field.empty()) {
      const SoughtNumber number(field);
      Index& numbers = IsInternational(field) ? internationalNumbers_ : numbers_;
      const auto [name, isNew] = names_.try_emplace(NameKey(field));
      name->second.Text = name->first;
      records_.back().push_back({String(field), &name->second,
                                 number.IsEmpty() ? nullptr : &numbers[String(number.Digits())]});
    }
    if (end < text.size() && text[end] != u'\t') records_.emplace_back();
    text.remove_prefix(std::min(end + 1, text.size()));
  }
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
  const ContactColumns columns(list);
  for (int row = 1; row < list.Rows(); ++row) {
    progress.Advance();
    const ContactRow cells = columns.Read(row);
    const auto find = [](Index& index, const String& text) {
      const auto found = index.find(text);
      return found == index.end() ? nullptr : &found->second;
    };
    Contact contact{row, cells.Kind == ContactKind::Group || !cells.MobileNo.empty(),
                    NameKey(cells.Name)};
    contact.Name = find(names_, contact.FoldedName);
    auto& numbers = contact.Numbers;
    const auto addNumber = [&](Index& index, const String& digits) {
      Key* const key = find(index, digits);
      if (!key || std::find(numbers.begin(), numbers.end(), key) != numbers.end()) return;
      *std::find(numbers.begin(), numbers.end(), nullptr) = key;
    };
    if (const String number = SoughtNumber::SignificantDigitsOf(cells.MobileNo); !number.empty()) {
      const String withCountry = SoughtNumber::SignificantDigitsOf(cells.CountryCode) + number;
      addNumber(numbers_, number);
      addNumber(numbers_, withCountry);
      // 49 1234 in another country is not +49 1234.
      addNumber(internationalNumbers_, withCountry);
    }
    if (cells.MobileNo.find_first_of(u"0123456789") != String::npos) {
      // A copied list has this one, with all zeros of "49 0170".
      addNumber(IsInternational(cells.MobileDisplay) ? internationalNumbers_ : numbers_,
                String(SoughtNumber(cells.MobileDisplay).Digits()));
    }
    Contact* noted = nullptr;
    const auto note = [&](Key* key) {
      if (!key) return;
      if (!noted) noted = &contacts_.emplace_back(contact);
      key->Having.push_back(noted);
    };
    note(contact.Name);
    for (Key* const key : numbers) note(key);
  }
}

void PastedText::CountBoth(const Record& record, const std::vector<Key*>& names,
                           const std::vector<Key*>& numbers, JobProgress& progress) {
  const auto having = [](const std::vector<Key*>& keys) {
    return std::accumulate(
        keys.begin(), keys.end(), std::size_t{},
        [](std::size_t sum, const Key* key) { return sum + key->Having.size(); });
  };
  const auto isOfRecord = [&](const Key* key) { return key && key->In == &record; };
  // One side is enough, and many may have a name or a number.
  for (const Key* key : having(names) < having(numbers) ? names : numbers) {
    for (Contact* const contact : key->Having) {
      progress.Look();
      const auto& its = contact->Numbers;
      const bool isBoth =
          isOfRecord(contact->Name) && std::any_of(its.begin(), its.end(), isOfRecord);
      if (!isBoth || std::exchange(contact->CountedIn, &record) == &record) continue;
      const auto count = [&](Key* mine) {
        if (!isOfRecord(mine)) return;
        ++mine->Both;
        mine->Row = contact->Row;
      };
      count(contact->Name);
      for (Key* const number : its) count(number);
    }
  }
}

void PastedText::CountBeginnings(const Record& record, const std::vector<Key*>& names,
                                 const std::vector<Key*>& numbers, JobProgress& progress) {
  for (Key* const number : numbers) {
    for (Contact* const contact : number->Having) {
      const StringView beginning = contact->FoldedName;
      if (beginning.empty()) continue;
      for (Key* const name : names) {
        progress.Look();
        if (!name->Having.empty()) continue;  // it is the whole name of others
        const bool isIts = name->Text.size() > beginning.size() &&
                           name->Text.starts_with(beginning) &&
                           name->Text[beginning.size()] == u' ';
        if (!isIts) continue;
        ++name->Both;
        if (std::exchange(contact->CountedIn, &record) == &record) continue;
        for (Key* const mine : contact->Numbers) {
          if (!mine || mine->In != &record) continue;
          ++mine->Both;
          mine->Row = contact->Row;
        }
      }
    }
  }
}

void PastedText::Find(Record& record, Found& found, JobProgress& progress) {
  const bool hasText =
      std::any_of(record.begin(), record.end(), [](const Field& each) { return !each.ByNumber; });
  std::vector<Key*> names;
  std::vector<Key*> numbers;
  bool isNumberFound = false;
  for (Field& field : record) {
    // Beside a text, digits are no name.
    field.IsNumber = field.ByNumber &&
                     (hasText || !field.ByNumber->Having.empty() || field.ByName->Having.empty());
    Key& key = field.Found();
    isNumberFound = isNumberFound || (field.IsNumber && !key.Having.empty());
    if (std::exchange(key.In, &record) == &record) continue;
    key.Both = 0;
    (field.IsNumber ? numbers : names).push_back(&key);
  }
  const bool isCounted = !names.empty() && isNumberFound;
  if (isCounted) {
    CountBoth(record, names, numbers, progress);
    const auto hasBoth = [](const Key* key) { return key->Both > 0; };
    if (std::none_of(numbers.begin(), numbers.end(), hasBoth)) {
      CountBeginnings(record, names, numbers, progress);
    }
  }
  for (const Field& field : record) {
    progress.Look();
    const Key& key = field.Found();
    if (key.Having.empty()) {
      if (key.Both == 0) found.Missing.push_back(field.Text);
      continue;
    }
    const Contact& first = *key.Having.front();
    std::size_t meant = isCounted ? key.Both : key.Having.size();
    if (!isCounted && meant == 1 && !names.empty() && !numbers.empty() && first.HasNumber) {
      meant = 0;  // nobody has the number, and this one has another
    }
    if (meant == 1) {
      found.Rows.push_back(isCounted ? key.Row : first.Row);
    } else {
      (meant == 0 ? found.Differing : found.Several).push_back(field.Text);
    }
  }
}

PastedText::Found PastedText::FindIn(controls::FlexGrid& list, JobProgress& progress) {
  LookAt(list, progress);
  Found found;
  for (Record& record : records_) Find(record, found, progress);
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
