#include "forms/contact/frmNewContact.h"

#include "common/Global.h"
#include "data/ContactQueries.h"
#include "data/EditorQueries.h"
#include "database/Transaction.h"

namespace ktrv::forms {
namespace {

/// Context texts of error records. Log readers match them literally, irregular as they are.
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

}  // namespace

frmNewContact::frmNewContact(Session& session)
    : Form(session.Screen, DialogDesign()), session_(session) {
  for (const StringView sex : {u"", u"Male", u"Female"}) cboSex.AddItem(String(sex));
  for (controls::TextBox* box : {&txtAge, &txtMobileno}) {
    box->KeyPress = [this](std::int16_t& code) { FilterDigits(code); };
    box->Insertion = [](String& text) { text = Global::PastedNumber(text).value_or(String()); };
  }
  txtMobileno.GotFocus = [this] { txtMobileno_GotFocus(); };
  cmdSave.Click = [this] { cmdSave_Click(); };
  cmdCancel.Click = [this] { cmdCancel_Click(); };
}

frmNewContact::~frmNewContact() {
  Unload();
}

void frmNewContact::Form_Load() {
  contactId_ = Trim(session_.EditContactId);
  shown_.reset();
  inDoubt_.reset();
  loadFailed_ = false;
  session_.Trap(Context::kFormLoad, [&] {
    if (session_.IsAtServer()) {
      EnableControls(true);
      cmdSave.SetVisible(true);
      cmdSave.SetEnabled(true);
      chkContacts.SetVisible(true);
      chkContacts.SetChecked(true);
      chkContacts.SetEnabled(false);
    }
    if (Mode == ModeOfOperation::Add) PresentNew();
    if (Mode == ModeOfOperation::Modify && !session_.EditContactId.empty()) PresentExisting();
  });
}

void frmNewContact::Form_QueryUnload() {
  if (saved_) return;
  session_.SavedContactId.clear();
  session_.SavedContactName.clear();
  session_.SavedContactMobile.clear();
  session_.SavedContactEmail.clear();
  session_.SavedContactAddress.clear();
  session_.SavedContactOrganisation.clear();
}

void frmNewContact::PresentNew() {
  txtFname.SetText({});
  if (Is(session_.SharedMode, TypeOfContact::SharedContact)) {
    chkContacts.SetChecked(true);
    chkContacts.SetEnabled(false);
    SetCaption(u"Add Shared Contact");
  }
  txtFname.SetText(txtFname.Fitting(session_.PresetContactName));
  // The country prefix stands in the mobile number's box; the country code's box stays empty.
  if (Trim(session_.PresetMobileNo).empty()) session_.PresetMobileNo = u"91";
  txtMobileno.SetText(txtMobileno.Fitting(session_.PresetMobileNo));
  cboSex.SetListIndex(0);
}

void frmNewContact::PresentExisting() {
  // A local contact keeps the caption of a new one.
  if (Is(session_.SharedMode, TypeOfContact::SharedContact)) {
    chkContacts.SetChecked(true);
    SetCaption(u"Edit Shared Contact");
  }
  chkContacts.SetEnabled(false);
  Populate_Data();
}

void frmNewContact::Populate_Data() {
  if (contactId_.empty()) return;
  loadFailed_ = true;  // unless all of it is done
  database::Recordset contact(session_.Environment);
  contact.Open(data::ContactQueries::ById(contactId_), session_.SessionConnectionString);
  if (!contact.EndOfFile()) {
    const std::vector<Error> failures = ContactFields::Show(contact, *this);
    shown_ = ContactFields::EntriesOf(*this);
    for (const Error& failure : failures) {
      session_.Trap(Context::kFormLoad, [&] { throw failure; });
    }
  }
  loadFailed_ = false;
}

void frmNewContact::EnableControls(bool enable) {
  for (controls::Control* control : Controls()) {
    // Boxes that are switched off keep the colour of those that are on.
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
  const auto refuse = [&](StringView message, controls::TextBox& box) {
    session_.ShowMessage(message, MessageStyle::Exclamation);
    box.SetFocus();
    return std::int16_t{0};
  };
  if (Trim(txtFname.Text()).empty()) return refuse(u"Please enter the First Name.", txtFname);
  if (Trim(txtMobileno.Text()).empty()) {
    return refuse(u"Please enter the Mobile No.", txtMobileno);
  }
  // Any other number will do, the prefix alone included.
  if (LeadingNumber(txtMobileno.Text()) == 0) {
    return refuse(u"Enter a proper Mobile No.", txtMobileno);
  }
  const String& email = txtEmail.Text();
  if (!Trim(email).empty() &&
      !Global::ValidateEmail(session_.Logger, session_.LogFilePath, email)) {
    return refuse(u"Enter a valid Email Id", txtEmail);
  }
  return 1;
}

bool frmNewContact::Save_Data() {
  const bool isNew = Mode == ModeOfOperation::Add;
  // Boxes that never showed the contact would erase it.
  if (!isNew && !shown_) throw NotLoaded();
  database::Connection connection(session_.Environment);
  connection.Open(session_.SessionConnectionString);
  database::Recordset contact(session_.Environment);
  contact.Location = database::CursorLocation::Client;
  contact.Open(isNew ? String(data::ContactQueries::kNone) : data::ContactQueries::ById(contactId_),
               connection,
               {.Cursor = database::CursorType::Dynamic, .Lock = database::LockType::Optimistic});
  // Whatever was opened, the session works on shared contacts until the host's next call.
  session_.SharedMode = static_cast<std::int32_t>(TypeOfContact::SharedContact);
  try {
    isNew ? Insert(connection, contact) : Change(contact, *shown_);
  } catch (const Refused& refused) {
    if (!refused.Message.empty()) {
      session_.ShowMessage(refused.Message, MessageStyle::Exclamation);
    }
    return false;
  }
  const String id = ToText(contact.Field(u"ID"));
  session_.EditContactId = contactId_.empty() ? id : contactId_;
  SetResults(id);
  return true;
}

void frmNewContact::Change(database::Recordset& contact, const ContactFields::Entries& before) {
  ContactFields::Write(*this, &before, contact);
  contact.Update();
  contact.Resync();
}

void frmNewContact::Insert(database::Connection& connection, database::Recordset& contact) {
  const auto storeCompanion = [&] {
    if (With.Store) With.Store(connection, ToText(contact.Field(u"ID")));
  };
  database::Transaction transaction(connection);
  if (inDoubt_) {
    if (contact.FindAdded(inDoubt_->Row)) {
      // Changed last: with other values it would not be found again if this fails.
      storeCompanion();
      Change(contact, inDoubt_->Written);
      transaction.Commit();
      return;
    }
    inDoubt_.reset();
  }
  CheckFolder(connection);
  if (With.Check) With.Check(connection);
  contact.AddNew();
  contact.SetField(u"FOLDER_ID", std::int64_t{FolderId});
  ContactFields::Write(*this, nullptr, contact);
  const ContactFields::Entries entries = ContactFields::EntriesOf(*this);
  // Until the dialog is closed nothing of it is shown as saved, so the next OK must not store it a
  // second time.
  const auto remember = [&] { inDoubt_ = {contact.AddedRow(), entries}; };
  try {
    contact.Update();
    contact.Resync();  // brings what the database filled in
    storeCompanion();
    remember();
    transaction.Commit();
  } catch (...) {
    transaction.RollBack() ? inDoubt_.reset() : remember();
    throw;
  }
}

void frmNewContact::CheckFolder(database::Connection& connection) const {
  if (FolderId == 0) return;  // outside any folder
  database::Recordset folder(session_.Environment);
  folder.Open(data::EditorQueries::FolderType(ToDecimal(FolderId)), connection);
  if (!folder.EndOfFile()) return;
  throw Refused{
      u"The selected folder or group does not exist any more. Please select another one."};
}

void frmNewContact::SetResults(const String& id) {
  session_.SavedContactId = id;
  session_.SavedContactName = txtFname.Text() + u" " + txtMname.Text() + u" " + txtLname.Text();
  session_.SavedContactMobile = String(LTrim(txtCountryCode.Text() + u" ")) + txtMobileno.Text();
  session_.SavedContactEmail = txtEmail.Text();
  session_.SavedContactAddress = txtAddress.Text();
  session_.SavedContactOrganisation = txtOrganisation.Text();
}

void frmNewContact::cmdSave_Click() {
  session_.Trap(Context::kSave, [&] {
    if (loadFailed_) throw NotLoaded();  // what is missing in the boxes is not the user's omission
    if (Validate_Data() != 1) return;
    if (!Save_Data()) return;
    saved_ = true;
    Unload();
  });
}

void frmNewContact::cmdCancel_Click() {
  Unload();  // which leaves no contact behind
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
