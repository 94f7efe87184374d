#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "forms/addressbook/ContactList.h"
#include "forms/addressbook/FolderTree.h"
#include "forms/addressbook/ItemEditors.h"
#include "forms/addressbook/ItemStatements.h"
#include "forms/addressbook/RowDeletion.h"

namespace ktrv::forms {

class frmAddressBook;

/// Item commands of the address book window: create, open, delete. They apply to the current node
/// of the tree, or to the rows of the grid when the tree does not have the focus.
///
/// Only one command runs at a time. While it shows a box or an editor, or a long deletion is
/// running, other commands do nothing. A failure is logged with the command's context text.
class ItemCommands {
 public:
  /// All references must outlive the object.
  ItemCommands(Workplace& place, Editors& editors, frmAddressBook& window, FolderTree& folders,
               ContactList& list);
  ~ItemCommands();

  static constexpr StringView kNewGroup = u"GR";

  /// \param kind kNewGroup; any other value creates a contact
  void New(StringView kind);
  /// Creates a contact that becomes a member of the current group. No effect at other nodes.
  void NewMember();
  void NewFolder();
  void Properties();
  void Delete();

  /// Cancels a running deletion; called when the window closes.
  void Stop();
  /// Whether a deletion is running in the background.
  bool IsDeleting() const { return deletion_ != nullptr; }

 private:
  void Run(StringView context, const std::function<void()>& command);

  void NewContact(const CurrentNode& node);
  /// For a group node: stores the new contact's membership together with it. Otherwise empty.
  ContactCompanion MembershipAt(const CurrentNode& node);
  void NewGroup(const CurrentNode& node);
  /// The folder for a new item at the node. If the node no longer exists, shows a message and
  /// returns nullopt.
  std::optional<String> FolderFor(const CurrentNode& node);

  /// The selected node of the tree. Null if there is none; shows a message if that is because the
  /// current node no longer exists.
  const controls::TreeNode* ChosenNode();
  void NodeProperties();
  void GroupProperties(const String& key);
  void RowProperties();
  /// Rebuilds the tree. Also reloads the list if it is stale or the current node has changed.
  void RebuildTree(bool listIsStale = false);

  void DeleteNode();
  void SayThatGroupsRemain();
  /// Queries whether the node is a folder with groups. If so, shows a message and rebuilds the
  /// tree.
  bool HoldsUnseenGroups(const String& key);
  void ShowUnseenGroups();
  bool DeleteItemOf(const String& key);
  void RemoveNode(const String& key);
  void DeleteRows(const CurrentNode& node);
  void FinishDeletion();

  bool Confirm(StringView question, std::int32_t buttons, std::int16_t wanted);
  bool ConfirmDeletion();
  void Say(StringView text);

  Workplace& place_;
  frmAddressBook& window_;
  FolderTree& folders_;
  ContactList& list_;
  ItemEditors editors_;
  ItemStatements statements_;
  std::shared_ptr<RowDeletion> deletion_;
  bool running_ = false;
};

}  // namespace ktrv::forms
