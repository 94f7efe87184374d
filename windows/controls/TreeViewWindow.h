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
  /// The node whose image or text is at the point. \param place pixels in the tree view
  controls::TreeNode* NodeAt(POINT place) const;
  void Expand(const controls::TreeNode& node);
  void Forget(const controls::TreeNode& node);
  void OnSelected(const NMTREEVIEWW& change);
  void OnLeftClick();
  void OnRightClick();
  void OnMenuKey();
  /// The system's tree view does not navigate without a selected node; selects the first one.
  /// \return whether it did
  bool Enter(WPARAM key);
  void Release(controls::MouseButton button, POINT place);

  controls::TreeView& tree_;
  UniqueImageList images_;
  std::unordered_map<const controls::TreeNode*, HTREEITEM> items_;
  int changing_ = 0;            ///< > 0 while the program, not the user, changes the tree
  bool clickReported_ = false;  ///< since the left button was pressed
};

}  // namespace ktrv::windows
