#pragma once

#include <memory>
#include <optional>

#include "common/TextCollection.h"
#include "services/Enumerations.h"

namespace ktrv::forms {

/// What the group dialog is opened for.
struct GroupRequest {
  ktrv::LoadGroupFor LoadGroupFor = ktrv::LoadGroupFor::AddModify;
  ModeOfOperation Mode = ModeOfOperation::Add;  ///< has no meaning for the picker
  TypeOfGroup GroupType = TypeOfGroup::LocalGroup;
  /// Of the contacts that are opened over a dialog of local groups.
  TypeOfContact SharedMode = TypeOfContact::LocalContact;
  String FolderId = u"0";     ///< decimal, of a new group
  String GroupId = {};        ///< decimal, of the group to modify
  String GroupName = {};      ///< the same group's, as the opener knows it
  bool ExpandGroups = false;  ///< the picker gives the members of picked groups
};

struct NamedGroup {
  String Id;  ///< empty for a local group, which is kept by the host
  String Name;
};

/// What the group editor leaves.
struct GroupResult {
  TypeOfGroup GroupType = TypeOfGroup::LocalGroup;
  std::optional<NamedGroup> Saved = {};  ///< nothing when it was closed without saving
  /// The group that was inserted and not finished, after a cancel.
  std::optional<NamedGroup> Unfinished = {};
  /// Whether contacts were made or opened over the dialog, whatever became of the group.
  bool HasOpenedContacts = false;
};

/// What a picker leaves. A host may keep a collection after the next selection replaced it.
struct Recipients {
  std::shared_ptr<TextCollection> Selected = std::make_shared<TextCollection>();
  std::shared_ptr<TextCollection> MobileNos = std::make_shared<TextCollection>();
  std::shared_ptr<TextCollection> Names = std::make_shared<TextCollection>();
  String ContactsName = {};  ///< names of the members of expanded groups
};

}  // namespace ktrv::forms
