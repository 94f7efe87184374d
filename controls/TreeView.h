#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "controls/Control.h"
#include "controls/Image.h"

namespace ktrv::controls {

/// A node of a tree view. Owned by the tree; destroyed by Remove or Clear.
struct TreeNode {
  String Key;
  String Text;
  String Tag;
  int ImageIndex = 0;          ///< 1-based index in the tree's image list; 0 for none
  int SelectedImageIndex = 0;  ///< 0: same as ImageIndex
  TreeNode* Parent = nullptr;
  std::vector<TreeNode*> Children;
  bool Expanded = false;  ///< may be set before children exist; they are visible then
};

class TreeViewPeer : public ControlPeer {
 public:
  virtual void NodeAdded(TreeNode& node) = 0;
  /// The node and its descendants are about to be removed.
  virtual void NodeRemoving(TreeNode& node) = 0;
  virtual void Cleared() = 0;
  virtual void NodeTextChanged(TreeNode& node) = 0;
  virtual void NodeExpandedChanged(TreeNode& node) = 0;
  virtual void SelectionChanged() = 0;
  /// The first visible node; null if there is none.
  virtual TreeNode* TopNode() const { return nullptr; }
  /// Scrolls so that the node is the first visible one, as far as there are nodes below it.
  virtual void TopNodeChanged(TreeNode& /*node*/) {}
  virtual void RedrawChanged() {}
  /// The node at this point, in twips relative to the tree; null for none. Scrolls near the edges
  /// and expands a node that is pointed at for a while.
  virtual TreeNode* DraggedOver(int /*x*/, int /*y*/) { return nullptr; }
  virtual void DropTargetChanged(TreeNode* /*node*/) {}
};

/// A tree of nodes with unique keys, in insertion order.
class TreeView final : public ControlOf<TreeView, TreeViewPeer> {
 public:
  /// \param images the image list; indices start at 1
  TreeView(Form& form, Rectangle bounds, std::vector<Image> images);

  std::function<void(TreeNode& node)> NodeClick;
  std::function<void(TreeNode& node)> Collapse;
  std::function<void(TreeNode& node)> Expand;
  std::function<void(std::int16_t keyCode, std::int16_t shift)> KeyDown;
  /// Position in twips relative to the tree. The right button is reported only over nodes.
  std::function<void(MouseButton button, std::int16_t shift, int x, int y)> MouseUp;

  /// Appends a node to its parent. \param parentKey empty for the top level. \throws Error
  /// ElementNotFound if there is no such parent, KeyNotUnique if the key exists
  TreeNode& Add(StringView parentKey, String key, String text, int imageIndex,
                int selectedImageIndex = 0);
  /// Removes the node and its descendants. If one of them was selected, selects the next sibling,
  /// else the previous one, else the parent, without an event.
  void Remove(TreeNode& node);
  void Clear();

  /// The node with this key; null if there is none.
  TreeNode* Find(StringView key) const;
  int Count() const { return static_cast<int>(nodes_.size()); }
  /// The node at a 1-based index in insertion order of the whole tree. \throws Error
  /// SubscriptOutOfRange
  TreeNode& At(int index) const;

  TreeNode* SelectedNode() const { return selected_; }
  /// Selects the node (null: none) without an event.
  void Select(TreeNode* node);
  void SetText(TreeNode& node, String text);
  /// Raises Expand or Collapse if the state of a node with children changes. Collapsing an ancestor
  /// of the selected node selects the ancestor, without NodeClick.
  void SetExpanded(TreeNode& node, bool expanded);

  /// The first visible node; null without a display.
  TreeNode* TopNode() const { return peer_ ? peer_->TopNode() : nullptr; }
  /// Scrolls so that the node is the first visible one, as far as there are nodes below it.
  void SetTopNode(TreeNode& node) {
    if (peer_) peer_->TopNodeChanged(node);
  }
  /// Something is dragged over the tree. \param x, y twips relative to the tree \return the node
  /// there; null for none, and without a display. Scrolls near the edges and expands a node that is
  /// pointed at for a while.
  TreeNode* DraggedOver(int x, int y) { return peer_ ? peer_->DraggedOver(x, y) : nullptr; }
  /// Marks the node on which something may be dropped; null: none.
  void SetDropTarget(TreeNode* node) {
    if (peer_) peer_->DropTargetChanged(node);
  }
  /// False suspends painting until it is set to true; calls do not nest.
  void SetRedraw(bool redraw);
  bool Redraw() const { return redraw_; }

  const std::vector<Image>& Images() const { return images_; }

  /// The user clicked the node or moved to it by keyboard. Selects it and raises NodeClick.
  void UserClicks(TreeNode& node);
  /// The user expanded or collapsed the node. Collapsing an ancestor of the selected node selects
  /// the ancestor and raises NodeClick, because a hidden node must not stay selected.
  void UserExpands(TreeNode& node, bool expanded);
  void UserPresses(std::int16_t keyCode, std::int16_t shift);
  void UserReleases(MouseButton button, std::int16_t shift, int x, int y);

 private:
  /// The node to select when this one is removed; null for none.
  TreeNode* Neighbour(const TreeNode& node) const;
  void ReportExpanded(TreeNode& node);

  std::vector<Image> images_;
  std::vector<std::unique_ptr<TreeNode>> nodes_;
  std::unordered_map<String, TreeNode*> byKey_;
  TreeNode* selected_ = nullptr;
  bool redraw_ = true;
};

}  // namespace ktrv::controls
