#include "forms/addressbook/ContactDrag.h"

#include <utility>

#include "forms/addressbook/ContactGridLayout.h"
#include "forms/addressbook/CurrentNode.h"

namespace ktrv::forms {

ContactDrag::ContactDrag(controls::FlexGrid& list, controls::TreeView& tree)
    : list_(list), tree_(tree) {
  list_.DragOver = [this](int x, int y) { return Over(x, y); };
  list_.DragEnd = [this](bool dropped) { End(dropped); };
}

bool ContactDrag::Over(int x, int y) {
  if (!running_) items_ = ContactGridLayout::SelectedItems(list_);
  running_ = true;
  controls::TreeNode* node =
      items_.empty() ? nullptr : tree_.DraggedOver(x - tree_.Left(), y - tree_.Top());
  if (node && NodeKey::KindOf(node->Key) != NodeKey::SharedGroup) node = nullptr;
  groupKey_ = node ? node->Key : String();
  tree_.SetDropTarget(node);
  return node != nullptr;
}

void ContactDrag::End(bool dropped) {
  running_ = false;
  tree_.SetDropTarget(nullptr);
  const std::vector<ListedItem> items = std::exchange(items_, {});
  const String groupKey = std::exchange(groupKey_, {});
  if (dropped && !groupKey.empty() && Dropped) Dropped(groupKey, items);
}

}  // namespace ktrv::forms
