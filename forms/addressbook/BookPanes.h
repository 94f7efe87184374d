#pragma once

#include "controls/StatusBar.h"
#include "forms/addressbook/ContactList.h"
#include "forms/addressbook/FolderTree.h"
#include "forms/addressbook/SelectionPanel.h"

namespace ktrv::forms {

/// The panes of the address book window as its commands use them: selection, messages and
/// reloading.
struct BookPanes {
  ktrv::Services& Services;
  controls::Form& Window;
  controls::TreeView& Tree;
  controls::FlexGrid& Grid;
  controls::StatusBar& Status;
  FolderTree& Folders;
  ContactList& List;
  SelectionPanel& Panel;

  void Say(StringView text) const;
  /// Shows in the status bar why a command has no effect.
  void Note(StringView text) const { Panel.Note(text); }
  /// The selected node of the tree. Null if there is none; shows a message if that is because the
  /// current node no longer exists.
  const controls::TreeNode* ChosenNode() const;
  void LoadContacts() const { List.Load(Folders.Current().Key); }
  /// Rebuilds the tree. Also reloads the list if it is stale or the current node has changed.
  void RebuildTree(bool listIsStale = false) const;
};

}  // namespace ktrv::forms
