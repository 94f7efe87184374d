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

ContactOpening::ContactOpening(Session& session, GroupCommands& commands, controls::FlexGrid& list)
    : session_(session), commands_(commands), list_(list) {}

void ContactOpening::New(std::int32_t folderId) {
  session_.EditContactId.clear();
  // What a host preset for a contact of its own is no start for this one.
  session_.PresetContactName.clear();
  session_.PresetMobileNo.clear();
  MarkShared();
  OpenEditor(ModeOfOperation::Add, ToFolderId(folderId));
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
    OpenGroup(group.Id, group.Name);
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
  OpenEditor(ModeOfOperation::Modify, 0);  // the editor reads the folder from the contact's row
  ContactRow contact;
  if (!Read(id, contact)) return;
  // Rows may have come and gone while the editor was open.
  const int now = columns.Find(ContactKind::Contact, id);
  if (now > 0) columns.Write(now, contact);
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
