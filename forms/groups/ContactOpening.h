#pragma once

#include <functional>
#include <vector>

#include "controls/FlexGrid.h"
#include "forms/contact/ContactRequest.h"
#include "forms/groups/GroupCommands.h"
#include "forms/groups/GroupRequest.h"
#include "services/Services.h"

namespace ktrv::forms {

struct ContactRow;

/// Opens contacts and groups from the group dialog, and updates their rows in both lists
/// afterwards. All methods throw Error.
class ContactOpening {
 public:
  /// Shows the contact editor modally.
  using Editor = std::function<ContactResult(const ContactRequest& request)>;
  /// Shows the properties of a group modally.
  using GroupProperties =
      std::function<GroupResult(const String& groupId, const String& groupName)>;

  /// The type of the dialog's group and contacts.
  struct Kind {
    TypeOfGroup Groups;
    TypeOfContact Contacts;  ///< for local groups; for shared groups all contacts are shared
  };
  /// All references must outlive the object.
  ContactOpening(Services& services, GroupCommands& commands, controls::FlexGrid& list,
                 controls::FlexGrid& picked, Kind kind);

  Editor OpenEditor;
  GroupProperties OpenGroup;
  /// Raised when the rows of a contact or group got these texts.
  std::function<void(const ContactRow& contact)> RowWritten;
  /// Raised after contacts were opened from the properties of a group: the list may be out of date.
  std::function<void()> ListIsStale;

  /// Whether a contact was created or opened; other lists may be out of date then.
  bool HasOpenedContacts() const { return hasOpenedContacts_; }
  /// Ids of the contacts whose editor was opened, here or in the properties of a group.
  const std::vector<String>& EditedContacts() const { return edited_; }
  /// The type of contacts opened here.
  TypeOfContact SharedMode() const {
    return IsShared() ? TypeOfContact::SharedContact : kind_.Contacts;
  }

  /// Opens the editor for a new contact in the folder and appends the contact to the list. Shows a
  /// message instead if the folder is remote or no longer exists.
  void New(std::int32_t folderId);
  /// Opens the item of the list's current row.
  void Properties();

 private:
  bool CanHold(std::int32_t folderId);
  ContactResult Show(const ContactRequest& request);
  bool IsShared() const { return kind_.Groups == TypeOfGroup::SharedGroup; }
  void EditContact(int row);
  void ShowGroup(const String& groupId, const String& groupName);
  /// Updates the rows of a contact that may have been edited.
  void WriteContact(const String& id);
  /// Updates the item's rows in both lists.
  void WriteRow(const ContactRow& contact);
  /// Reads the contact from the database. \return whether it exists
  bool Read(const String& contactId, ContactRow& contact);

  Services& services_;
  GroupCommands& commands_;
  controls::FlexGrid& list_;
  controls::FlexGrid& picked_;
  Kind kind_;
  bool hasOpenedContacts_ = false;
  std::vector<String> edited_;
};

}  // namespace ktrv::forms
