#pragma once

#include <unordered_map>

#include "controls/TreeView.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Drawing.h"

namespace ktrv::windows {

class TreeViewWindow final : public Peer<controls::TreeViewPeer> {
 public:
  TreeViewWindow(FormWindow& form, controls::TreeView& tree);

  void NodeAdded(controls::TreeNode& node) override;
  void NodeRemoving(controls::TreeNode& node) override;
  void Cleared() override;
  void NodeTextChanged(controls::TreeNode& node) override;
  void NodeExpandedChanged(controls::TreeNode& node) override;
  void SelectionChanged() override;

  std::optional<LRESULT> OnNotify(NMHDR& header) override;
  void OnScaleChanged() override;

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void AfterMessage(UINT message) override;

 private:
  HTREEITEM ItemOf(const controls::TreeNode& node) const;
  static controls::TreeNode* NodeOf(LPARAM data);
  /// The node on whose picture or text the point lies, in pixels of the tree.
  controls::TreeNode* NodeAt(POINT place) const;
  void Expand(const controls::TreeNode& node);
  void Forget(const controls::TreeNode& node);
  void OnSelected(const NMTREEVIEWW& change);
  void OnLeftClick();
  void OnRightClick();
  void OnMenuKey();
  /// Without a selected node the system's tree moves nowhere. \return whether the key chose the
  /// first node.
  bool Enter(WPARAM key);
  void Release(controls::MouseButton button, POINT place);

  controls::TreeView& tree_;
  UniqueImageList images_;
  std::unordered_map<const controls::TreeNode*, HTREEITEM> items_;
  int changing_ = 0;            ///< more than 0 while the form, not the user, changes the tree
  bool clickReported_ = false;  ///< since the left button went down
};

}  // namespace ktrv::windows
