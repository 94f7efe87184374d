#pragma once

#include <functional>

#include "controls/FlexGrid.h"
#include "forms/contact/ContactRequest.h"
#include "forms/groups/GroupCommands.h"
#include "services/Services.h"

namespace ktrv::forms {

struct ContactRow;

/// Opens contacts, and groups offered as recipients, over the group dialog, and keeps the rows of
/// both lists as they are in the database afterwards. All throw Error.
class ContactOpening {
 public:
  /// Shows the contact editor modally.
  using Editor = std::function<ContactResult(const ContactRequest& request)>;
  /// Shows the properties of a group modally. \return whether contacts were opened over them
  using GroupProperties = std::function<bool(const String& groupId, const String& groupName)>;

  /// Where the dialog works, and of which type its contacts are.
  struct Kind {
    TypeOfGroup Groups;
    TypeOfContact Contacts;  ///< with local groups; with shared ones all are shared
  };
  /// All must outlive this.
  ContactOpening(Services& services, GroupCommands& commands, controls::FlexGrid& list,
                 controls::FlexGrid& picked, Kind kind);

  Editor OpenEditor;
  GroupProperties OpenGroup;
  /// Contacts were opened over the properties of a group: the list no longer shows all as it is.
  std::function<void()> ListIsStale;

  /// Whether a contact was made or opened: other lists may show it as it was.
  bool HasOpenedContacts() const { return hasOpenedContacts_; }
  /// Of the contacts that are opened here.
  TypeOfContact SharedMode() const {
    return IsShared() ? TypeOfContact::SharedContact : kind_.Contacts;
  }

  /// Lets the user make a contact in the folder and appends it to the list. In a remote folder, and
  /// in one that is gone, none can be made, which the user is told.
  void New(std::int32_t folderId);
  /// Shows the item of the list's current row.
  void Properties();

 private:
  bool CanHold(std::int32_t folderId);
  ContactResult Show(const ContactRequest& request);
  bool IsShared() const { return kind_.Groups == TypeOfGroup::SharedGroup; }
  void EditContact(int row);
  void ShowGroup(const String& groupId, const String& groupName);
  /// Writes the row's texts where it is listed, in both lists.
  void WriteRow(const ContactRow& contact);
  /// Reads the contact's texts. \return whether there is such a contact.
  bool Read(const String& contactId, ContactRow& contact);

  Services& services_;
  GroupCommands& commands_;
  controls::FlexGrid& list_;
  controls::FlexGrid& picked_;
  Kind kind_;
  bool hasOpenedContacts_ = false;
};

}  // namespace ktrv::forms
