#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "common/TextCollection.h"
#include "services/Enumerations.h"

namespace ktrv::forms {

/// Arguments of the group dialog.
struct GroupRequest {
  ktrv::LoadGroupFor LoadGroupFor = ktrv::LoadGroupFor::AddModify;
  ModeOfOperation Mode = ModeOfOperation::Add;  ///< not used by the picker
  TypeOfGroup GroupType = TypeOfGroup::LocalGroup;
  /// The type of contacts opened from a dialog for local groups.
  TypeOfContact SharedMode = TypeOfContact::LocalContact;
  String FolderId = u"0";     ///< decimal id of a new group's folder
  String GroupId = {};        ///< decimal id of the group to modify
  String GroupName = {};      ///< its name, as known to the opener
  bool ExpandGroups = false;  ///< the picker returns members instead of groups
};

struct NamedGroup {
  String Id;  ///< empty for a local group, which the host stores
  String Name;
};

/// Result of the group editor.
struct GroupResult {
  TypeOfGroup GroupType = TypeOfGroup::LocalGroup;
  std::optional<NamedGroup> Saved = {};  ///< nullopt if closed without saving
  /// After a cancel: the group whose save failed after its row was inserted.
  std::optional<NamedGroup> Unfinished = {};
  /// Whether contacts were created or opened from the dialog, even if the group was not saved.
  bool HasOpenedContacts = false;
  std::vector<String> EditedContacts = {};  ///< ids; the same
};

/// Result of the picker. Shared pointers, because hosts may keep a collection after the next
/// selection.
struct Recipients {
  std::shared_ptr<TextCollection> Selected = std::make_shared<TextCollection>();
  std::shared_ptr<TextCollection> MobileNos = std::make_shared<TextCollection>();
  std::shared_ptr<TextCollection> Names = std::make_shared<TextCollection>();
  String ContactsName = {};  ///< names of the members of expanded groups
};

}  // namespace ktrv::forms
