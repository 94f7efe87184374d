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

/// What the address book window does with its items: it makes, opens and deletes them, each by the
/// current node of the tree and by whether the tree or the grid is at work.
///
/// One command runs at a time: while a box or an editor of one is open, and until a long deletion
/// is over, others do nothing. A failure is logged with the command's context text.
class ItemCommands {
 public:
  /// All must outlive the commands.
  ItemCommands(Workplace& place, Editors& editors, frmAddressBook& window, FolderTree& folders,
               ContactList& list);
  ~ItemCommands();

  static constexpr StringView kNewGroup = u"GR";

  /// \param kind kNewGroup, else a contact
  void New(StringView kind);
  /// A contact that becomes a member of the current group; nothing at other nodes.
  void NewMember();
  void NewFolder();
  void Properties();
  void Delete();

  /// Leaves what is not yet deleted; the window is closing.
  void Stop();
  /// Whether a deletion goes on while the user can do other things.
  bool IsDeleting() const { return deletion_ != nullptr; }

 private:
  void Run(StringView context, const std::function<void()>& command);

  void NewContact(const CurrentNode& node);
  /// What a new contact of the node is stored with: at a group, its membership.
  ContactCompanion MembershipAt(const CurrentNode& node);
  void NewGroup(const CurrentNode& node);
  /// The folder that a new item of the node goes into; nothing when the node is gone, which the
  /// user is told.
  std::optional<String> FolderFor(const CurrentNode& node);

  /// The node that the tree shows as selected. When there is none because it is gone, the user is
  /// told.
  const controls::TreeNode* ChosenNode();
  void NodeProperties();
  void GroupProperties(const String& key);
  void RowProperties();
  /// The list is loaded again too when it is stale, or when another node became current.
  void RebuildTree(bool listIsStale = false);

  void DeleteNode();
  void SayThatGroupsRemain();
  /// Asks the database whether the node is a folder with groups. If so the user is told, and the
  /// tree shows them.
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
