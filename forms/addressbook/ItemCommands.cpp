#include "forms/addressbook/ItemCommands.h"

#include "forms/addressbook/ContactGridLayout.h"
#include "forms/addressbook/frmAddressBook.h"

namespace ktrv::forms {
namespace {

/// Context texts of error records. Log readers match them literally; the doubled prefix is theirs.
namespace Context {
constexpr StringView kNew =
    u"KTRVKTRVAddressBook: Error occurred. Sub: ContactNew(), Module: frmAddressBook";
constexpr StringView kNewFolder =
    u"KTRVAddressBook: Error occurred. Sub: mnuSharedFolderContext_Click, Module: frmAddressBook";
constexpr StringView kProperties =
    u"KTRVKTRVAddressBook: Error occurred. Sub: ContactProperties, Module: frmAddressBook";
}  // namespace Context

}  // namespace

ItemCommands::ItemCommands(Session& session, Editors& editors, frmAddressBook& window,
                           FolderTree& folders, ContactList& list)
    : session_(session),
      window_(window),
      folders_(folders),
      list_(list),
      editors_(session, editors),
      statements_(session) {}

ItemCommands::~ItemCommands() {
  Stop();
}

void ItemCommands::Run(StringView context, const std::function<void()>& command) {
  // A menu may have been open when the window went.
  if (running_ || deletion_ || !window_.IsLoaded()) return;
  struct Running {
    bool& Flag;
    ~Running() { Flag = false; }
  };
  const controls::Form::Stay stay(window_);
  running_ = true;
  const Running running{running_};
  if (folders_.Source() != session_.SessionConnectionString) {
    // The host turned to another database: the ids shown here are not the ids there.
    window_.LoadTreeView();
    window_.LoadContacts();
    return;
  }
  database_ = session_.SessionConnectionString;
  session_.Trap(context, command);
}

bool ItemCommands::IsStillOpen() const {
  return window_.IsLoaded() && session_.SessionConnectionString == database_;
}

void ItemCommands::Say(StringView text) {
  session_.ShowMessage(text, MessageStyle::Exclamation);
}

// New items.

void ItemCommands::New(StringView kind) {
  Run(Context::kNew, [&] {
    const CurrentNode node = folders_.Current();
    const bool isRemote = NodeKey::KindOf(node.Key) == NodeKey::RemoteFolder;
    if (kind == kNewGroup) {
      if (isRemote) {
        return Say(u"Creating a Group in a Shared Remote Contacts folder is not allowed.");
      }
      NewGroup(node);
    } else {
      if (isRemote) {
        return Say(
            u"Cannot create Shared Remote Contact here. Such contacts can be created from TALVERO "
            u"only.");
      }
      NewContact(node);
    }
  });
}

void ItemCommands::NewMember() {
  if (NodeKey::KindOf(folders_.Current().Key) == NodeKey::SharedGroup) New({});
}

std::optional<String> ItemCommands::FolderFor(const CurrentNode& node) {
  // Before any node is chosen, new items go where those outside any folder are.
  if (node.Key.empty()) return u"0";
  const controls::TreeNode* place = window_.tvwContacts.Find(node.Key);
  if (!place) {
    Say(kNodeIsGone);
    return std::nullopt;
  }
  if (NodeKey::KindOf(place->Key) == NodeKey::SharedGroup) place = place->Parent;
  if (place->Key == NodeKey::Shared) return u"0";
  return String(NodeKey::IdOf(place->Key));
}

void ItemCommands::NewContact(const CurrentNode& node) {
  const auto folder = FolderFor(node);
  if (!folder || !editors_.NewContact(*folder, MembershipAt(node))) return;
  if (!IsStillOpen()) return;
  // A list that still comes may hold the contact or not, and replaces what is added to it.
  if (list_.IsLoading()) return window_.LoadContacts();
  if (folders_.Current().Key != node.Key) return;
  list_.Add({.Id = session_.SavedContactId,
             .Name = session_.SavedContactName,
             .MobileNo = session_.SavedContactMobile,
             .Email = session_.SavedContactEmail,
             .Address = session_.SavedContactAddress,
             .Organisation = session_.SavedContactOrganisation,
             .FolderId = *folder});
}

frmNewContact::Companion ItemCommands::MembershipAt(const CurrentNode& node) {
  if (NodeKey::KindOf(node.Key) != NodeKey::SharedGroup) return {};
  using Refused = frmNewContact::Refused;
  using Membership = ItemStatements::Membership;
  // A contact is never stored without its membership: the next attempt would store another one.
  const auto linking = [this](const std::function<Membership()>& link) {
    Membership made = Membership::Made;
    const bool worked = session_.Trap(Context::kNew, false, [&] {
      made = link();
      return true;
    });
    if (!worked) throw Refused{};
    if (made == Membership::GroupIsGone) throw Refused{String(kNodeIsGone)};
    if (made == Membership::ContactIsGone) throw Refused{u"The contact does not exist any more."};
  };
  const String group(NodeKey::IdOf(node.Key));
  return {.Check =
              [this, group, linking](database::Connection& connection) {
                linking([&] {
                  return statements_.GroupIsThere(connection, group) ? Membership::Made
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
  const auto outcome = editors_.NewGroup(*folder);
  if (!IsStillOpen()) return;
  if (outcome.Saved) folders_.AddGroup(session_.GroupId, session_.GroupName, *folder);
  // Groups are listed in their folder, and not in another group; contacts anywhere.
  const bool isListed = outcome.Saved && NodeKey::KindOf(node.Key) != NodeKey::SharedGroup;
  if (isListed || outcome.HasOpenedContacts) window_.LoadContacts();
}

void ItemCommands::NewFolder() {
  Run(Context::kNewFolder, [&] {
    if (editors_.NewFolder() && IsStillOpen()) RebuildTree();
  });
}

// Properties.

void ItemCommands::Properties() {
  Run(Context::kProperties, [&] {
    if (window_.tvwContacts.HasFocus()) {
      NodeProperties();
    } else if (ContactGridLayout::HasRows(window_.vsfContacts)) {
      RowProperties();
    }
  });
}

const controls::TreeNode* ItemCommands::ChosenNode() {
  const controls::TreeNode* node = window_.tvwContacts.SelectedNode();
  const String& current = folders_.Current().Key;
  if (!node && !current.empty() && !window_.tvwContacts.Find(current)) Say(kNodeIsGone);
  return node;
}

void ItemCommands::NodeProperties() {
  const controls::TreeNode* node = ChosenNode();
  if (!node) return;
  const String key = node->Key;
  const StringView kind = NodeKey::KindOf(key);
  if (kind == NodeKey::SharedGroup) return GroupProperties(key);
  const bool isRemote = kind == NodeKey::RemoteFolder;
  if (!isRemote && kind != NodeKey::SharedFolder) return;
  editors_.EditFolder(String(NodeKey::IdOf(key)),
                      isRemote ? TypeOfFolder::SharedRemoteFolder : TypeOfFolder::SharedFolder);
  // A remote folder may show another category now.
  if (IsStillOpen()) RebuildTree(isRemote);
}

void ItemCommands::GroupProperties(const String& key) {
  controls::TreeView& tree = window_.tvwContacts;
  const String id(NodeKey::IdOf(key));
  editors_.EditGroup(id, tree.Find(key)->Text);
  if (!IsStillOpen()) return;
  const auto name = statements_.GroupName(id);
  controls::TreeNode* node = tree.Find(key);
  if (name && node) tree.SetText(*node, *name);
  tree.Refresh();
  window_.LoadContacts();
}

void ItemCommands::RowProperties() {
  const controls::FlexGrid& grid = window_.vsfContacts;
  const int row = grid.ChosenRow();
  if (row == 0) return;
  const auto cell = [&](StringView key) { return grid.Text(row, grid.ColIndex(key)); };
  const String type = cell(ContactGridLayout::kType);
  const String id = cell(ContactGridLayout::kId);
  if (type == u"3") {
    return Say(
        u"This is a Shared Remote Contact. The detail of this contact can be edited from TALVERO "
        u"only.");
  }
  if (type == u"1") {
    editors_.EditContact(id, cell(ContactGridLayout::kFolderId));
  } else if (type == u"2") {
    const bool saved = editors_.EditGroup(id, cell(ContactGridLayout::kName));
    controls::TreeNode* node = window_.tvwContacts.Find(String(NodeKey::SharedGroup) + id);
    if (saved && node && IsStillOpen()) window_.tvwContacts.SetText(*node, session_.GroupName);
  } else {
    return;
  }
  if (IsStillOpen()) window_.LoadContacts();
}

void ItemCommands::RebuildTree(bool listIsStale) {
  const String before = folders_.Current().Key;
  window_.LoadTreeView();
  // At the server the root becomes current, and the grid shows what is.
  if (listIsStale || folders_.Current().Key != before) window_.LoadContacts();
}

}  // namespace ktrv::forms
