#include "forms/addressbook/ItemDeletion.h"

#include <utility>

#include "forms/Messages.h"
#include "forms/addressbook/ContactGridLayout.h"

namespace ktrv::forms {

ItemDeletion::ItemDeletion(Workplace& place, const BookPanes& panes)
    : place_(place), panes_(panes), statements_(place.Database) {}

ItemDeletion::~ItemDeletion() {
  Stop();
}

void ItemDeletion::Delete() {
  if (panes_.Tree.HasFocus()) return DeleteNode();
  const CurrentNode node = panes_.Folders.Current();
  if (node.Key == NodeKey::Shared && place_.User.Rights == UserType::GeneralUser) return;
  DeleteRows(node);
}

bool ItemDeletion::Confirm(StringView question, std::int32_t buttons, std::int16_t wanted) {
  const std::int16_t answer = place_.Services.ShowMessage(
      question, buttons | MessageStyle::Question | MessageStyle::DefaultButton2);
  // If the window was unloaded meanwhile, the answer no longer applies.
  return answer == wanted && panes_.Window.IsLoaded();
}

bool ItemDeletion::ConfirmItems() {
  return Confirm(u"Are you sure you want to delete the selected item(s)?", MessageStyle::YesNo,
                 MessageAnswer::Yes);
}

void ItemDeletion::DeleteNode() {
  const controls::TreeNode* node = panes_.ChosenNode();
  if (!node) return panes_.Note(Messages::kNothingSelected);
  const String key = node->Key;
  if (key == NodeKey::Shared || key == NodeKey::Main)
    return panes_.Say(u"The item cannot be deleted.");
  if (!node->Children.empty()) return SayThatGroupsRemain();
  // Another user may have added groups, or the tree may be incomplete after a failure.
  if (HoldsUnseenGroups(key) || !ConfirmItems()) return;
  if (DeleteItemOf(key)) RemoveNode(key);
}

void ItemDeletion::SayThatGroupsRemain() {
  place_.Services.ShowMessage(
      u"Selected folder contains group(s) under it. Remove all group(s) first to delete selected "
      u"folder.",
      MessageStyle::Critical);
}

bool ItemDeletion::HoldsUnseenGroups(const String& key) {
  if (NodeKey::KindOf(key) != NodeKey::SharedFolder) return false;
  if (!statements_.HoldsGroups(NodeKey::IdOf(key))) return false;
  ShowUnseenGroups();
  return true;
}

void ItemDeletion::ShowUnseenGroups() {
  SayThatGroupsRemain();
  if (panes_.Window.IsLoaded()) panes_.RebuildTree();
}

bool ItemDeletion::DeleteItemOf(const String& key) {
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

void ItemDeletion::RemoveNode(const String& key) {
  controls::TreeView& tree = panes_.Tree;
  if (controls::TreeNode* node = tree.Find(key)) tree.Remove(*node);
  tree.Refresh();
  if (controls::TreeNode* next = tree.SelectedNode()) {
    tree.UserClicks(*next);
  } else {
    panes_.LoadContacts();  // the list may show deleted items
  }
  // This click was not made with a mouse button, so it must not open a menu.
  panes_.Folders.TakeClick();
}

void ItemDeletion::DeleteRows(const CurrentNode& node) {
  const controls::FlexGrid& grid = panes_.Grid;
  // There may be a selection without a current row, e.g. after Ctrl+A.
  if (!ContactGridLayout::HasRows(grid) || grid.Selection().Count() == 0) {
    return panes_.Say(u"No item(s) selected for deletion.");
  }
  const StringView kind = NodeKey::KindOf(node.Key);
  if (node.Key != NodeKey::Shared && kind != NodeKey::SharedFolder &&
      kind != NodeKey::SharedGroup) {
    return panes_.Note(u"Remote contacts can be deleted from TALVERO only.");
  }
  // Rows may arrive while the question is open. Only rows selected before it are deleted.
  std::vector<ListedItem> items = ContactGridLayout::SelectedItems(grid);
  if (!ConfirmItems()) return;
  rows_ =
      std::make_shared<RowDeletion>(place_.Services, place_.Database, kContext, std::move(items));
  rows_->Progress = [this, all = rows_->Count()](std::size_t done) {
    constexpr int kTextPanel = 1;
    panes_.Status.SetPanelText(kTextPanel, u"Deleting item(s): " +
                                               ToDecimal(static_cast<std::int64_t>(done)) +
                                               u" of " + ToDecimal(static_cast<std::int64_t>(all)));
  };
  rows_->Done = [this] { Finish(); };
  rows_->Run();
}

void ItemDeletion::Finish() {
  const auto deletion = std::exchange(rows_, nullptr);
  if (deletion->HasDeletedGroup()) panes_.Folders.Build();
  panes_.LoadContacts();
}

void ItemDeletion::Stop() {
  if (!rows_) return;
  rows_->Stop();
  rows_.reset();
}

}  // namespace ktrv::forms
