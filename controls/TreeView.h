#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "controls/Control.h"
#include "controls/Image.h"

namespace ktrv::controls {

/// An item of a tree view. Belongs to the tree; gone when it or the tree's items are removed.
struct TreeNode {
  String Key;
  String Text;
  String Tag;
  int ImageIndex = 0;          ///< index in the tree's image list, from 1; 0 for none
  int SelectedImageIndex = 0;  ///< 0: as ImageIndex
  TreeNode* Parent = nullptr;
  std::vector<TreeNode*> Children;
  bool Expanded = false;  ///< may be set before there are children, which then show at once
};

class TreeViewPeer : public ControlPeer {
 public:
  virtual void NodeAdded(TreeNode& node) = 0;
  /// The node and all below it are about to go.
  virtual void NodeRemoving(TreeNode& node) = 0;
  virtual void Cleared() = 0;
  virtual void NodeTextChanged(TreeNode& node) = 0;
  virtual void NodeExpandedChanged(TreeNode& node) = 0;
  virtual void SelectionChanged() = 0;
};

/// A tree of nodes with unique keys, in insertion order.
class TreeView final : public ControlOf<TreeViewPeer> {
 public:
  /// \param images pictures of the indexes from 1 on.
  TreeView(Form& form, Rectangle bounds, std::vector<Image> images);

  std::function<void(TreeNode& node)> NodeClick;
  std::function<void(TreeNode& node)> Collapse;
  std::function<void(TreeNode& node)> Expand;
  std::function<void(std::int16_t keyCode, std::int16_t shift)> KeyDown;
  /// Position in twips from the tree's left and top. The right button is reported over nodes only.
  std::function<void(MouseButton button, std::int16_t shift, int x, int y)> MouseUp;

  /// Adds a node behind the others of its parent. \param parentKey empty for the top level.
  /// \throws Error ElementNotFound when there is no such parent, KeyNotUnique when the key is
  /// taken.
  TreeNode& Add(StringView parentKey, String key, String text, int imageIndex,
                int selectedImageIndex = 0);
  /// Takes the node and all below it away. When it or one below it was selected, its next sibling,
  /// else the previous one, else the parent is selected, without an event.
  void Remove(TreeNode& node);
  void Clear();

  /// Null when there is no node of this key.
  TreeNode* Find(StringView key) const;
  int Count() const { return static_cast<int>(nodes_.size()); }
  /// In insertion order over the whole tree, counted from 1. \throws Error SubscriptOutOfRange
  TreeNode& At(int index) const;

  TreeNode* SelectedNode() const { return selected_; }
  /// Selects the node (null: none) without an event.
  void Select(TreeNode* node);
  void SetText(TreeNode& node, String text);
  /// Reports Expand or Collapse when it changes a node that has children, as the user's own click
  /// does. Collapsed above the selected node it is selected in its place, without a click.
  void SetExpanded(TreeNode& node, bool expanded);

  const std::vector<Image>& Images() const { return images_; }

  /// The user clicked the node or moved to it with the keyboard: it is selected and NodeClick
  /// reported.
  void UserClicks(TreeNode& node);
  /// The user expanded or collapsed the node. Collapsed above the selected one it is selected in
  /// its place, which counts as a click: a node that nobody sees must not stay the chosen one.
  void UserExpands(TreeNode& node, bool expanded);
  void UserPresses(std::int16_t keyCode, std::int16_t shift);
  void UserReleases(MouseButton button, std::int16_t shift, int x, int y);

  void Realise(PeerFactory& factory) override;

 private:
  /// The node that is selected when this one goes; null for none.
  TreeNode* Neighbour(const TreeNode& node) const;
  void ReportExpanded(TreeNode& node);

  std::vector<Image> images_;
  std::vector<std::unique_ptr<TreeNode>> nodes_;
  std::unordered_map<String, TreeNode*> byKey_;
  TreeNode* selected_ = nullptr;
};

}  // namespace ktrv::controls
