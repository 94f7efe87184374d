#include "forms/addressbook/ItemEditors.h"

#include <limits>
#include <utility>

#include "common/Error.h"

namespace ktrv::forms {
namespace {

/// The id as the contact editor's 16-bit folder id; nullopt if it does not fit.
std::optional<std::int16_t> ShortId(StringView id) {
  const auto number = ParseInteger(id);
  if (!number || *number < 0 || *number > std::numeric_limits<std::int16_t>::max()) return {};
  return static_cast<std::int16_t>(*number);
}

}  // namespace

std::optional<SavedContact> ItemEditors::NewContact(StringView folderId, ContactCompanion with) {
  const auto folder = ShortId(folderId);
  if (!folder) throw Error(ErrorNumber::Overflow, u"Overflow");
  return editors_
      .Contact(place_.Another(), {.SharedMode = TypeOfContact::SharedContact,
                                  .FolderId = *folder,
                                  .With = std::move(with)})
      .Saved;
}

void ItemEditors::EditContact(const String& contactId, StringView folderId) {
  // The folder of an existing contact does not change.
  editors_.Contact(place_.Another(), {.Mode = ModeOfOperation::Modify,
                                      .SharedMode = TypeOfContact::SharedContact,
                                      .FolderId = ShortId(folderId).value_or(0),
                                      .EditContactId = contactId});
}

GroupResult ItemEditors::NewGroup(const String& folderId) {
  GroupResult result = editors_.Group(place_.Another(), {.GroupType = TypeOfGroup::SharedGroup,
                                                         .SharedMode = TypeOfContact::SharedContact,
                                                         .FolderId = folderId});
  if (!result.Saved) result.Saved = result.Unfinished;
  return result;
}

std::optional<String> ItemEditors::EditGroup(const String& groupId, const String& name) {
  const GroupResult result =
      editors_.Group(place_.Another(), {.Mode = ModeOfOperation::Modify,
                                        .GroupType = TypeOfGroup::SharedGroup,
                                        .SharedMode = TypeOfContact::SharedContact,
                                        .GroupId = groupId,
                                        .GroupName = name});
  if (!result.Saved) return std::nullopt;
  return result.Saved->Name;
}

bool ItemEditors::NewFolder() {
  // The user can change the type by the editor's check box.
  return editors_.Folder(place_.Another(), {.FolderType = TypeOfFolder::SharedFolder})
      .Saved.has_value();
}

void ItemEditors::EditFolder(const String& folderId, TypeOfFolder type) {
  editors_.Folder(place_.Another(), {ModeOfOperation::Modify, type, folderId});
}

}  // namespace ktrv::forms
