#include <windows.h>
#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <unordered_map>

#include "controls/TreeView.h"
#include "windows/base/WideText.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Drawing.h"
#include "windows/controls/Keys.h"
#include "windows/controls/Nesting.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

using controls::MouseButton;
using controls::TreeNode;

namespace {

POINT Pointer(HWND window) {
  const DWORD place = GetMessagePos();
  POINT point{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
  ScreenToClient(window, &point);
  return point;
}

class TreeViewWindow final : public Peer<controls::TreeViewPeer> {
 public:
  TreeViewWindow(FormWindow& form, controls::TreeView& tree) : Peer(form, tree), tree_(tree) {
    Create(WC_TREEVIEWW,
           WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS |
               TVS_DISABLEDRAGDROP | TVS_INFOTIP,
           WS_EX_CLIENTEDGE);
    OnScaleChanged();
    for (int index = 1; index <= tree.Count(); ++index) NodeAdded(tree.At(index));
    SelectionChanged();
  }

  void NodeAdded(controls::TreeNode& node) override {
    if (!Handle()) return;
    const Nesting changing(changing_);
    std::wstring text = ToWide(node.Text);
    TVINSERTSTRUCTW insert{};
    insert.hParent = node.Parent ? ItemOf(*node.Parent) : TVI_ROOT;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    insert.item.pszText = text.data();
    insert.item.lParam = reinterpret_cast<LPARAM>(&node);
    insert.item.iImage = node.ImageIndex > 0 ? node.ImageIndex - 1 : I_IMAGENONE;
    insert.item.iSelectedImage =
        node.SelectedImageIndex > 0 ? node.SelectedImageIndex - 1 : insert.item.iImage;
    const auto item = reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, &insert));
    items_[&node] = item;
    // An item can be expanded only after it has children.
    const bool isFirst =
        Send(TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(insert.hParent)) ==
        reinterpret_cast<LRESULT>(item);
    if (node.Parent && node.Parent->Expanded && isFirst) Expand(*node.Parent);
  }
  void NodeRemoving(controls::TreeNode& node) override {
    const Nesting changing(changing_);
    Send(TVM_DELETEITEM, 0, ItemOf(node));
    Forget(node);
    SelectionChanged();
  }
  void Cleared() override {
    const Nesting changing(changing_);
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    items_.clear();
  }
  void NodeTextChanged(controls::TreeNode& node) override {
    std::wstring text = ToWide(node.Text);
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = ItemOf(node);
    item.pszText = text.data();
    Send(TVM_SETITEMW, 0, &item);
  }
  void NodeExpandedChanged(controls::TreeNode& node) override { Expand(node); }
  void SelectionChanged() override {
    const Nesting changing(changing_);
    const TreeNode* selected = tree_.SelectedNode();
    Send(TVM_SELECTITEM, TVGN_CARET,
         reinterpret_cast<LPARAM>(selected ? ItemOf(*selected) : nullptr));
  }

  TreeNode* TopNode() const override {
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    item.hItem = reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE));
    return item.hItem && Send(TVM_GETITEMW, 0, &item) ? NodeOf(item.lParam) : nullptr;
  }
  void TopNodeChanged(controls::TreeNode& node) override {
    Send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(ItemOf(node)));
  }
  void RedrawChanged() override {
    if (!Handle()) return;
    Send(WM_SETREDRAW, tree_.Redraw());
    if (!tree_.Redraw()) return;
    // WM_SETREDRAW makes a hidden window visible.
    ShowVisible();
    RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
  }

  TreeNode* DraggedOver(int x, int y) override {
    RECT outer{};
    GetWindowRect(Handle(), &outer);
    POINT place{outer.left + CurrentScale().ToPixels(x), outer.top + CurrentScale().ToPixels(y)};
    const bool isSeen = WindowFromPoint(place) == Handle();  // no other window covers it
    ScreenToClient(Handle(), &place);
    if (isSeen) ShowNeighboursOf(NodeAt(place));
    TreeNode* node = isSeen ? NodeAt(place) : nullptr;  // another one if that has scrolled
    if (node != std::exchange(draggedOver_, node)) draggedSince_ = GetTickCount64();
    if (!node) return nullptr;
    constexpr ULONGLONG kPause = 700;  // milliseconds
    if (!node->Expanded && !node->Children.empty() && GetTickCount64() - draggedSince_ >= kPause) {
      tree_.SetExpanded(*node, true);
    }
    return node;
  }
  void DropTargetChanged(controls::TreeNode* node) override {
    Send(TVM_SELECTITEM, TVGN_DROPHILITE, reinterpret_cast<LPARAM>(node ? ItemOf(*node) : nullptr));
  }

  std::optional<LRESULT> OnNotify(NMHDR& header) override {
    switch (header.code) {
      case TVN_SELCHANGEDW:
        OnSelected(reinterpret_cast<const NMTREEVIEWW&>(header));
        return 0;
      case TVN_ITEMEXPANDEDW: {
        const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
        TreeNode* node = NodeOf(change.itemNew.lParam);
        if (changing_ == 0 && node) tree_.UserExpands(*node, change.action == TVE_EXPAND);
        return 0;
      }
      case NM_CLICK:
        OnLeftClick();
        return 0;
      case NM_RCLICK:
        OnRightClick();
        return 1;  // suppresses WM_CONTEXTMENU: the form shows its menu itself
      case TVN_KEYDOWN:
        tree_.UserPresses(static_cast<std::int16_t>(reinterpret_cast<NMTVKEYDOWN&>(header).wVKey),
                          HeldKeys());
        return 0;
      default:
        return std::nullopt;
    }
  }
  AccessiblePart Describe() const override { return {.Role = ROLE_SYSTEM_OUTLINE}; }
  int PartCount() const override { return tree_.Count(); }
  AccessiblePart Part(int number) const override;
  int PartAt(POINT place) const override { return NumberOf(NodeAt(place)); }
  int FocusedPart() const override { return NumberOf(tree_.SelectedNode()); }

  void OnScaleChanged() override {
    UniqueImageList former =
        std::exchange(images_, DrawImageList(tree_.Images(), CurrentScale().Units(16)));
    Send(TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images_.Get()));
    Send(TVM_SETITEMHEIGHT, static_cast<WPARAM>(-1));  // reset to the default for font and images
    const auto height = Send(TVM_GETITEMHEIGHT);
    Send(TVM_SETITEMHEIGHT, static_cast<WPARAM>(height + CurrentScale().Units(3)));
  }

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == WM_LBUTTONDOWN) clickReported_ = false;
    if (message == WM_KEYDOWN && Enter(wParam)) return 0;
    if (message == WM_CONTEXTMENU && lParam == -1) {
      OnMenuKey();
      return 0;
    }
    return std::nullopt;
  }
  void AfterMessage(UINT message) override {
    // When it gets the focus, the system's tree view selects its first item, which the user did not
    // select.
    if (message == WM_SETFOCUS && !tree_.SelectedNode()) SelectionChanged();
  }

 private:
  HTREEITEM ItemOf(const controls::TreeNode& node) const {
    const auto found = items_.find(&node);
    return found == items_.end() ? nullptr : found->second;
  }
  /// Scrolls so that the lines above and below the node are visible.
  void ShowNeighboursOf(const controls::TreeNode* node) {
    if (!node) return;
    for (const WPARAM neighbour : {WPARAM{TVGN_PREVIOUSVISIBLE}, WPARAM{TVGN_NEXTVISIBLE}}) {
      const LRESULT item =
          Send(TVM_GETNEXTITEM, neighbour, reinterpret_cast<LPARAM>(ItemOf(*node)));
      if (item) Send(TVM_ENSUREVISIBLE, 0, item);
    }
  }
  /// The number of a node in the tree, from 1; 0 for null.
  int NumberOf(const controls::TreeNode* node) const {
    int number = node ? tree_.Count() : 0;
    while (number > 0 && &tree_.At(number) != node) --number;
    return number;
  }
  /// Its text; empty if it is not visible.
  RECT PlaceOf(const controls::TreeNode& node) const {
    // TVM_GETITEMRECT reads the item from the start of the result buffer.
    RECT text{};
    const HTREEITEM item = ItemOf(node);
    std::memcpy(&text, &item, sizeof(HTREEITEM));
    return Send(TVM_GETITEMRECT, TRUE, &text) ? text : RECT{};
  }
  static controls::TreeNode* NodeOf(LPARAM data) { return reinterpret_cast<TreeNode*>(data); }
  /// The node whose image or text is at the point. \param place pixels in the tree view
  controls::TreeNode* NodeAt(POINT place) const {
    TVHITTESTINFO test{};
    test.pt = place;
    Send(TVM_HITTEST, 0, &test);
    if (!test.hItem || !(test.flags & TVHT_ONITEM)) return nullptr;
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    item.hItem = test.hItem;
    Send(TVM_GETITEMW, 0, &item);
    return NodeOf(item.lParam);
  }
  void Expand(const controls::TreeNode& node) {
    const Nesting changing(changing_);
    Send(TVM_EXPAND, node.Expanded ? TVE_EXPAND : TVE_COLLAPSE,
         reinterpret_cast<LPARAM>(ItemOf(node)));
  }
  void Forget(const controls::TreeNode& node) {
    items_.erase(&node);
    for (const TreeNode* child : node.Children) Forget(*child);
  }
  void OnSelected(const NMTREEVIEWW& change) {
    if (changing_ > 0 || change.action == TVC_UNKNOWN) return;
    TreeNode* node = NodeOf(change.itemNew.lParam);
    if (!change.itemNew.hItem || !node) return;
    // The order of TVN_SELCHANGED and NM_CLICK differs between implementations.
    if (change.action == TVC_BYMOUSE && std::exchange(clickReported_, true)) return;
    tree_.UserClicks(*node);
  }
  void OnLeftClick() {
    const POINT place = Pointer(Handle());
    TreeNode* node = NodeAt(place);
    // Already reported if the click changed the selection; a click on the selected node is reported
    // too.
    if (node && !std::exchange(clickReported_, true)) tree_.UserClicks(*node);
    Release(MouseButton::Left, place);
  }
  void OnRightClick() {
    const POINT place = Pointer(Handle());
    TreeNode* node = NodeAt(place);
    // No menu outside the nodes, even if a node was selected by keyboard since the last click.
    if (!node) return;
    SetFocus(Handle());
    tree_.Select(node);
    tree_.UserClicks(*node);
    Release(MouseButton::Right, place);
  }
  void OnMenuKey() {
    TreeNode* node = tree_.SelectedNode();
    if (!node) return;
    const RECT text = PlaceOf(*node);
    tree_.UserClicks(*node);
    Release(MouseButton::Right, {text.left, text.bottom});
  }
  /// The system's tree view does not navigate without a selected node; selects the first one.
  /// \return whether it did
  bool Enter(WPARAM key) {
    constexpr WPARAM kWays[] = {VK_DOWN, VK_UP, VK_HOME, VK_END, VK_PRIOR, VK_NEXT, VK_RIGHT};
    const bool isWay = std::find(std::begin(kWays), std::end(kWays), key) != std::end(kWays);
    if (!isWay || tree_.SelectedNode() || tree_.Count() == 0) return false;
    TreeNode& first = tree_.At(1);
    tree_.Select(&first);
    tree_.UserClicks(first);
    return true;
  }
  void Release(controls::MouseButton button, POINT place) {
    tree_.UserReleases(button, HeldKeys(), CurrentScale().ToTwips(place.x),
                       CurrentScale().ToTwips(place.y));
  }

  controls::TreeView& tree_;
  UniqueImageList images_;
  std::unordered_map<const controls::TreeNode*, HTREEITEM> items_;
  /// The node over which something was dragged last; only compared. Since then, in milliseconds.
  const controls::TreeNode* draggedOver_ = nullptr;
  ULONGLONG draggedSince_ = 0;
  int changing_ = 0;            ///< > 0 while the program, not the user, changes the tree
  bool clickReported_ = false;  ///< since the left button was pressed
};

AccessiblePart TreeViewWindow::Part(int number) const {
  const TreeNode& node = tree_.At(number);
  AccessiblePart told{.Role = ROLE_SYSTEM_OUTLINEITEM,
                      .State = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE,
                      .Name = ToWide(node.Text),
                      .Place = PlaceOf(node)};
  if (!node.Children.empty()) {
    told.State |= node.Expanded ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED;
  }
  if (&node == tree_.SelectedNode()) {
    told.State |= STATE_SYSTEM_SELECTED;
    if (GetFocus() == Handle()) told.State |= STATE_SYSTEM_FOCUSED;
  }
  int level = 0;
  for (const TreeNode* above = node.Parent; above; above = above->Parent) {
    ++level;
    if (!above->Expanded) told.State |= STATE_SYSTEM_INVISIBLE;
  }
  told.Value = std::to_wstring(level);  // as the system's own trees do
  return told;
}

}  // namespace

std::unique_ptr<controls::TreeViewPeer> WindowFactory::Make(controls::TreeView& control) {
  return std::make_unique<TreeViewWindow>(form_, control);
}

}  // namespace ktrv::windows
