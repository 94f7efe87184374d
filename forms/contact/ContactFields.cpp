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

/// The columns that are written as typed, in the order in which they are read and written.
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

/// Null gives an empty box, a number its decimal text.
void ShowText(const database::Recordset& row, StringView column, controls::TextBox& box) {
  box.SetText(ToText(row.Field(column)));
}

/// Old drivers of SQL Server give a date as a text.
DateTime DateOf(const Variant& value) {
  if (const auto* date = std::get_if<DateTime>(&value)) return *date;
  if (const auto* text = std::get_if<String>(&value)) {
    if (const auto date = ParseDateTime(Trim(*text))) return *date;
  }
  throw TypeMismatch();
}

/// Null leaves the picker as it was.
void ShowDate(const database::Recordset& row, StringView column, controls::DatePicker& picker) {
  const Variant value = row.Field(column);
  if (!IsNull(value)) picker.SetValue(DateOf(value));
}

std::int16_t FolderIdOf(const Variant& value) {
  using Limits = std::numeric_limits<std::int16_t>;
  const std::int64_t id = ToInteger(value);
  if (id < Limits::min() || id > Limits::max()) throw Error(ErrorNumber::Overflow, u"Overflow");
  return static_cast<std::int16_t>(id);
}

/// The index of the sex list's item for a stored letter; the letters count as capitals only.
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

Variant ValueOf(const controls::DatePicker& picker) {
  return picker.Value() ? Variant(*picker.Value()) : Variant(Null{});
}

}  // namespace

void Show(const database::Recordset& row, frmNewContact& dialog) {
  for (const TextColumn& column : kTextColumns) {
    ShowText(row, column.Name, dialog.*column.Box);
    if (&column == &kTextColumns.front()) {
      dialog.FolderId = FolderIdOf(row.Field(u"FOLDER_ID"));
    }
  }
  ShowText(row, u"AGE", dialog.txtAge);
  dialog.cboSex.SetListIndex(SexIndexOf(ToText(Global::NullToDefault(row.Field(u"Sex"), u""))));
  ShowDate(row, u"BIRTHDAY", dialog.dtBirthday);
  ShowDate(row, u"ANNIVERSARY", dialog.dtAnniversary);
  ShowText(row, u"HOBBY", dialog.txtHobby);
}

void Write(const frmNewContact& dialog, database::Recordset& row) {
  for (const TextColumn& column : kTextColumns) {
    row.SetField(column.Name, (dialog.*column.Box).Text());
  }
  // An empty box leaves the age that the row has.
  if (const StringView age = Trim(dialog.txtAge.Text()); !age.empty()) {
    const auto number = ParseNumber(age);
    if (!number) throw TypeMismatch();
    row.SetField(u"Age", *number);
  }
  row.SetField(u"Sex", SexOf(dialog.cboSex.Text()));
  // The anniversary goes with the birthday: without one it is left alone, and with one an
  // anniversary that was taken away is taken away from the row.
  if (dialog.dtBirthday.Value()) {
    row.SetField(u"Birthday", ValueOf(dialog.dtBirthday));
    row.SetField(u"Anniversary", ValueOf(dialog.dtAnniversary));
  }
  row.SetField(u"Hobby", dialog.txtHobby.Text());
}

}  // namespace ktrv::forms::ContactFields
