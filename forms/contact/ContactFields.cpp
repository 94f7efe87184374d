#include "forms/contact/ContactFields.h"

#include <algorithm>
#include <limits>

#include "common/Global.h"

namespace ktrv::forms {
namespace {

/// Shows null as an empty box and a number as decimal text.
void ShowText(const database::Recordset& row, StringView column, controls::TextBox& box) {
  box.SetText(ToText(row.Field(column)));
}

/// Converts a date column. Old drivers for SQL Server return dates as text.
std::optional<DateTime> DateOf(const Variant& value) {
  if (const auto* date = std::get_if<DateTime>(&value)) return *date;
  if (const auto* text = std::get_if<String>(&value)) return ParseDateTime(Trim(*text));
  return std::nullopt;
}

/// Shows a date. Null leaves the picker unchanged; so does an invalid date, which adds a failure.
void ShowDate(const database::Recordset& row, StringView column, controls::DatePicker& picker,
              std::vector<Error>& failures) {
  const Variant value = row.Field(column);
  if (IsNull(value)) return;
  if (const auto date = DateOf(value)) {
    picker.SetValue(date);
  } else {
    failures.emplace_back(ErrorNumber::TypeMismatch);
  }
}

void ReadFolder(const database::Recordset& row, std::int16_t& folderId) {
  using Limits = std::numeric_limits<std::int16_t>;
  const Variant value = row.Field(u"FOLDER_ID");
  const auto* id = std::get_if<std::int64_t>(&value);
  if (id && *id >= Limits::min() && *id <= Limits::max()) {
    folderId = static_cast<std::int16_t>(*id);
  }
}

/// The list index for a stored letter; case-sensitive.
int SexIndexOf(StringView letter) {
  if (letter == u"F") return 2;
  if (letter == u"M") return 1;
  return 0;
}

Variant SexOf(StringView itemText) {
  const String sex = ToUpperAscii(itemText);
  if (sex == u"FEMALE") return String(u"F");
  if (sex == u"MALE") return String(u"M");
  return Null{};
}

Variant ValueOf(const std::optional<DateTime>& date) {
  return date ? Variant(*date) : Variant(Null{});
}

}  // namespace

ContactFields::Entries ContactFields::Current() const {
  Entries entries;
  for (std::size_t index = 0; index < boxes_.Texts.size(); ++index) {
    entries.Texts[index] = boxes_.Texts[index].Box.Text();
  }
  entries.Age = boxes_.Age.Text();
  entries.Sex = boxes_.Sex.ListIndex();
  entries.Birthday = boxes_.Birthday.Value();
  entries.Anniversary = boxes_.Anniversary.Value();
  entries.Hobby = boxes_.Hobby.Text();
  return entries;
}

std::vector<Error> ContactFields::Show(const database::Recordset& row, std::int16_t& folderId) {
  std::vector<Error> failures;
  for (const TextColumn& column : boxes_.Texts) {
    ShowText(row, column.Name, column.Box);
    if (&column == &boxes_.Texts.front()) ReadFolder(row, folderId);
  }
  ShowText(row, u"AGE", boxes_.Age);
  boxes_.Sex.SetListIndex(SexIndexOf(ToText(Global::NullToDefault(row.Field(u"Sex"), u""))));
  ShowDate(row, u"BIRTHDAY", boxes_.Birthday, failures);
  ShowDate(row, u"ANNIVERSARY", boxes_.Anniversary, failures);
  ShowText(row, u"HOBBY", boxes_.Hobby);
  return failures;
}

void ContactFields::Write(const std::vector<Entries>& before, bool isNew,
                          database::Recordset& row) const {
  const Entries now = Current();
  const Entries nothing;
  const Entries& shown = isNew || before.empty() ? nothing : before.front();
  const auto wasTried = [&](auto test) { return std::any_of(before.begin(), before.end(), test); };
  const auto differs = [&](auto test) { return before.empty() || wasTried(test); };
  const auto changed = [&](auto member) {
    return differs([&](const Entries& each) { return each.*member != now.*member; });
  };
  for (std::size_t index = 0; index < boxes_.Texts.size(); ++index) {
    const String& text = now.Texts[index];
    if (differs([&](const Entries& each) { return each.Texts[index] != text; })) {
      row.SetField(boxes_.Texts[index].Name, text);
    }
  }
  // An empty box keeps what is stored, unless that is what only a save of unknown outcome wrote.
  if (const StringView age = Trim(now.Age); age.empty()) {
    const bool wasShown = !Trim(shown.Age).empty();
    const auto stored = ParseNumber(Trim(ToText(row.Field(u"Age"))));
    if (!wasShown && stored &&
        wasTried([&](const Entries& each) { return ParseNumber(Trim(each.Age)) == stored; })) {
      row.SetField(u"Age", Null{});
    }
  } else if (changed(&Entries::Age)) {
    const auto number = ParseNumber(age);
    if (!number) throw Error(ErrorNumber::TypeMismatch);
    row.SetField(u"Age", *number);
  }
  if (changed(&Entries::Sex)) row.SetField(u"Sex", SexOf(boxes_.Sex.Text()));
  // The anniversary is written only together with a birthday. Then a cleared anniversary is cleared
  // in the row too.
  if (now.Birthday) {
    if (changed(&Entries::Birthday)) row.SetField(u"Birthday", ValueOf(now.Birthday));
    if (changed(&Entries::Anniversary)) row.SetField(u"Anniversary", ValueOf(now.Anniversary));
  } else if (const auto birthday = DateOf(row.Field(u"Birthday"));
             birthday && !shown.Birthday &&
             wasTried([&](const Entries& each) { return each.Birthday == birthday; })) {
    row.SetField(u"Birthday", Null{});
    const auto anniversary = DateOf(row.Field(u"Anniversary"));
    if (anniversary != shown.Anniversary && wasTried([&](const Entries& each) {
          return each.Birthday && each.Anniversary == anniversary;
        })) {
      row.SetField(u"Anniversary", ValueOf(shown.Anniversary));
    }
  }
  if (changed(&Entries::Hobby)) row.SetField(u"Hobby", now.Hobby);
}

}  // namespace ktrv::forms
