#pragma once

#include <array>
#include <set>

#include "controls/TreeView.h"
#include "forms/addressbook/CurrentNode.h"
#include "services/Workplace.h"

namespace ktrv::forms {

/// Fills the address book's tree and keeps track of the current node. Below the root are the shared
/// and remote folders and groups; a group may also be below its shared folder.
class FolderTree {
 public:
  /// Place and tree must outlive the object.
  FolderTree(Workplace& place, controls::TreeView& tree);

  /// Initial state of the window: no current node, top-level nodes expanded.
  void Start();

  /// Rebuilds the tree from the database. Folders that were open are opened again, and the tree is
  /// scrolled as before. A failure is logged; nodes added before it stay.
  void Build();

  const CurrentNode& Current() const { return current_; }

  /// Adds the node of a new group and expands its parents. \throws Error ElementNotFound if its
  /// folder is not in the tree
  void AddGroup(StringView id, const String& name, StringView folderId);

  /// Handles a click on the node. \return whether the current node changed
  bool Click(const controls::TreeNode& node);
  /// Whether a node was clicked since the last call.
  bool TakeClick();

  /// Stores that the user or the program expanded or collapsed the node, for the next rebuild.
  void Remember(const controls::TreeNode& node, bool expanded);

 private:
  /// State of the top-level nodes with this key prefix, applied by a rebuild.
  struct TopLevelState {
    StringView Prefix;
    char16_t State = kExpanded;
  };
  static constexpr char16_t kExpanded = u'E';
  static constexpr char16_t kCollapsed = u'C';

  void AddNodes();
  void AddFolders(StringView query, StringView kind);
  void AddGroups();
  controls::TreeNode& AddGroupNode(StringView id, const String& name, StringView folderId);
  void Expand();
  void OpenFolders();
  void ShowCurrent();
  void MakeCurrent(const controls::TreeNode& node);

  Workplace& place_;
  controls::TreeView& tree_;
  std::array<TopLevelState, 2> topLevel_;
  std::set<String> openFolders_;  ///< their keys
  CurrentNode current_;
  bool nodeClicked_ = false;
};

}  // namespace ktrv::forms
