#pragma once

#include <functional>
#include <optional>

#include "forms/Editors.h"
#include "forms/addressbook/BookPanes.h"
#include "forms/addressbook/ItemDeletion.h"
#include "forms/addressbook/ItemStatements.h"

namespace ktrv::forms {

/// Item commands of the address book window: create, open, delete. They apply to the current node
/// of the tree, or to the rows of the grid when the tree does not have the focus.
///
/// Only one command runs at a time. While it shows a box or an editor, or a long deletion is
/// running, other commands do nothing. A failure is logged with the command's context text.
class ItemCommands {
 public:
  /// All references must outlive the object.
  ItemCommands(Workplace& place, Editors& editors, BookPanes panes);

  static constexpr StringView kNewGroup = u"GR";

  /// \param kind kNewGroup; any other value creates a contact
  void New(StringView kind);
  /// Creates a contact that becomes a member of the current group. No effect at other nodes.
  void NewMember();
  void NewFolder();
  void Properties();
  void Delete();

  /// Cancels a running deletion; called when the window closes.
  void Stop() { deletion_.Stop(); }
  /// Whether a deletion is running in the background.
  bool IsDeleting() const { return deletion_.IsRunning(); }

 private:
  void Run(StringView context, const std::function<void()>& command);

  void NewContact(const CurrentNode& node);
  /// For a group node: stores the new contact's membership together with it. Otherwise empty.
  ContactCompanion MembershipAt(const CurrentNode& node);
  void NewGroup(const CurrentNode& node);
  /// The folder for a new item at the node. If the node no longer exists, shows a message and
  /// returns nullopt.
  std::optional<String> FolderFor(const CurrentNode& node);

  void NodeProperties();
  GroupResult EditGroup(const String& id, const String& name);
  void GroupProperties(const String& key);
  void RowProperties();

  Workplace& place_;
  const BookPanes panes_;
  Editors& editors_;
  ItemStatements statements_;
  ItemDeletion deletion_;
  bool running_ = false;
};

}  // namespace ktrv::forms
