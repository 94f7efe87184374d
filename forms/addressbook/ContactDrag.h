#pragma once

#include <functional>
#include <vector>

#include "controls/FlexGrid.h"
#include "controls/TreeView.h"
#include "forms/addressbook/ListedItem.h"

namespace ktrv::forms {

/// Dragging of contacts from the list onto a group of the tree.
class ContactDrag {
 public:
  /// Handles the drag events of the list. Both must outlive the object.
  ContactDrag(controls::FlexGrid& list, controls::TreeView& tree);
  ContactDrag(const ContactDrag&) = delete;
  ContactDrag& operator=(const ContactDrag&) = delete;

  /// The user has dropped rows on a group. \param groupKey key of the node that was marked at the
  /// end \param items the rows that were selected when the drag began: the list may have been
  /// loaded again since
  std::function<void(const String& groupKey, const std::vector<ListedItem>& items)> Dropped;
  /// Forgets a drag whose end the list has not reported: the window was closed during it.
  void Cancel() { End(false); }

 private:
  bool Over(int x, int y);
  void End(bool dropped);

  controls::FlexGrid& list_;
  controls::TreeView& tree_;
  bool running_ = false;
  std::vector<ListedItem> items_;
  String groupKey_;  ///< of the marked node; empty for none
};

}  // namespace ktrv::forms
