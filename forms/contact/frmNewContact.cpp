#include "forms/contact/frmNewContact.h"

#include <algorithm>
#include <utility>

#include "common/Global.h"
#include "data/EditorQueries.h"
#include "forms/Messages.h"

namespace ktrv::forms {
namespace {

/// Context texts of error records. Log readers match them literally, including irregularities.
namespace Context {
constexpr StringView kFormLoad =
    u"KTRVAddressBook: Error occured. Sub : Form_Load, Module: frmNewContact";
constexpr StringView kSave =
    u"KTRVAddressBook:  Error occured. Sub : cmdSave_Click, Module: frmNewContact()";
}  // namespace Context

controls::Form::Design DialogDesign() {
  return {
      .Caption = u"New Contact", .Width = ContactLayout::kWidth, .Height = ContactLayout::kHeight};
}

Error NotLoaded() {
  return Error(ErrorNumber::NoCurrentRecord,
               u"The contact could not be loaded, so it is not saved either.");
}

/// The row with the contact's present values, which a trigger may have changed.
database::NewRow WithValuesOf(const database::Recordset& contact, database::NewRow row) {
  for (auto& [column, value] : row.Values) value = contact.Field(column);
  return row;
}

}  // namespace

frmNewContact::frmNewContact(Workplace place, ContactRequest request)
    : Form(place.Services.Screen, DialogDesign()),
      FolderId(request.FolderId),
      place_(std::move(place)),
      request_(std::move(request)),
      fields_({.Texts = {{{txtFname, u"FName"},
                          {txtMname, u"MName"},
                          {txtLname, u"LName"},
                          {txtCountryCode, u"CountryCode"},
                          {txtMobileno, u"Mobileno"},
                          {txtOfficePhone, u"OfficePhone"},
                          {txtHomePhone, u"HomePhone"},
                          {txtFax, u"Fax"},
                          {txtEmail, u"Email"},
                          {txtOrganisation, u"Organisation"},
                          {txtAddress, u"Address"},
                          {txtCity, u"City"},
                          {txtState, u"State"},
                          {txtCountry, u"Country"},
                          {txtZip, u"Zip"}}},
               .Age = txtAge,
               .Sex = cboSex,
               .Birthday = dtBirthday,
               .Anniversary = dtAnniversary,
               .Hobby = txtHobby}),
      contactId_(Trim(request_.EditContactId)) {
  for (const StringView sex : {u"", u"Male", u"Female"}) cboSex.AddItem(String(sex));
  for (controls::TextBox* box : {&txtAge, &txtMobileno}) {
    box->KeyPress = [this](std::int16_t& code) { FilterDigits(code); };
    box->Insertion = [](String& text) { text = Global::PastedNumber(text).value_or(String()); };
  }
  UpDnLast.AccessibleName = lblAge.Caption();
  ExplainBoxes();
  CompleteBoxes();
  txtMobileno.GotFocus = [this, explain = txtMobileno.GotFocus] {
    explain();
    txtMobileno_GotFocus();
  };
  cmdSave.Click = [this] { cmdSave_Click(); };
  cmdCancel.Click = [this] { cmdCancel_Click(); };
}

frmNewContact::~frmNewContact() {
  Unload();
}

void frmNewContact::Form_Load() {
  held_.clear();
  inDoubt_.clear();
  loadFailed_ = false;
  showsFailure_ = false;
  const Wait wait(*this);
  place_.Services.Trap(Context::kFormLoad, [&] {
    if (place_.User.IsAtServer()) {
      EnableControls(true);
      cmdSave.SetVisible(true);
      cmdSave.SetEnabled(true);
      chkContacts.SetVisible(true);
      chkContacts.SetChecked(true);
      chkContacts.SetEnabled(false);
    }
    if (request_.Mode == ModeOfOperation::Add) PresentNew();
    if (request_.Mode == ModeOfOperation::Modify && !request_.EditContactId.empty())
      PresentExisting();
  });
  if (loadFailed_) {
    ShowFailure(u"The contact could not be loaded, so it cannot be saved. Please open it again.");
  }
  txtFname.SetFocus();
}

void frmNewContact::PresentNew() {
  txtFname.SetText({});
  if (request_.SharedMode == TypeOfContact::SharedContact) {
    chkContacts.SetChecked(true);
    chkContacts.SetEnabled(false);
    SetCaption(u"Add Shared Contact");
  }
  txtFname.SetText(txtFname.Fitting(request_.PresetContactName));
  // The country prefix is part of the mobile number; the box of the country code stays empty.
  if (Trim(request_.PresetMobileNo).empty()) request_.PresetMobileNo = u"91";
  txtMobileno.SetText(txtMobileno.Fitting(request_.PresetMobileNo));
  cboSex.SetListIndex(0);
}

void frmNewContact::PresentExisting() {
  // A local contact keeps the caption "New Contact".
  if (request_.SharedMode == TypeOfContact::SharedContact) {
    chkContacts.SetChecked(true);
    SetCaption(u"Edit Shared Contact");
  }
  chkContacts.SetEnabled(false);
  Populate_Data();
}

void frmNewContact::Populate_Data() {
  if (contactId_.empty()) return;
  loadFailed_ = true;  // until all is shown
  database::Recordset contact(place_.Database.Environment);
  contact.Open(data::ContactQueries::ById(contactId_), place_.Database.ConnectionString);
  if (!contact.EndOfFile()) {
    const std::vector<Error> failures = fields_.Show(contact, FolderId);
    held_.push_back(fields_.Current());
    for (const Error& failure : failures) {
      place_.Services.Trap(Context::kFormLoad, [&] { throw failure; });
    }
  }
  loadFailed_ = false;
}

void frmNewContact::EnableControls(bool enable) {
  for (controls::Control* control : Controls()) {
    // Disabled boxes keep the colour of enabled ones.
    if (auto* box = dynamic_cast<controls::TextBox*>(control)) {
      box->SetBackColor(controls::kSystemWindowBackground);
    } else if (auto* list = dynamic_cast<controls::ComboBox*>(control)) {
      list->SetBackColor(controls::kSystemWindowBackground);
    } else {
      continue;
    }
    control->SetEnabled(enable);
  }
  dtBirthday.SetEnabled(enable);
  dtAnniversary.SetEnabled(enable);
  cmdSave.SetEnabled(enable);
  Frame1.SetEnabled(enable);
}

std::int16_t frmNewContact::Validate_Data() {
  const auto refusal = data::ContactRefusalOf(
      txtFname.Text(), txtMobileno.Text(), txtEmail.Text(), [&](StringView email) {
        return Global::ValidateEmail(place_.Services.Logger, place_.Services.LogFilePath, email);
      });
  if (!refusal) return 1;
  place_.Services.ShowMessage(refusal->Message, MessageStyle::Exclamation);
  const bool isName = refusal->Field == Text::FirstName;
  (isName ? txtFname : refusal->Field == Text::Email ? txtEmail : txtMobileno).SetFocus();
  return 0;
}

bool frmNewContact::Save_Data() {
  const bool isNew = request_.Mode == ModeOfOperation::Add;
  // Saving boxes that never showed the contact would erase it.
  if (!isNew && held_.empty()) throw NotLoaded();
  database::Connection connection(place_.Database.Environment);
  connection.Open(place_.Database.ConnectionString);
  database::Recordset contact(place_.Database.Environment);
  contact.Location = database::CursorLocation::Client;
  contact.Open(isNew ? String(data::ContactQueries::kNone) : data::ContactQueries::ById(contactId_),
               connection,
               {.Cursor = database::CursorType::Dynamic, .Lock = database::LockType::Optimistic});
  // A contact that was deleted holds nothing of an earlier save.
  if (!isNew && contact.EndOfFile()) ForgetSince(0);
  // From here on the contact is a shared one, however the editor was opened.
  request_.SharedMode = TypeOfContact::SharedContact;
  try {
    database::Transaction transaction(connection);
    isNew ? Insert(connection, contact, transaction) : Change(contact, {}, transaction);
  } catch (const ContactRefused& refused) {
    if (refused.Message.empty()) {
      ShowNotSaved();
    } else {
      place_.Services.ShowMessage(refused.Message, MessageStyle::Exclamation);
    }
    return false;
  }
  const String id = ToText(contact.Field(u"ID"));
  request_.EditContactId = contactId_.empty() ? id : contactId_;
  saved_ = Summary(id);
  return true;
}

void frmNewContact::Change(database::Recordset& contact, database::NewRow row,
                           database::Transaction& transaction) {
  const std::size_t before = inDoubt_.size();
  try {
    fields_.Write(held_, request_.Mode == ModeOfOperation::Add, contact);
    Remember(WithValuesOf(contact, std::move(row)));
    contact.Update();
    contact.Resync();
    inDoubt_.back() = WithValuesOf(contact, inDoubt_.back());
    transaction.Commit();
  } catch (...) {
    if (transaction.RollBack()) ForgetSince(before);
    throw;
  }
}

void frmNewContact::Insert(database::Connection& connection, database::Recordset& contact,
                           database::Transaction& transaction) {
  const auto storeCompanion = [&] {
    if (request_.With.Store) request_.With.Store(connection, ToText(contact.Field(u"ID")));
  };
  // Before all else, because it may lock what the later statements read.
  const auto refusal = CheckCompanion(connection);
  if (auto stored = FindStored(contact)) {
    if (!refusal) storeCompanion();
    Change(contact, std::move(*stored), transaction);
    return;
  }
  held_.clear();
  inDoubt_.clear();
  if (refusal) throw *refusal;
  CheckFolder(connection);
  contact.AddNew();
  contact.SetField(u"FOLDER_ID", std::int64_t{FolderId});
  fields_.Write({}, true, contact);
  try {
    contact.Update();
    contact.Resync();  // fetches the columns that the database has filled
    // If the outcome is unknown, the next OK must find this row instead of inserting it again.
    Remember(WithValuesOf(contact, contact.AddedRow()));
    storeCompanion();
    transaction.Commit();
  } catch (...) {
    if (transaction.RollBack()) {
      ForgetSince(0);
    } else if (inDoubt_.empty()) {
      Remember(contact.AddedRow());
    }
    throw;
  }
}

std::optional<ContactRefused> frmNewContact::CheckCompanion(
    database::Connection& connection) const {
  try {
    if (request_.With.Check) request_.With.Check(connection);
  } catch (const ContactRefused& refused) {
    if (refused.Message.empty()) throw;  // the check has failed
    return refused;
  }
  return std::nullopt;
}

std::optional<database::NewRow> frmNewContact::FindStored(database::Recordset& contact) const {
  for (std::size_t save = inDoubt_.size(); save-- > 0;) {
    database::NewRow row = inDoubt_[save];
    // An earlier contact with equal values must not be changed.
    if (!row.IsCertain() && held_[save] != Entered()) continue;
    if (!contact.FindAdded(row)) continue;
    if (row.IsCertain()) row.Key = ToText(contact.Field(u"ID"));
    return row;
  }
  return std::nullopt;
}

ContactFields::Entries frmNewContact::Entered() const {
  ContactFields::Entries entries = fields_.Current();
  // A new contact without a birthday is stored without its anniversary.
  if (request_.Mode == ModeOfOperation::Add && !entries.Birthday) entries.Anniversary.reset();
  return entries;
}

void frmNewContact::Remember(database::NewRow row) {
  ContactFields::Entries entries = Entered();
  held_.reserve(held_.size() + 1);
  inDoubt_.push_back(std::move(row));
  held_.push_back(std::move(entries));  // cannot fail, so both or neither
}

void frmNewContact::ForgetSince(std::size_t count) {
  for (; inDoubt_.size() > count; inDoubt_.pop_back()) held_.pop_back();
}

void frmNewContact::CheckFolder(database::Connection& connection) const {
  if (FolderId == 0) return;  // the main folder
  database::Recordset folder(place_.Database.Environment);
  folder.Open(data::EditorQueries::FolderType(ToDecimal(FolderId)), connection);
  if (!folder.EndOfFile()) return;
  throw ContactRefused{String(Messages::kPlaceIsGone)};
}

SavedContact frmNewContact::Summary(const String& id) const {
  return {.Id = id,
          .Name = txtFname.Text() + u" " + txtMname.Text() + u" " + txtLname.Text(),
          .Mobile = String(LTrim(txtCountryCode.Text() + u" ")) + txtMobileno.Text(),
          .Email = txtEmail.Text(),
          .Address = txtAddress.Text(),
          .Organisation = txtOrganisation.Text()};
}

void frmNewContact::cmdSave_Click() {
  if (!loadFailed_) ShowFailure({});
  const bool isComplete = place_.Services.Trap(Context::kSave, false, [&] {
    if (loadFailed_) throw NotLoaded();  // empty boxes are not the user's mistake then
    if (Validate_Data() != 1) return true;
    const Wait wait(*this);
    // A statement that still reads may hold up the one that writes.
    for (StoredValues* values : {&companies_, &cities_, &states_, &countries_}) values->Cancel();
    if (Save_Data()) Unload();
    return true;
  });
  if (!isComplete && !loadFailed_) ShowNotSaved();
}

void frmNewContact::cmdCancel_Click() {
  Unload();  // without a saved contact
}

void frmNewContact::Explain(controls::Control& control, StringView hint) {
  control.GotFocus = [this, hint = String(hint)] {
    if (!showsFailure_) lblNotice.SetCaption(hint);
  };
  control.LostFocus = [this] {
    if (!showsFailure_) lblNotice.SetCaption({});
  };
}

void frmNewContact::ExplainBoxes() {
  for (controls::Control* control : Controls()) {
    if (const auto* box = dynamic_cast<controls::TextBox*>(control)) {
      Explain(*control, u"Up to " + ToDecimal(box->MaxLength()) + u" characters.");
    }
  }
  Explain(txtFname, u"Required, up to 50 characters.");
  Explain(txtMobileno, u"Required, up to 20 digits, with the country prefix.");
  Explain(txtCountryCode, u"Up to 10 characters; is put before the mobile number.");
  Explain(txtEmail, u"Up to 50 characters, for example name@example.com.");
  Explain(txtAge, u"Up to 3 digits.");
  Explain(dtBirthday, u"Tick the box to enter a date.");
  Explain(dtAnniversary, u"Tick the box to enter a date. It is stored only with a birthday.");
}

void frmNewContact::CompleteBoxes() {
  const auto complete = [](controls::TextBox& box, StoredValues& values) {
    box.Completion = [&box, &values](StringView typed) {
      return values.Completing(typed, box.MaxLength());
    };
  };
  complete(txtOrganisation, companies_);
  complete(txtCity, cities_);
  complete(txtState, states_);
  complete(txtCountry, countries_);
}

void frmNewContact::ShowFailure(StringView reason) {
  showsFailure_ = !reason.empty();
  lblNotice.SetCaption(String(reason));
}

void frmNewContact::ShowNotSaved() {
  ShowFailure(
      inDoubt_.empty()
          ? u"The contact was not saved. The log says why."
          : u"It is unknown whether the contact was saved; see the log. OK looks for it first.");
}

void frmNewContact::txtMobileno_GotFocus() {
  if (txtMobileno.Text().empty()) return;
  txtMobileno.Select(static_cast<int>(txtMobileno.Text().size()), 0);
}

void frmNewContact::FilterDigits(std::int16_t& code) {
  constexpr bool kRefuse = true;
  const bool accepted =
      Global::KeyFilterNumeric(code, kRefuse, kRefuse, [&] { return Display().ClipboardText(); });
  if (!accepted) code = 0;
}

}  // namespace ktrv::forms
