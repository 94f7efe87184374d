#include "forms/addressbook/FolderTree.h"

#include <utility>

#include "common/ScopeExit.h"
#include "data/AddressBookQueries.h"
#include "database/Recordset.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::AddressBookQueries;

// 1-based indices in the image list of the tree.
constexpr int kRootImage = 1;
constexpr int kGroupImage = 3;
constexpr int kFolderImage = 4;

/// Context text of error records, as log readers match it.
constexpr StringView kBuild =
    u"KTRVAddressBook: Error occurred. Sub : LoadTreeView, Module: frmAddressBook";

String Joined(StringView kind, StringView id) {
  return String(kind) + String(id);
}

bool IsInSight(const controls::TreeNode& node) {
  for (const auto* above = node.Parent; above; above = above->Parent) {
    if (!above->Expanded) return false;
  }
  return true;
}

bool IsTopLevel(StringView key) {
  return key == NodeKey::Shared || key == NodeKey::Main;
}

}  // namespace

FolderTree::FolderTree(Workplace& place, controls::TreeView& tree) : place_(place), tree_(tree) {
  Start();
}

void FolderTree::Start() {
  topLevel_ = {TopLevelState{NodeKey::KindOf(NodeKey::Shared)}, TopLevelState{NodeKey::Main}};
  openFolders_.clear();
  current_ = {};
  nodeClicked_ = false;
}

void FolderTree::Build() {
  tree_.SetRedraw(false);
  const ScopeExit shown([this] { tree_.SetRedraw(true); });
  place_.Services.Trap(kBuild, [&] {
    const controls::TreeNode* top = tree_.TopNode();
    const String topKey = top ? top->Key : String();
    tree_.Clear();
    try {
      AddNodes();
      OpenFolders();
      Expand();
    } catch (...) {
      ShowCurrent();
      throw;
    }
    ShowCurrent();
    tree_.SetRedraw(true);  // a tree that does not paint may not scroll
    if (controls::TreeNode* former = tree_.Find(topKey)) tree_.SetTopNode(*former);
  });
}

void FolderTree::AddNodes() {
  controls::TreeNode& root = tree_.Add({}, String(NodeKey::Shared), u"Shared Contacts", kRootImage);
  root.Tag = NodeKey::Shared;
  if (place_.User.IsAtServer()) {
    tree_.Select(&root);
    tree_.SetExpanded(root, true);
    MakeCurrent(root);
  }
  AddFolders(Queries::kSharedFolders, NodeKey::SharedFolder);
  AddFolders(Queries::kRemoteFolders, NodeKey::RemoteFolder);
  AddGroups();
}

void FolderTree::ShowCurrent() {
  // Selects the current node again, because the grid still shows its contents. Not if it is below a
  // collapsed node: selecting it would expand that node.
  controls::TreeNode* current = tree_.Find(current_.Key);
  if (current) MakeCurrent(*current);  // its parent may have changed
  tree_.Select(current && IsInSight(*current) ? current : nullptr);
}

void FolderTree::AddFolders(StringView query, StringView kind) {
  database::Recordset folders(place_.Database.Environment);
  folders.Open(query, place_.Database.ConnectionString);
  // PARENTFOLDERID is ignored: folders have only one level.
  for (; !folders.EndOfFile(); folders.MoveNext()) {
    tree_.Add(NodeKey::Shared, Joined(kind, ToText(folders.Field(u"ID"))),
              ToText(folders.Field(u"NAME")), kFolderImage, kFolderImage);
  }
}

void FolderTree::AddGroups() {
  database::Recordset groups(place_.Database.Environment);
  groups.Open(Queries::kGroups, place_.Database.ConnectionString);
  for (; !groups.EndOfFile(); groups.MoveNext()) {
    AddGroupNode(ToText(groups.Field(u"ID")), ToText(groups.Field(u"NAME")),
                 ToDecimal(ToInteger(groups.Field(u"FOLDER_ID"))));
  }
}

controls::TreeNode& FolderTree::AddGroupNode(StringView id, const String& name,
                                             StringView folderId) {
  const String parent =
      folderId == u"0" ? String(NodeKey::Shared) : Joined(NodeKey::SharedFolder, folderId);
  return tree_.Add(parent, Joined(NodeKey::SharedGroup, id), name, kGroupImage);
}

void FolderTree::AddGroup(StringView id, const String& name, StringView folderId) {
  controls::TreeNode* node = tree_.Find(Joined(NodeKey::SharedGroup, id));
  if (!node) node = &AddGroupNode(id, name, folderId);
  for (controls::TreeNode* above = node->Parent; above; above = above->Parent) {
    tree_.SetExpanded(*above, true);
  }
}

void FolderTree::Expand() {
  const auto& [shared, main] = topLevel_;
  tree_.SetExpanded(tree_.At(1), shared.State == kExpanded);
  // The second node once was the top-level node of personal contacts. Its state is still applied to
  // whatever node is second now.
  if (place_.User.RunAt == RunApplicationAt::RuntAtClient && tree_.Count() > 1) {
    tree_.SetExpanded(tree_.At(2), main.State == kExpanded);
  }
}

void FolderTree::OpenFolders() {
  for (const String& key : openFolders_) {
    if (controls::TreeNode* folder = tree_.Find(key)) tree_.SetExpanded(*folder, true);
  }
}

bool FolderTree::Click(const controls::TreeNode& node) {
  nodeClicked_ = true;
  if (Trim(current_.Key) == node.Key) return false;
  MakeCurrent(node);
  return true;
}

bool FolderTree::TakeClick() {
  return std::exchange(nodeClicked_, false);
}

void FolderTree::Remember(const controls::TreeNode& node, bool expanded) {
  for (TopLevelState& row : topLevel_) {
    if (NodeKey::KindOf(node.Key) != row.Prefix) continue;
    row.State = expanded ? kExpanded : kCollapsed;
    return;
  }
  if (expanded) {
    openFolders_.insert(node.Key);
  } else {
    openFolders_.erase(node.Key);
  }
}

void FolderTree::MakeCurrent(const controls::TreeNode& node) {
  const bool top = IsTopLevel(node.Key) || !node.Parent;
  current_ = {node.Key, node.Tag, top ? node.Key : node.Parent->Key};
}

}  // namespace ktrv::forms
