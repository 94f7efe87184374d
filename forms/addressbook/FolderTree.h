#pragma once

#include <array>

#include "controls/TreeView.h"
#include "forms/addressbook/CurrentNode.h"
#include "services/BookDatabase.h"
#include "services/Enumerations.h"

namespace ktrv::forms {

/// What the address book's tree holds and which of its nodes is current: the root, the shared and
/// the remote folders below it, and the groups below the root or their shared folder.
class FolderTree {
 public:
  /// Database and tree must outlive this.
  FolderTree(BookDatabase& database, RunApplicationAt runAt, controls::TreeView& tree);

  /// As when the window opens: no current node, the top-level nodes expanded.
  void Start();

  /// Builds the tree anew from the database; nodes added before a failure stay. \throws Error
  void Build();

  const CurrentNode& Current() const { return current_; }

  /// Adds the node of a new group and shows it. \throws Error ElementNotFound when its folder is
  /// not there
  void AddGroup(StringView id, const String& name, StringView folderId);

  /// The node was clicked. \return whether another node became current
  bool Click(const controls::TreeNode& node);
  /// Whether a node was clicked since the last call.
  bool TakeClick();

  /// The user or the program expanded or collapsed the node: kept for the next rebuild.
  void Remember(const controls::TreeNode& node, bool expanded);

 private:
  /// What a rebuild does with the top-level nodes whose keys start so.
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
  void ShowCurrent();
  void MakeCurrent(const controls::TreeNode& node);

  BookDatabase& database_;
  const RunApplicationAt runAt_;
  controls::TreeView& tree_;
  std::array<TopLevelState, 2> topLevel_;
  CurrentNode current_;
  bool nodeClicked_ = false;
};

}  // namespace ktrv::forms
