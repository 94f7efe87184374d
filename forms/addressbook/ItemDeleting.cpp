// The deleting part of ItemCommands.
#include <utility>

#include "forms/addressbook/ContactGridLayout.h"
#include "forms/addressbook/ItemCommands.h"
#include "forms/addressbook/frmAddressBook.h"

namespace ktrv::forms {
namespace {

/// Log readers match it literally, including the doubled prefix.
constexpr StringView kContext =
    u"KTRVKTRVAddressBook: Error occurred. Sub: ContactDelete(), Module: frmAddressBook";
constexpr int kTextPanel = 1;

}  // namespace

void ItemCommands::Delete() {
  Run(kContext, [&] {
    if (window_.tvwContacts.HasFocus()) return DeleteNode();
    const CurrentNode node = folders_.Current();
    if (node.Key == NodeKey::Shared && place_.User.Rights == UserType::GeneralUser) return;
    DeleteRows(node);
  });
}

bool ItemCommands::Confirm(StringView question, std::int32_t buttons, std::int16_t wanted) {
  const std::int16_t answer = place_.Services.ShowMessage(
      question, buttons | MessageStyle::Question | MessageStyle::DefaultButton2);
  // If the window was unloaded meanwhile, the answer no longer applies.
  return answer == wanted && window_.IsLoaded();
}

bool ItemCommands::ConfirmDeletion() {
  return Confirm(u"Are you sure you want to delete the selected item(s)?", MessageStyle::YesNo,
                 MessageAnswer::Yes);
}

void ItemCommands::DeleteNode() {
  const controls::TreeNode* node = ChosenNode();
  if (!node) return;
  const String key = node->Key;
  if (key == NodeKey::Shared || key == NodeKey::Main) return Say(u"The item cannot be deleted.");
  if (!node->Children.empty()) return SayThatGroupsRemain();
  // Another user may have added groups, or the tree may be incomplete after a failure.
  if (HoldsUnseenGroups(key) || !ConfirmDeletion()) return;
  if (DeleteItemOf(key)) RemoveNode(key);
}

void ItemCommands::SayThatGroupsRemain() {
  place_.Services.ShowMessage(
      u"Selected folder contains group(s) under it. Remove all group(s) first to delete selected "
      u"folder.",
      MessageStyle::Critical);
}

bool ItemCommands::HoldsUnseenGroups(const String& key) {
  if (NodeKey::KindOf(key) != NodeKey::SharedFolder) return false;
  if (!statements_.HoldsGroups(NodeKey::IdOf(key))) return false;
  ShowUnseenGroups();
  return true;
}

void ItemCommands::ShowUnseenGroups() {
  SayThatGroupsRemain();
  if (window_.IsLoaded()) RebuildTree();
}

bool ItemCommands::DeleteItemOf(const String& key) {
  const StringView kind = NodeKey::KindOf(key);
  const StringView id = NodeKey::IdOf(key);
  const auto confirmWhole = [&](StringView question) {
    return Confirm(question, MessageStyle::OkCancel, MessageAnswer::Ok);
  };
  if (kind == NodeKey::SharedGroup) {
    statements_.DeleteGroup(id);
    return true;
  }
  if (kind == NodeKey::SharedFolder) {
    if (!confirmWhole(
            u"Are you sure you want to completely delete the  selected folder and all its "
            u"contents ?")) {
      return false;
    }
    // Other users may have added groups while the questions were open.
    const bool deleted = statements_.DeleteSharedFolder(id);
    if (!deleted) ShowUnseenGroups();
    return deleted;
  }
  if (kind == NodeKey::RemoteFolder) {
    if (!confirmWhole(u"Are you sure you want to completely delete the selected Shared Remote "
                      u"folder ?")) {
      return false;
    }
    statements_.DeleteRemoteFolder(id);
    return true;
  }
  return false;
}

void ItemCommands::RemoveNode(const String& key) {
  controls::TreeView& tree = window_.tvwContacts;
  if (controls::TreeNode* node = tree.Find(key)) tree.Remove(*node);
  tree.Refresh();
  if (controls::TreeNode* next = tree.SelectedNode()) {
    tree.UserClicks(*next);
  } else {
    window_.LoadContacts();  // the list may show what was deleted
  }
  // This click was not made with a mouse button, so it must not open a menu.
  folders_.TakeClick();
}

void ItemCommands::DeleteRows(const CurrentNode& node) {
  const controls::FlexGrid& grid = window_.vsfContacts;
  // There may be a selection without a current row, e.g. after Ctrl+A.
  if (!ContactGridLayout::HasRows(grid) || grid.Selection().Count() == 0) {
    return Say(u"No item(s) selected for deletion.");
  }
  const StringView kind = NodeKey::KindOf(node.Key);
  if (node.Key != NodeKey::Shared && kind != NodeKey::SharedFolder &&
      kind != NodeKey::SharedGroup) {
    return;
  }
  // Rows may arrive while the question is open. Only rows selected before it are deleted.
  std::vector<RowDeletion::Item> items;
  const int id = grid.ColIndex(ContactGridLayout::kId);
  const int type = grid.ColIndex(ContactGridLayout::kType);
  for (const int row : grid.SelectedRows())
    items.push_back({grid.Text(row, id), grid.Text(row, type)});
  if (!ConfirmDeletion()) return;
  deletion_ =
      std::make_shared<RowDeletion>(place_.Services, place_.Database, kContext, std::move(items));
  deletion_->Progress = [this, all = deletion_->Count()](std::size_t done) {
    window_.StatusBar1.SetPanelText(
        kTextPanel, u"Deleting item(s): " + ToDecimal(static_cast<std::int64_t>(done)) + u" of " +
                        ToDecimal(static_cast<std::int64_t>(all)));
  };
  deletion_->Done = [this] { FinishDeletion(); };
  deletion_->Run();
}

void ItemCommands::FinishDeletion() {
  const auto deletion = std::exchange(deletion_, nullptr);
  if (deletion->HasDeletedGroup()) window_.LoadTreeView();
  window_.LoadContacts();
}

void ItemCommands::Stop() {
  if (!deletion_) return;
  deletion_->Stop();
  deletion_.reset();
}

}  // namespace ktrv::forms
