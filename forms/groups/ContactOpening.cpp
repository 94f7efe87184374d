#include "forms/groups/ContactOpening.h"

#include <limits>
#include <utility>

#include "forms/Messages.h"
#include "forms/groups/ContactRow.h"

namespace ktrv::forms {
namespace {

std::int16_t ToFolderId(std::int32_t id) {
  if (id < 0 || id > std::numeric_limits<std::int16_t>::max()) {
    throw Error(ErrorNumber::Overflow, u"Overflow");
  }
  return static_cast<std::int16_t>(id);
}

}  // namespace

ContactOpening::ContactOpening(Services& services, GroupCommands& commands,
                               controls::FlexGrid& list, controls::FlexGrid& picked, Kind kind)
    : services_(services), commands_(commands), list_(list), picked_(picked), kind_(kind) {}

bool ContactOpening::CanHold(std::int32_t folderId) {
  constexpr std::int32_t kNoFolder = 0;
  if (folderId == kNoFolder) return true;
  const auto folder = commands_.Execute(GroupCommand::Folder, {ToDecimal(folderId)});
  StringView refusal;
  if (folder.EndOfFile()) {
    refusal = Messages::kPlaceIsGone;
  } else if (Trim(ToText(folder.Field(u"TYPE"))) == u"R") {
    refusal = Messages::kNoRemoteContactHere;
  } else {
    return true;
  }
  services_.ShowMessage(refusal, MessageStyle::Exclamation);
  return false;
}

ContactResult ContactOpening::Show(const ContactRequest& request) {
  hasOpenedContacts_ = true;
  ContactResult result = OpenEditor(request);
  kind_.Contacts = result.SharedMode;
  return result;
}

void ContactOpening::New(std::int32_t folderId) {
  if (!CanHold(folderId)) return;
  const auto made = Show({.SharedMode = SharedMode(), .FolderId = ToFolderId(folderId)});
  ContactRow contact;
  if (made.EditContactId.empty() || !IsShared() || !Read(made.EditContactId, contact)) return;
  ContactColumns(list_).Add(std::move(contact));
  ContactColumns::ShowNoOrder(list_);
  list_.SetRow(list_.Rows() - 1);
  list_.ShowRow(list_.Row());
}

void ContactOpening::Properties() {
  const int row = list_.ChosenRow();
  if (row < 1) return;
  const ContactColumns columns(list_);
  const double kind = LeadingNumber(list_.Text(row, columns.Kind()));
  if (kind == 3) {
    services_.ShowMessage(u"Cannot show properties of Shared Remote Contacts from here.",
                          MessageStyle::Exclamation);
  } else if (kind == 2) {
    const ContactRow group = columns.Read(row);
    ShowGroup(group.Id, group.Name);
  } else if (kind == 1) {
    EditContact(row);
  }
}

void ContactOpening::EditContact(int row) {
  const String id = ContactColumns(list_).Read(row).Id;
  Show({.Mode = ModeOfOperation::Modify, .SharedMode = SharedMode(), .EditContactId = id});
  edited_.push_back(id);
  WriteContact(id);
}

void ContactOpening::WriteContact(const String& id) {
  ContactRow contact;
  if (Read(id, contact)) WriteRow(contact);
}

void ContactOpening::ShowGroup(const String& groupId, const String& groupName) {
  const GroupResult result = OpenGroup(groupId, groupName);
  // All of them first: a failing query below must not hide one from who opened this dialog.
  edited_.insert(edited_.end(), result.EditedContacts.begin(), result.EditedContacts.end());
  for (const String& id : result.EditedContacts) WriteContact(id);
  const auto group = commands_.Execute(GroupCommand::Group, {groupId});
  if (!group.EndOfFile()) {
    ContactRow row;
    row.Id = groupId;
    row.Name = ToText(group.Field(u"NAME"));
    row.Kind = ContactKind::Group;
    WriteRow(row);
  }
  if (result.HasOpenedContacts) ListIsStale();
}

void ContactOpening::WriteRow(const ContactRow& contact) {
  // Rows may have changed while the editor was open. Picked rows are updated too, because messages
  // are sent to them.
  for (controls::FlexGrid* grid : {&list_, &picked_}) {
    if (ContactColumns(*grid).Write(contact)) ContactColumns::ShowNoOrder(*grid);
  }
  RowWritten(contact);
}

bool ContactOpening::Read(const String& contactId, ContactRow& contact) {
  const auto rows = commands_.Execute(GroupCommand::Contact, {contactId});
  if (rows.EndOfFile()) return false;
  contact.Id = contactId;
  contact.Name = ToText(rows.Field(u"FNAME"));
  contact.MobileNo = ToText(rows.Field(u"MOBILENO"));
  contact.CountryCode = ToText(rows.Field(u"COUNTRYCODE"));
  contact.MobileDisplay = MobileDisplayOf(contact.CountryCode, contact.MobileNo);
  contact.Kind = ContactKind::Contact;
  return true;
}

}  // namespace ktrv::forms
