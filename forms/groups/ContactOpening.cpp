#include "forms/groups/ContactOpening.h"

#include <limits>
#include <utility>

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

ContactOpening::ContactOpening(Session& session, GroupCommands& commands, controls::FlexGrid& list,
                               controls::FlexGrid& picked)
    : session_(session), commands_(commands), list_(list), picked_(picked) {}

bool ContactOpening::CanHold(std::int32_t folderId) {
  constexpr std::int32_t kNoFolder = 0;
  if (folderId == kNoFolder) return true;
  const auto folder = commands_.Execute(GroupCommand::Folder, {ToDecimal(folderId)});
  StringView refusal;
  if (folder.EndOfFile()) {
    refusal = u"The selected folder or group does not exist any more. Please select another one.";
  } else if (ToText(folder.Field(u"TYPE")) == u"R") {
    refusal =
        u"Cannot create Shared Remote Contact here. Such contacts can be created from TALVERO "
        u"only.";
  } else {
    return true;
  }
  session_.ShowMessage(refusal, MessageStyle::Exclamation);
  return false;
}

void ContactOpening::Show(ModeOfOperation mode, std::int16_t folderId) {
  hasOpenedContacts_ = true;
  OpenEditor(mode, folderId);
}

void ContactOpening::New(std::int32_t folderId) {
  if (!CanHold(folderId)) return;
  session_.EditContactId.clear();
  // What a host preset for a contact of its own is no start for this one.
  session_.PresetContactName.clear();
  session_.PresetMobileNo.clear();
  MarkShared();
  Show(ModeOfOperation::Add, ToFolderId(folderId));
  if (session_.EditContactId.empty() || !Is(session_.GroupType, TypeOfGroup::SharedGroup)) return;
  ContactRow contact;
  if (!Read(session_.EditContactId, contact)) return;
  ContactColumns(list_).Add(std::move(contact));
}

void ContactOpening::Properties() {
  const int row = list_.Row();
  if (row < 1) return;
  const ContactColumns columns(list_);
  const double kind = LeadingNumber(list_.Text(row, columns.Kind()));
  if (kind == 3) {
    session_.ShowMessage(u"Cannot show properties of Shared Remote Contacts from here.",
                         MessageStyle::Exclamation);
  } else if (kind == 2) {
    const ContactRow group = columns.Read(row);
    ShowGroup(group.Id, group.Name);
  } else if (kind == 1) {
    EditContact(row);
  }
}

void ContactOpening::MarkShared() {
  if (!Is(session_.GroupType, TypeOfGroup::SharedGroup)) return;
  session_.SharedMode = static_cast<std::int32_t>(TypeOfContact::SharedContact);
}

void ContactOpening::EditContact(int row) {
  const ContactColumns columns(list_);
  const String id = columns.Read(row).Id;
  session_.EditContactId = id;
  MarkShared();
  Show(ModeOfOperation::Modify, 0);  // the editor reads the folder from the contact's row
  ContactRow contact;
  if (!Read(id, contact)) return;
  WriteRow(contact);
}

void ContactOpening::ShowGroup(const String& groupId, const String& groupName) {
  const bool contactsWereOpened = OpenGroup(groupId, groupName);
  const auto group = commands_.Execute(GroupCommand::Group, {groupId});
  if (!group.EndOfFile()) {
    ContactRow row;
    row.Id = groupId;
    row.Name = ToText(group.Field(u"NAME"));
    row.Kind = ContactKind::Group;
    WriteRow(row);
  }
  if (!contactsWereOpened) return;
  hasOpenedContacts_ = true;
  ListIsStale();
}

void ContactOpening::WriteRow(const ContactRow& contact) {
  // Rows may have come and gone while the editor was open. Those picked already are what is sent
  // to.
  for (controls::FlexGrid* grid : {&list_, &picked_}) {
    const ContactColumns columns(*grid);
    const int row = columns.Find(contact.Kind, contact.Id);
    if (row > 0) columns.Write(row, contact);
  }
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
