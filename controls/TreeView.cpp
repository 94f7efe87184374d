#include "controls/TreeView.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "common/Error.h"

namespace ktrv::controls {
namespace {

void Collect(TreeNode& node, std::unordered_set<const TreeNode*>& nodes) {
  nodes.insert(&node);
  for (TreeNode* child : node.Children) Collect(*child, nodes);
}

bool IsBelow(const TreeNode* node, const TreeNode& ancestor) {
  for (; node; node = node->Parent) {
    if (node->Parent == &ancestor) return true;
  }
  return false;
}

}  // namespace

TreeView::TreeView(Form& form, Rectangle bounds, std::vector<Image> images)
    : ControlOf(form, bounds), images_(std::move(images)) {}

TreeNode& TreeView::Add(StringView parentKey, String key, String text, int imageIndex,
                        int selectedImageIndex) {
  TreeNode* parent = nullptr;
  if (!parentKey.empty()) {
    parent = Find(parentKey);
    if (!parent) throw Error(ErrorNumber::ElementNotFound);
  }
  if (Find(key)) throw Error(ErrorNumber::KeyNotUnique, u"Key is not unique in collection");
  TreeNode& node = *nodes_.emplace_back(std::make_unique<TreeNode>());
  node.Key = std::move(key);
  node.Text = std::move(text);
  node.ImageIndex = imageIndex;
  node.SelectedImageIndex = selectedImageIndex;
  node.Parent = parent;
  byKey_.emplace(node.Key, &node);
  if (parent) parent->Children.push_back(&node);
  if (peer_) peer_->NodeAdded(node);
  return node;
}

void TreeView::Remove(TreeNode& node) {
  std::unordered_set<const TreeNode*> gone;
  Collect(node, gone);
  if (selected_ && gone.contains(selected_)) Select(Neighbour(node));
  if (peer_) peer_->NodeRemoving(node);
  if (node.Parent) std::erase(node.Parent->Children, &node);
  for (const TreeNode* each : gone) byKey_.erase(each->Key);
  std::erase_if(nodes_, [&](const auto& each) { return gone.contains(each.get()); });
}

TreeNode* TreeView::Neighbour(const TreeNode& node) const {
  std::vector<TreeNode*> siblings;
  for (const auto& each : nodes_) {
    if (each->Parent == node.Parent) siblings.push_back(each.get());
  }
  const auto place = std::find(siblings.begin(), siblings.end(), &node);
  if (std::next(place) != siblings.end()) return *std::next(place);
  return place != siblings.begin() ? *std::prev(place) : node.Parent;
}

void TreeView::Clear() {
  selected_ = nullptr;
  byKey_.clear();
  nodes_.clear();
  if (peer_) peer_->Cleared();
}

TreeNode* TreeView::Find(StringView key) const {
  const auto found = byKey_.find(String(key));
  return found == byKey_.end() ? nullptr : found->second;
}

TreeNode& TreeView::At(int index) const {
  if (index < 1 || index > Count()) {
    throw Error(ErrorNumber::SubscriptOutOfRange, u"Index out of bounds");
  }
  return *nodes_[static_cast<std::size_t>(index - 1)];
}

void TreeView::Select(TreeNode* node) {
  if (node == selected_) return;
  selected_ = node;
  if (peer_) peer_->SelectionChanged();
}

void TreeView::SetText(TreeNode& node, String text) {
  node.Text = std::move(text);
  if (peer_) peer_->NodeTextChanged(node);
}

void TreeView::SetExpanded(TreeNode& node, bool expanded) {
  if (node.Expanded == expanded) return;
  node.Expanded = expanded;
  if (peer_) peer_->NodeExpandedChanged(node);
  if (!expanded && IsBelow(selected_, node)) Select(&node);
  ReportExpanded(node);
}

void TreeView::SetRedraw(bool redraw) {
  if (redraw == redraw_) return;
  redraw_ = redraw;
  if (peer_) peer_->RedrawChanged();
}

void TreeView::UserExpands(TreeNode& node, bool expanded) {
  if (node.Expanded == expanded) return;
  node.Expanded = expanded;
  ReportExpanded(node);
  if (!expanded && IsBelow(selected_, node)) UserClicks(node);
}

void TreeView::ReportExpanded(TreeNode& node) {
  if (node.Children.empty()) return;
  const auto& event = node.Expanded ? Expand : Collapse;
  if (event) event(node);
}

void TreeView::UserClicks(TreeNode& node) {
  selected_ = &node;
  if (NodeClick) NodeClick(node);
}

void TreeView::UserPresses(std::int16_t keyCode, std::int16_t shift) {
  if (KeyDown) KeyDown(keyCode, shift);
}

void TreeView::UserReleases(MouseButton button, std::int16_t shift, int x, int y) {
  if (MouseUp) MouseUp(button, shift, x, y);
}

}  // namespace ktrv::controls
