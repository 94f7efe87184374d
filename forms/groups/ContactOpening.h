#pragma once

#include <functional>

#include "component/Session.h"
#include "controls/FlexGrid.h"
#include "forms/groups/GroupCommands.h"

namespace ktrv::forms {

struct ContactRow;

/// Opens contacts, and groups offered as recipients, over the group dialog, and keeps the rows of
/// both lists as they are in the database afterwards. All throw Error.
class ContactOpening {
 public:
  /// Shows the contact editor modally for the session's EditContactId, or for a new contact of the
  /// folder.
  using Editor = std::function<void(ModeOfOperation mode, std::int16_t folderId)>;
  /// Shows the properties of a group modally. \return whether contacts were opened over them
  using GroupProperties = std::function<bool(const String& groupId, const String& groupName)>;

  /// All must outlive this.
  ContactOpening(Session& session, GroupCommands& commands, controls::FlexGrid& list,
                 controls::FlexGrid& picked);

  Editor OpenEditor;
  GroupProperties OpenGroup;
  /// Contacts were opened over the properties of a group: the list no longer shows all as it is.
  std::function<void()> ListIsStale;

  /// Whether a contact was made or opened, here or over the properties of a group: other lists may
  /// show it as it was.
  bool HasOpenedContacts() const { return hasOpenedContacts_; }

  /// Lets the user make a contact in the folder and appends it to the list. In a remote folder, and
  /// in one that is gone, none can be made, which the user is told.
  void New(std::int32_t folderId);
  /// Shows the item of the list's current row.
  void Properties();

 private:
  bool CanHold(std::int32_t folderId);
  void Show(ModeOfOperation mode, std::int16_t folderId);
  void MarkShared();
  void EditContact(int row);
  void ShowGroup(const String& groupId, const String& groupName);
  /// Writes the row's texts where it is listed, in both lists.
  void WriteRow(const ContactRow& contact);
  /// Reads the contact's texts. \return whether there is such a contact.
  bool Read(const String& contactId, ContactRow& contact);

  Session& session_;
  GroupCommands& commands_;
  controls::FlexGrid& list_;
  controls::FlexGrid& picked_;
  bool hasOpenedContacts_ = false;
};

}  // namespace ktrv::forms
