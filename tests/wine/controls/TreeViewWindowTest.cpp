#include <cstring>
#include <gtest/gtest.h>

#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"

namespace ktrv::windows {
namespace {

class ATreeWindow : public testing::Test {
 protected:
  ATreeWindow() {
    form_.Tree.NodeClick = [this](controls::TreeNode& node) { clicked_.push_back(node.Key); };
    form_.Show();
    Pump();
  }

  HWND Tree() const { return WindowOf(form_.Tree); }
  HTREEITEM Child(int place) const {
    HTREEITEM item = TreeView_GetChild(Tree(), TreeView_GetRoot(Tree()));
    while (place-- > 1) item = TreeView_GetNextSibling(Tree(), item);
    return item;
  }
  POINT TextOf(HTREEITEM item) const {
    RECT text{};
    std::memcpy(&text, &item, sizeof(HTREEITEM));
    SendMessageW(Tree(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&text));
    return {text.left + 4, (text.top + text.bottom) / 2};
  }
  /// The [-] or [+] before the root.
  POINT RootsButton() const {
    const auto indent = static_cast<LONG>(SendMessageW(Tree(), TVM_GETINDENT, 0, 0));
    return {indent / 2, TextOf(TreeView_GetRoot(Tree())).y};
  }
  POINT EmptySpace() const {
    RECT inside{};
    GetClientRect(Tree(), &inside);
    return {inside.right - 5, inside.bottom - 5};
  }
  /// The node for a drag that is at this place of the screen.
  controls::TreeNode* DraggedOver(POINT onScreen) {
    RECT outer{};
    GetWindowRect(Tree(), &outer);
    const Scale scale = Scale::Of(Tree());
    return form_.Tree.DraggedOver(scale.ToTwips(onScreen.x - outer.left),
                                  scale.ToTwips(onScreen.y - outer.top));
  }
  bool IsRootExpanded() const {
    return TreeView_GetItemState(Tree(), TreeView_GetRoot(Tree()), TVIS_EXPANDED) & TVIS_EXPANDED;
  }

  Win32Screen screen_;
  PlayForm form_{screen_};
  std::vector<String> clicked_;
};

TEST_F(ATreeWindow, HasTheFocusFirst) {
  EXPECT_EQ(GetFocus(), Tree());
}

TEST_F(ATreeWindow, ShowsTheChildrenOfAnExpandedNode) {
  EXPECT_EQ(TreeView_GetCount(Tree()), 3U);
  EXPECT_TRUE(IsRootExpanded());
}

TEST_F(ATreeWindow, ReportsEachClickOnANodeOnce) {
  LeftClick(Tree(), TextOf(Child(1)));
  LeftClick(Tree(), TextOf(Child(1)));
  EXPECT_EQ(clicked_, (std::vector<String>{u"SFLD1", u"SFLD1"}));
}

TEST_F(ATreeWindow, ReportsAMoveWithTheKeyboardAsAClick) {
  form_.Tree.Select(form_.Tree.Find(u"SFLD1"));
  PressKey(VK_DOWN);
  EXPECT_EQ(clicked_, std::vector<String>{u"SFLD2"});
}

TEST_F(ATreeWindow, ReportsNothingWhenTheFormSelects) {
  form_.Tree.Select(form_.Tree.Find(u"SFLD2"));
  EXPECT_EQ(TreeView_GetSelection(Tree()), Child(2));
  EXPECT_TRUE(clicked_.empty());
}

TEST_F(ATreeWindow, CountsARightClickAsAClickBeforeTheButtonIsReleased) {
  std::size_t clicksBefore = 0;
  form_.Tree.MouseUp = [&](controls::MouseButton button, std::int16_t, int, int) {
    if (button == controls::MouseButton::Right) clicksBefore = clicked_.size();
  };
  RightClick(Tree(), TextOf(Child(2)));
  EXPECT_EQ(clicked_, std::vector<String>{u"SFLD2"});
  EXPECT_EQ(clicksBefore, 1U);
  EXPECT_EQ(TreeView_GetSelection(Tree()), Child(2));
}

TEST_F(ATreeWindow, ReportsWhatTheUserExpandsAndCollapses) {
  int collapsed = 0;
  form_.Tree.Collapse = [&](controls::TreeNode&) { ++collapsed; };
  form_.Tree.Select(&form_.Tree.At(1));
  PressKey(VK_LEFT);
  EXPECT_EQ(collapsed, 1);
  EXPECT_FALSE(form_.Tree.At(1).Expanded);
}

TEST_F(ATreeWindow, ClicksTheNodeThatItSelectsWhenTheUserCollapsesItAboveTheSelectedOne) {
  LeftClick(Tree(), TextOf(Child(1)));
  clicked_.clear();
  LeftClick(Tree(), RootsButton());
  ASSERT_FALSE(IsRootExpanded());
  EXPECT_EQ(TreeView_GetSelection(Tree()), TreeView_GetRoot(Tree()));
  EXPECT_EQ(form_.Tree.SelectedNode(), &form_.Tree.At(1));
  EXPECT_EQ(clicked_, std::vector<String>{u"SHARED"});
}

TEST_F(ATreeWindow, ClicksNothingWhenTheUserCollapsesOrExpandsTheSelectedNode) {
  form_.Tree.Select(&form_.Tree.At(1));
  LeftClick(Tree(), RootsButton());
  ASSERT_FALSE(IsRootExpanded());
  LeftClick(Tree(), RootsButton());
  ASSERT_TRUE(IsRootExpanded());
  EXPECT_TRUE(clicked_.empty());
}

TEST_F(ATreeWindow, ClicksNothingWhenTheFormCollapsesIt) {
  form_.Tree.Select(form_.Tree.Find(u"SFLD1"));
  form_.Tree.SetExpanded(form_.Tree.At(1), false);
  ASSERT_FALSE(IsRootExpanded());
  EXPECT_TRUE(clicked_.empty());
}

TEST_F(ATreeWindow, ReportsNoRightButtonBesideTheNodes) {
  int released = 0;
  form_.Tree.MouseUp = [&](controls::MouseButton, std::int16_t, int, int) { ++released; };
  form_.Tree.Select(form_.Tree.Find(u"SFLD1"));
  PressKey(VK_DOWN);
  RightClick(Tree(), EmptySpace());
  EXPECT_EQ(released, 0);
}

TEST_F(ATreeWindow, ShowsNoNodeSelectedWhenItGetsTheFocusUntilTheFormOrTheUserSelectsOne) {
  EXPECT_EQ(TreeView_GetSelection(Tree()), nullptr);
  SetFocus(WindowOf(form_.Grid));
  SetFocus(Tree());
  EXPECT_EQ(TreeView_GetSelection(Tree()), nullptr);
  EXPECT_TRUE(clicked_.empty());
}

TEST_F(ATreeWindow, IsEnteredWithTheKeyboardAtItsFirstNode) {
  for (const WORD key : {WORD{VK_DOWN}, WORD{VK_UP}, WORD{VK_HOME}}) {
    form_.Tree.Select(nullptr);
    clicked_.clear();
    PressKey(key);
    EXPECT_EQ(clicked_, std::vector<String>{u"SHARED"}) << key;
    EXPECT_EQ(TreeView_GetSelection(Tree()), TreeView_GetRoot(Tree())) << key;
  }
}

TEST_F(ATreeWindow, KeepsTheFocusedNodeSelectedWhenItGetsTheFocusAgain) {
  form_.Tree.Select(form_.Tree.Find(u"SFLD2"));
  SetFocus(WindowOf(form_.Grid));
  SetFocus(Tree());
  EXPECT_EQ(TreeView_GetSelection(Tree()), Child(2));
}

TEST_F(ATreeWindow, GivesDeleteToTheForm) {
  int pressed = 0;
  form_.Tree.KeyDown = [&](std::int16_t key, std::int16_t) { pressed = key; };
  PressKey(VK_DELETE);
  EXPECT_EQ(pressed, 46);
}

TEST_F(ATreeWindow, LosesTheNodesThatTheFormRemoves) {
  form_.Tree.Remove(*form_.Tree.Find(u"SFLD1"));
  EXPECT_EQ(TreeView_GetCount(Tree()), 2U);
  form_.Tree.Clear();
  EXPECT_EQ(TreeView_GetCount(Tree()), 0U);
}

TEST_F(ATreeWindow, IsNotDraggedOverWhereAnotherWindowCoversIt) {
  POINT place = TextOf(Child(1));
  ClientToScreen(Tree(), &place);
  EXPECT_EQ(DraggedOver(place), form_.Tree.Find(u"SFLD1"));
  for (const DWORD disabled : {DWORD{0}, DWORD{WS_DISABLED}}) {
    HWND cover = CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, WC_EDITW, L"Another",
                                 WS_POPUP | WS_VISIBLE | disabled, place.x - 20, place.y - 20, 40,
                                 40, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(DraggedOver(place), nullptr) << disabled;
    DestroyWindow(cover);
    EXPECT_EQ(DraggedOver(place), form_.Tree.Find(u"SFLD1"));
  }
}

}  // namespace
}  // namespace ktrv::windows
