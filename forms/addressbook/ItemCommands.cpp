#include "forms/addressbook/ItemCommands.h"

#include <limits>
#include <utility>

#include "common/Error.h"
#include "common/ScopeExit.h"
#include "forms/ContactKind.h"
#include "forms/Messages.h"
#include "forms/addressbook/ContactGridLayout.h"

namespace ktrv::forms {
namespace {

/// Context texts of error records. Log readers match them literally, including the doubled prefix.
namespace Context {
constexpr StringView kNew =
    u"KTRVKTRVAddressBook: Error occurred. Sub: ContactNew(), Module: frmAddressBook";
constexpr StringView kNewFolder =
    u"KTRVAddressBook: Error occurred. Sub: mnuSharedFolderContext_Click, Module: frmAddressBook";
constexpr StringView kAddMembers =
    u"KTRVAddressBook: Error occurred. Sub: AddMembers, Module: frmAddressBook";
constexpr StringView kProperties =
    u"KTRVKTRVAddressBook: Error occurred. Sub: ContactProperties, Module: frmAddressBook";
}  // namespace Context

/// nullopt if the id is not a number or exceeds the 16 bits of the contact editor.
std::optional<std::int16_t> ShortId(StringView id) {
  const auto number = ParseInteger(id);
  if (!number || *number < 0 || *number > std::numeric_limits<std::int16_t>::max()) return {};
  return static_cast<std::int16_t>(*number);
}

}  // namespace

ItemCommands::ItemCommands(Workplace& place, Editors& editors, BookPanes panes)
    : place_(place),
      panes_(panes),
      editors_(editors),
      statements_(place.Database),
      deletion_(place, panes_) {}

void ItemCommands::Run(StringView context, const std::function<void()>& command) {
  // The window may be unloaded while its menu is open.
  if (running_ || !panes_.Window.IsLoaded()) return;
  if (IsDeleting()) return panes_.Note(u"Items are still being deleted.");
  if (IsAdding()) return panes_.Note(u"Contacts are still being added to a group.");
  const controls::Form::Stay stay(panes_.Window);
  running_ = true;
  const ScopeExit done([this] { running_ = false; });
  place_.Services.Trap(context, command);
}

// New items.

void ItemCommands::New(StringView kind) {
  Run(Context::kNew, [&] {
    const CurrentNode node = panes_.Folders.Current();
    const bool isRemote = NodeKey::KindOf(node.Key) == NodeKey::RemoteFolder;
    if (kind == kNewGroup) {
      if (isRemote) {
        return panes_.Say(Messages::kNoGroupInRemoteFolder);
      }
      NewGroup(node);
    } else {
      if (isRemote) {
        return panes_.Say(Messages::kNoRemoteContactHere);
      }
      NewContact(node);
    }
  });
}

void ItemCommands::NewMember() {
  if (NodeKey::KindOf(panes_.Folders.Current().Key) == NodeKey::SharedGroup) New({});
}

std::optional<String> ItemCommands::FolderFor(const CurrentNode& node) {
  // Without a current node, new items go to the main folder.
  if (node.Key.empty()) return u"0";
  const controls::TreeNode* place = panes_.Tree.Find(node.Key);
  if (!place) {
    panes_.Say(Messages::kPlaceIsGone);
    return std::nullopt;
  }
  if (NodeKey::KindOf(place->Key) == NodeKey::SharedGroup) place = place->Parent;
  if (place->Key == NodeKey::Shared) return u"0";
  return String(NodeKey::IdOf(place->Key));
}

void ItemCommands::NewContact(const CurrentNode& node) {
  const auto folder = FolderFor(node);
  if (!folder) return;
  const auto folderId = ShortId(*folder);
  if (!folderId) throw Error(ErrorNumber::Overflow);
  const auto contact = editors_
                           .Contact(place_.Another(), {.SharedMode = TypeOfContact::SharedContact,
                                                       .FolderId = *folderId,
                                                       .With = MembershipAt(node)})
                           .Saved;
  if (!contact || !panes_.Window.IsLoaded()) return;
  // A running fetch may or may not include the contact, and replaces appended rows.
  if (panes_.List.IsLoading()) return panes_.LoadContacts();
  if (panes_.Folders.Current().Key == node.Key) panes_.List.Add(*contact, *folder);
}

ContactCompanion ItemCommands::MembershipAt(const CurrentNode& node) {
  if (NodeKey::KindOf(node.Key) != NodeKey::SharedGroup) return {};
  using Membership = ItemStatements::Membership;
  // A contact must not be stored without its membership: the next attempt would store a second one.
  const auto linking = [this](const std::function<Membership()>& link) {
    Membership made = Membership::Made;
    const bool worked = place_.Services.Trap(Context::kNew, false, [&] {
      made = link();
      return true;
    });
    if (!worked) throw ContactRefused{};
    if (made == Membership::GroupIsGone) throw ContactRefused{String(Messages::kPlaceIsGone)};
    if (made == Membership::ContactIsGone)
      throw ContactRefused{u"The contact does not exist any more."};
  };
  const String group(NodeKey::IdOf(node.Key));
  return {.Check =
              [this, group, linking](database::Connection& connection) {
                linking([&] {
                  return statements_.LockGroup(connection, group) ? Membership::Made
                                                                  : Membership::GroupIsGone;
                });
              },
          .Store =
              [this, group, linking](database::Connection& connection, const String& contactId) {
                linking([&] { return statements_.InsertMember(connection, group, contactId); });
              }};
}

void ItemCommands::NewGroup(const CurrentNode& node) {
  const auto folder = FolderFor(node);
  if (!folder) return;
  const GroupResult result =
      editors_.Group(place_.Another(), {.GroupType = TypeOfGroup::SharedGroup,
                                        .SharedMode = TypeOfContact::SharedContact,
                                        .FolderId = *folder});
  if (!panes_.Window.IsLoaded()) return;
  // An unfinished group is in the database too.
  const auto& made = result.Saved ? result.Saved : result.Unfinished;
  if (made) panes_.Folders.AddGroup(made->Id, made->Name, *folder);
  // A group's list contains no groups; all lists contain contacts.
  const bool isListed = made && NodeKey::KindOf(node.Key) != NodeKey::SharedGroup;
  if (isListed || result.HasOpenedContacts) panes_.LoadContacts();
}

void ItemCommands::NewFolder() {
  Run(Context::kNewFolder, [&] {
    // The user can change the type by the editor's check box.
    const FolderResult made =
        editors_.Folder(place_.Another(), {.FolderType = TypeOfFolder::SharedFolder});
    if (made.Saved && panes_.Window.IsLoaded()) panes_.RebuildTree();
  });
}

// Properties.

void ItemCommands::Properties() {
  Run(Context::kProperties, [&] {
    if (panes_.Tree.HasFocus()) {
      NodeProperties();
    } else if (ContactGridLayout::HasRows(panes_.Grid) && panes_.Grid.ChosenRow() > 0) {
      RowProperties();
    } else {
      panes_.Note(Messages::kNothingSelected);
    }
  });
}

void ItemCommands::NodeProperties() {
  const controls::TreeNode* node = panes_.ChosenNode();
  if (!node) return panes_.Note(Messages::kNothingSelected);
  const String key = node->Key;
  const StringView kind = NodeKey::KindOf(key);
  if (kind == NodeKey::SharedGroup) return GroupProperties(key);
  const bool isRemote = kind == NodeKey::RemoteFolder;
  if (!isRemote && kind != NodeKey::SharedFolder) {
    return panes_.Note(u"This item has no properties.");
  }
  editors_.Folder(place_.Another(),
                  {ModeOfOperation::Modify,
                   isRemote ? TypeOfFolder::SharedRemoteFolder : TypeOfFolder::SharedFolder,
                   String(NodeKey::IdOf(key))});
  // The folder may be mapped to another category now.
  if (panes_.Window.IsLoaded()) panes_.RebuildTree(isRemote);
}

GroupResult ItemCommands::EditGroup(const String& id, const String& name) {
  return editors_.Group(place_.Another(), {.Mode = ModeOfOperation::Modify,
                                           .GroupType = TypeOfGroup::SharedGroup,
                                           .SharedMode = TypeOfContact::SharedContact,
                                           .GroupId = id,
                                           .GroupName = name});
}

void ItemCommands::GroupProperties(const String& key) {
  controls::TreeView& tree = panes_.Tree;
  const String id(NodeKey::IdOf(key));
  EditGroup(id, tree.Find(key)->Text);
  if (!panes_.Window.IsLoaded()) return;
  const auto name = statements_.GroupName(id);
  controls::TreeNode* node = tree.Find(key);
  if (name && node) tree.SetText(*node, *name);
  tree.Refresh();
  panes_.LoadContacts();
}

void ItemCommands::RowProperties() {
  const controls::FlexGrid& grid = panes_.Grid;
  const int row = grid.ChosenRow();
  const auto cell = [&](StringView key) { return grid.Text(row, grid.ColIndex(key)); };
  const String type = cell(ContactGridLayout::kType);
  const String id = cell(ContactGridLayout::kId);
  if (type == ContactKind::RemoteContact) {
    return panes_.Say(
        u"This is a Shared Remote Contact. The detail of this contact can be edited from TALVERO "
        u"only.");
  }
  if (type == ContactKind::Contact) {
    // The folder of an existing contact does not change.
    const auto folderId = ShortId(cell(ContactGridLayout::kFolderId));
    editors_.Contact(place_.Another(), {.Mode = ModeOfOperation::Modify,
                                        .SharedMode = TypeOfContact::SharedContact,
                                        .FolderId = folderId.value_or(0),
                                        .EditContactId = id});
  } else if (type == ContactKind::Group) {
    const GroupResult edited = EditGroup(id, cell(ContactGridLayout::kName));
    controls::TreeNode* node = panes_.Tree.Find(String(NodeKey::SharedGroup) + id);
    if (edited.Saved && node && panes_.Window.IsLoaded()) {
      panes_.Tree.SetText(*node, edited.Saved->Name);
    }
  } else {
    return;
  }
  if (panes_.Window.IsLoaded()) panes_.LoadContacts();
}

// Members of a group.

void ItemCommands::AddMembers(const String& groupKey, const std::vector<ListedItem>& items) {
  Run(Context::kAddMembers, [&] {
    const controls::TreeNode* group = panes_.Tree.Find(groupKey);
    if (!group) return panes_.Say(Messages::kPlaceIsGone);
    std::vector<String> contacts;
    for (const ListedItem& item : items) {
      if (item.Type == ContactKind::Contact) contacts.push_back(item.Id);
    }
    if (contacts.empty()) {
      return panes_.Note(u"Only contacts that can be changed here are added to a group.");
    }
    const std::size_t leftOut = items.size() - contacts.size();
    const String name = group->Text;
    const auto addition = std::make_shared<MemberAddition>(
        place_.Services, place_.Database, String(NodeKey::IdOf(groupKey)), std::move(contacts));
    addition->Progress = [this, name, all = addition->Count()](std::size_t done) {
      panes_.Note(u"Adding to " + name + u": " + ToDecimal(static_cast<std::int64_t>(done)) +
                  u" of " + ToDecimal(static_cast<std::int64_t>(all)));
    };
    addition->Done = [this, groupKey, name, leftOut] { FinishAddition(groupKey, name, leftOut); };
    addition_ = addition;
    addition->Run();
  });
}

void ItemCommands::FinishAddition(const String& groupKey, const String& groupName,
                                  std::size_t leftOut) {
  const controls::Form::Stay stay(panes_.Window);  // a message box may be shown
  const auto addition = std::exchange(addition_, nullptr);
  const MemberAddition::Counts& counts = addition->Result();
  const auto number = [](std::size_t count) { return ToDecimal(static_cast<std::int64_t>(count)); };
  String text = number(counts.Added) + u" contact(s) added to " + groupName;
  if (counts.Present > 0) text += u", " + number(counts.Present) + u" were in it";
  if (counts.Gone > 0) text += u", " + number(counts.Gone) + u" no longer exist";
  if (leftOut > 0) text += u", " + number(leftOut) + u" left out";
  if (addition->HasFailed()) text += u"; not all, the log says why";
  if (panes_.Folders.Current().Key == groupKey && counts.Added > 0) panes_.LoadContacts();
  panes_.Note(text + u".");
  if (addition->GroupIsGone()) {
    panes_.Say(Messages::kPlaceIsGone);
    if (panes_.Window.IsLoaded()) panes_.RebuildTree();
  }
}

void ItemCommands::Stop() {
  deletion_.Stop();
  if (const auto addition = std::exchange(addition_, nullptr)) addition->Stop();
}

void ItemCommands::Delete() {
  Run(ItemDeletion::kContext, [&] { deletion_.Delete(); });
}

}  // namespace ktrv::forms
