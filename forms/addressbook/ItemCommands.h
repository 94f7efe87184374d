#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "forms/Editors.h"
#include "forms/addressbook/BookPanes.h"
#include "forms/addressbook/ItemDeletion.h"
#include "forms/addressbook/ItemStatements.h"
#include "forms/addressbook/MemberAddition.h"

namespace ktrv::forms {

/// Item commands of the address book window: create, open, delete, add to a group. They apply to
/// the current node of the tree, or to the rows of the grid when the tree does not have the focus.
///
/// Only one command runs at a time. While it shows a box or an editor, or works in the background,
/// other commands do nothing. A failure is logged with the command's context text.
class ItemCommands {
 public:
  /// All references must outlive the object.
  ItemCommands(Workplace& place, Editors& editors, BookPanes panes);
  ~ItemCommands() { Stop(); }

  static constexpr StringView kNewGroup = u"GR";

  /// \param kind kNewGroup; any other value creates a contact
  void New(StringView kind);
  /// Creates a contact that becomes a member of the current group. No effect at other nodes.
  void NewMember();
  void NewFolder();
  void Properties();
  void Delete();
  /// Makes contacts members of a group; other items are left out. Continues in the background after
  /// it has returned.
  void AddMembers(const String& groupKey, const std::vector<ListedItem>& items);

  /// Cancels what runs in the background; called when the window closes.
  void Stop();
  /// Whether a deletion is running in the background.
  bool IsDeleting() const { return deletion_.IsRunning(); }
  /// Whether contacts are being made members in the background.
  bool IsAdding() const { return addition_ != nullptr; }

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
  /// \param leftOut items that cannot be members
  void FinishAddition(const String& groupKey, const String& groupName, std::size_t leftOut);

  Workplace& place_;
  const BookPanes panes_;
  Editors& editors_;
  ItemStatements statements_;
  ItemDeletion deletion_;
  std::shared_ptr<MemberAddition> addition_;
  bool running_ = false;
};

}  // namespace ktrv::forms
