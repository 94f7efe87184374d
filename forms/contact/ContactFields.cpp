#include "forms/contact/ContactFields.h"

#include <array>
#include <limits>

#include "common/Global.h"
#include "forms/contact/frmNewContact.h"

namespace ktrv::forms::ContactFields {
namespace {

struct TextColumn {
  controls::TextBox frmNewContact::*Box;
  StringView Name;
};

/// The columns that are stored as typed, in the order of reading and writing.
constexpr std::array<TextColumn, 15> kTextColumns{{
    {&frmNewContact::txtFname, u"FName"},
    {&frmNewContact::txtMname, u"MName"},
    {&frmNewContact::txtLname, u"LName"},
    {&frmNewContact::txtCountryCode, u"CountryCode"},
    {&frmNewContact::txtMobileno, u"Mobileno"},
    {&frmNewContact::txtOfficePhone, u"OfficePhone"},
    {&frmNewContact::txtHomePhone, u"HomePhone"},
    {&frmNewContact::txtFax, u"Fax"},
    {&frmNewContact::txtEmail, u"Email"},
    {&frmNewContact::txtOrganisation, u"Organisation"},
    {&frmNewContact::txtAddress, u"Address"},
    {&frmNewContact::txtCity, u"City"},
    {&frmNewContact::txtState, u"State"},
    {&frmNewContact::txtCountry, u"Country"},
    {&frmNewContact::txtZip, u"Zip"},
}};

Error TypeMismatch() {
  return Error(ErrorNumber::TypeMismatch, u"Type mismatch");
}

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
    failures.push_back(TypeMismatch());
  }
}

void ShowFolder(const database::Recordset& row, frmNewContact& dialog) {
  using Limits = std::numeric_limits<std::int16_t>;
  const Variant value = row.Field(u"FOLDER_ID");
  const auto* id = std::get_if<std::int64_t>(&value);
  if (id && *id >= Limits::min() && *id <= Limits::max()) {
    dialog.FolderId = static_cast<std::int16_t>(*id);
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

Entries EntriesOf(const frmNewContact& dialog) {
  Entries entries;
  for (std::size_t index = 0; index < kTextColumns.size(); ++index) {
    entries.Texts[index] = (dialog.*kTextColumns[index].Box).Text();
  }
  entries.Age = dialog.txtAge.Text();
  entries.Sex = dialog.cboSex.ListIndex();
  entries.Birthday = dialog.dtBirthday.Value();
  entries.Anniversary = dialog.dtAnniversary.Value();
  entries.Hobby = dialog.txtHobby.Text();
  return entries;
}

std::vector<Error> Show(const database::Recordset& row, frmNewContact& dialog) {
  std::vector<Error> failures;
  for (const TextColumn& column : kTextColumns) {
    ShowText(row, column.Name, dialog.*column.Box);
    if (&column == &kTextColumns.front()) ShowFolder(row, dialog);
  }
  ShowText(row, u"AGE", dialog.txtAge);
  dialog.cboSex.SetListIndex(SexIndexOf(ToText(Global::NullToDefault(row.Field(u"Sex"), u""))));
  ShowDate(row, u"BIRTHDAY", dialog.dtBirthday, failures);
  ShowDate(row, u"ANNIVERSARY", dialog.dtAnniversary, failures);
  ShowText(row, u"HOBBY", dialog.txtHobby);
  return failures;
}

void Write(const frmNewContact& dialog, const Entries* before, database::Recordset& row) {
  const Entries now = EntriesOf(dialog);
  const auto changed = [&](auto member) { return !before || now.*member != before->*member; };
  for (std::size_t index = 0; index < kTextColumns.size(); ++index) {
    if (before && now.Texts[index] == before->Texts[index]) continue;
    row.SetField(kTextColumns[index].Name, now.Texts[index]);
  }
  // An empty box keeps the stored age.
  if (const StringView age = Trim(now.Age); !age.empty() && changed(&Entries::Age)) {
    const auto number = ParseNumber(age);
    if (!number) throw TypeMismatch();
    row.SetField(u"Age", *number);
  }
  if (changed(&Entries::Sex)) row.SetField(u"Sex", SexOf(dialog.cboSex.Text()));
  // The anniversary is written only together with a birthday. Then a cleared anniversary is cleared
  // in the row too.
  if (now.Birthday) {
    if (changed(&Entries::Birthday)) row.SetField(u"Birthday", ValueOf(now.Birthday));
    if (changed(&Entries::Anniversary)) row.SetField(u"Anniversary", ValueOf(now.Anniversary));
  }
  if (changed(&Entries::Hobby)) row.SetField(u"Hobby", now.Hobby);
}

}  // namespace ktrv::forms::ContactFields
