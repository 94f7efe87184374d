#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <set>

#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"
#include "tests/wine/scripthost/UiInput.h"

namespace ktrv::windows {
namespace {

namespace UiInput = scripthost::UiInput;
using controls::SortOrder;

/// A form with a list of forty rows, a tree and a box, and what can be seen of them: the system's
/// list view, tree and focus are the judges.
class ASeenForm : public testing::Test {
 protected:
  ASeenForm() {
    Refill(40);
    form_.Show();
    form_.Grid.SetFocus();
    Pump();
    // As the address book has it.
    form_.Grid.MouseUp = [this](controls::MouseButton button, std::int16_t, int row) {
      if (button == controls::MouseButton::Right && form_.Grid.Selection().Count() == 1 &&
          row > 0) {
        form_.Grid.SetRow(row);
      }
    };
  }

  HWND List() const { return WindowOf(form_.Grid); }
  HWND Tree() const { return WindowOf(form_.Tree); }
  HWND Header() const { return ListView_GetHeader(List()); }
  int Rows() const { return form_.Grid.Rows() - 1; }

  void Refill(int rows) {
    form_.Grid.Reset(1, 3);
    form_.Grid.ColumnAt(1) = {.Key = u"NAME", .Heading = u"Name", .Width = 3000};
    form_.Grid.ColumnAt(2) = {.Key = u"MOBILENO", .Heading = u"Mobile No", .Width = 1500};
    form_.Grid.ColumnsChanged();
    for (int i = 1; i <= rows; ++i) {
      form_.Grid.AddItem(ToDecimal(i) + u"\tName " + ToDecimal(i * 37 % 100) + u"\t0" +
                         ToDecimal(i));
    }
    Settle();
  }
  /// Lets the rows that came late be shown.
  void Settle() {
    Pump();
    PumpUntil([this] { return ListView_GetItemCount(List()) == Rows() || !List(); });
  }

  POINT MiddleOf(int row) const {
    ListView_EnsureVisible(List(), row - 1, FALSE);
    RECT place{};
    ListView_GetItemRect(List(), row - 1, &place, LVIR_LABEL);
    return {place.left + 20, (place.top + place.bottom) / 2};
  }
  /// Right of the last column, at the height of the row.
  POINT Beside(int row) const {
    const POINT middle = MiddleOf(row);
    RECT inside{};
    GetClientRect(List(), &inside);
    return {inside.right - 5, middle.y};
  }

  /// Draws a rubber band in steps that the list sees one by one.
  void Band(POINT from, POINT to, UINT keys) {
    constexpr int kSteps = 5;
    ClientToScreen(List(), &from);
    ClientToScreen(List(), &to);
    SetCursorPos(from.x, from.y);
    SetFocus(List());
    Pump();
    Hold(keys, 0);
    Button(MOUSEEVENTF_LEFTDOWN);
    for (int step = 1; step <= kSteps; ++step) {
      SetCursorPos(from.x + (to.x - from.x) * step / kSteps,
                   from.y + (to.y - from.y) * step / kSteps);
      Button(MOUSEEVENTF_MOVE);
    }
    Button(MOUSEEVENTF_LEFTUP);
    Hold(keys, KEYEVENTF_KEYUP);
  }
  static void Button(DWORD what) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = what;
    SendInput(1, &input, sizeof input);
    Pump();
  }
  static void Hold(UINT keys, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.dwFlags = flags;
    for (const WORD key : {WORD{VK_SHIFT}, WORD{VK_CONTROL}}) {
      if ((keys & (key == VK_SHIFT ? MK_SHIFT : MK_CONTROL)) == 0) continue;
      input.ki.wVk = key;
      SendInput(1, &input, sizeof input);
    }
    Pump();
  }

  std::set<int> SeenSelected() const {
    std::set<int> rows;
    for (int item = -1; (item = ListView_GetNextItem(List(), item, LVNI_SELECTED)) >= 0;) {
      rows.insert(item + 1);
    }
    return rows;
  }
  int SeenCurrent() const { return ListView_GetNextItem(List(), -1, LVNI_FOCUSED) + 1; }
  controls::TreeNode* SeenNode() const {
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    item.hItem = TreeView_GetSelection(Tree());
    if (!item.hItem) return nullptr;
    SendMessageW(Tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return reinterpret_cast<controls::TreeNode*>(item.lParam);
  }

  /// What the program believes is what the user sees.
  void ExpectOne() {
    const std::vector<int> rows = form_.Grid.SelectedRows();
    EXPECT_EQ(std::set<int>(rows.begin(), rows.end()), SeenSelected());
    EXPECT_EQ(form_.Grid.Row(), SeenCurrent());
    EXPECT_EQ(form_.Tree.SelectedNode(), SeenNode());
    std::vector<HWND> believers;
    for (const controls::Control* control : form_.Controls()) {
      if (control->HasFocus()) believers.push_back(WindowOfAny(*control));
    }
    HWND focus = GetFocus();
    EXPECT_LE(believers.size(), 1U);
    // While another window has the keyboard, the form keeps in mind who had it.
    if (focus && IsChild(WindowOf(form_), focus)) {
      EXPECT_EQ(believers, std::vector<HWND>{focus});
    }
  }
  HWND WindowOfAny(const controls::Control& control) const {
    if (&control == &form_.Grid) return List();
    if (&control == &form_.Tree) return Tree();
    if (&control == &form_.Number) return WindowOf(form_.Number);
    return nullptr;
  }

  Win32Screen screen_;
  PlayForm form_{screen_};
};

class ASeenList : public ASeenForm {};

TEST_F(ASeenList, ShiftWithoutAnAnchorSelectsWhatIsSeen) {
  UiInput::Click(List(), MiddleOf(5), MK_SHIFT);
  Pump();
  ExpectOne();
  EXPECT_FALSE(form_.Grid.SelectedRows().empty());
}

TEST_F(ASeenList, ShiftBackToTheAnchorLeavesItAlone) {
  UiInput::Click(List(), MiddleOf(3), 0);
  UiInput::Click(List(), MiddleOf(8), MK_SHIFT);
  Pump();
  EXPECT_EQ(form_.Grid.SelectedRows(), (std::vector<int>{3, 4, 5, 6, 7, 8}));
  UiInput::Click(List(), MiddleOf(3), MK_SHIFT);
  Pump();
  EXPECT_EQ(form_.Grid.SelectedRows(), std::vector<int>{3});
  ExpectOne();
}

TEST_F(ASeenList, ANewListForgetsTheOldAnchor) {
  UiInput::Click(List(), MiddleOf(1), 0);
  Pump();
  Refill(40);
  ASSERT_TRUE(form_.Grid.SelectedRows().empty());
  UiInput::Click(List(), MiddleOf(8), MK_SHIFT);
  Pump();
  EXPECT_EQ(form_.Grid.SelectedRows(), std::vector<int>{8});
  ExpectOne();
}

TEST_F(ASeenList, ARubberBandSelectsWhatIsSeen) {
  Band(Beside(6), MiddleOf(2), 0);
  EXPECT_EQ(form_.Grid.SelectedRows(), (std::vector<int>{2, 3, 4, 5, 6}));
  ExpectOne();
}

TEST_F(ASeenList, ARightClickOnSeveralRowsKeepsThem) {
  form_.Grid.SelectRows(2, 4);
  UiInput::RightClick(List(), MiddleOf(3));
  Pump();
  EXPECT_EQ(form_.Grid.SelectedRows(), (std::vector<int>{2, 3, 4}));
  ExpectOne();
}

TEST_F(ASeenList, AllSelectedByKeyboardAreSeenSo) {
  ASSERT_EQ(form_.Grid.Row(), 0);
  UiInput::Press(List(), 'A', MK_CONTROL);
  Pump();
  EXPECT_EQ(form_.Grid.SelectedRows().size(), 40U);
  ExpectOne();
}

TEST_F(ASeenList, TheTreeDoesNotKeepTheFocusThatTheListGot) {
  SetFocus(Tree());
  ASSERT_TRUE(form_.Tree.HasFocus());
  SetFocus(nullptr);  // as when the form is disabled and another window came and went
  SetFocus(List());
  EXPECT_TRUE(form_.Grid.HasFocus());
  EXPECT_FALSE(form_.Tree.HasFocus());
  ExpectOne();
}

/// Does one thing after another by chance, the same for the same seed.
class ARandomHand : public ASeenForm, public testing::WithParamInterface<unsigned> {
 protected:
  /// From 0 to below `count`.
  int Any(int count) {
    return count > 0 ? static_cast<int>(random_() % static_cast<unsigned>(count)) : 0;
  }
  int AnyRow() { return 1 + Any(Rows()); }
  UINT AnyKeys() {
    constexpr std::array<UINT, 6> kKeys = {0,        0,          MK_SHIFT,
                                           MK_SHIFT, MK_CONTROL, MK_SHIFT | MK_CONTROL};
    return kKeys[static_cast<std::size_t>(Any(kKeys.size()))];
  }
  /// Of those in sight: a row elsewhere is scrolled to only now and then.
  int AnyNearRow() {
    if (Any(5) == 0) return AnyRow();
    const int top = ListView_GetTopIndex(List());
    return std::min(top + 1 + Any(ListView_GetCountPerPage(List())), Rows());
  }

  void Step() {
    const int act = Any(24);
    what_ = "act " + std::to_string(act);
    if (Rows() == 0 && act < 12) return Refill(1 + Any(40));
    if (act < 4) {
      const int row = AnyNearRow();
      const UINT keys = AnyKeys();
      what_ = "click on " + std::to_string(row) + " with " + std::to_string(keys);
      UiInput::Click(List(), MiddleOf(row), keys);
    } else if (act == 4) {
      const int row = AnyNearRow();
      const UINT keys = AnyKeys();
      what_ = "right click on " + std::to_string(row) + " with " + std::to_string(keys);
      UiInput::RightClick(List(), MiddleOf(row), keys);
    } else if (act < 7) {
      const int from = AnyNearRow();
      const POINT start = Beside(from);
      const int top = ListView_GetTopIndex(List());
      const int to = std::min(top + 1 + Any(ListView_GetCountPerPage(List())), Rows());
      const UINT keys = AnyKeys();
      what_ = "band from " + std::to_string(from) + " to " + std::to_string(to) + " with " +
              std::to_string(keys);
      RECT end{};
      ListView_GetItemRect(List(), to - 1, &end, LVIR_LABEL);
      Band(start, {end.left + 20, (end.top + end.bottom) / 2}, keys);
    } else if (act < 12) {
      constexpr std::array<WORD, 9> kKeys = {VK_UP,   VK_DOWN,  VK_HOME, VK_END, VK_PRIOR,
                                             VK_NEXT, VK_SPACE, VK_DOWN, 'N'};
      const WORD key = kKeys[static_cast<std::size_t>(Any(kKeys.size()))];
      const UINT keys = AnyKeys();
      what_ = "key " + std::to_string(key) + " with " + std::to_string(keys);
      SetFocus(List());
      UiInput::Press(List(), key, keys);
    } else if (act == 12) {
      what_ = "all by keyboard";
      SetFocus(List());
      UiInput::Press(List(), 'A', MK_CONTROL);
    } else if (act == 13) {
      what_ = "sort";
      form_.Grid.UserClicksHeading(1 + Any(2));
    } else if (act == 14) {
      what_ = "another list";
      Refill(Any(40));
    } else if (act == 15) {
      what_ = "the same rows anew";
      if (Any(2) == 0) form_.Grid.DataRefresh();
      for (int more = Any(3); more > 0; --more) form_.Grid.AddItem(u"99\tName 99\t099");
    } else if (act == 16 && Rows() > 0) {
      what_ = "a row or some taken away";
      if (Any(3) == 0) {
        form_.Grid.RemoveSelected();
      } else {
        form_.Grid.RemoveItem(AnyRow());
      }
    } else if (act == 17 && Rows() > 0) {
      what_ = "the form selects";
      const int row = AnyRow();
      const int how = Any(4);
      if (how == 0) form_.Grid.SetRow(row);
      if (how == 1) form_.Grid.SetRow(0);
      if (how == 2) form_.Grid.SelectRows(row, std::min(row + Any(6), Rows()));
      if (how == 3) form_.Grid.SelectAll();
    } else if (act == 18) {
      what_ = "another window";
      TakeFocusAway();
    } else if (act == 19) {
      what_ = "the focus elsewhere in the form";
      SetFocus(Any(2) == 0 ? Tree() : WindowOf(form_.Number));
    } else {
      StepInTree();
    }
  }

  void StepInTree() {
    const int act = Any(6);
    what_ = "tree " + std::to_string(act);
    if (act < 2) {
      controls::TreeNode& node = form_.Tree.At(1 + Any(form_.Tree.Count()));
      const POINT text = PlaceOf(node);
      if (text.x < 0) return;
      if (act == 0) {
        UiInput::Click(Tree(), text, 0);
      } else {
        UiInput::RightClick(Tree(), text);
      }
    } else if (act == 2) {
      constexpr std::array<WORD, 5> kKeys = {VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_HOME};
      SetFocus(Tree());
      UiInput::Press(Tree(), kKeys[static_cast<std::size_t>(Any(kKeys.size()))], 0);
    } else if (act == 3) {
      form_.Tree.Clear();
      form_.Tree.Add(u"", u"SHARED", u"Shared Contacts", 1);
      for (int folder = 1 + Any(3); folder > 0; --folder) {
        const String key = u"SFLD" + ToDecimal(folder);
        form_.Tree.Add(u"SHARED", key, u"Folder " + ToDecimal(folder), 1);
        form_.Tree.Add(key, u"SHGR" + ToDecimal(folder), u"Group " + ToDecimal(folder), 1);
      }
      form_.Tree.SetExpanded(form_.Tree.At(1), Any(4) > 0);
    } else if (act == 4) {
      controls::TreeNode& node = form_.Tree.At(1 + Any(form_.Tree.Count()));
      form_.Tree.SetExpanded(node, !node.Expanded);
    } else if (form_.Tree.Count() > 2) {
      form_.Tree.Remove(form_.Tree.At(2 + Any(form_.Tree.Count() - 1)));
    }
  }
  /// Middle of the node's text; left of the tree when it is not in sight.
  POINT PlaceOf(const controls::TreeNode& node) const {
    for (const auto* above = node.Parent; above; above = above->Parent) {
      if (!above->Expanded) return {-1, -1};
    }
    HTREEITEM item = TreeView_GetRoot(Tree());
    while (item) {
      TVITEMW data{};
      data.mask = TVIF_PARAM;
      data.hItem = item;
      SendMessageW(Tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&data));
      if (reinterpret_cast<const controls::TreeNode*>(data.lParam) == &node) break;
      item = TreeView_GetNextVisible(Tree(), item);
    }
    RECT text{};
    if (!item || !TreeView_GetItemRect(Tree(), item, &text, TRUE)) return {-1, -1};
    return {text.left + 4, (text.top + text.bottom) / 2};
  }
  void TakeFocusAway() {
    const HWND other = CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 600, 0, 50, 50, nullptr,
                                     nullptr, nullptr, nullptr);
    if (Any(2) == 0) EnableWindow(WindowOf(form_), FALSE);
    SetForegroundWindow(other);
    SetFocus(other);
    Pump();
    if (Any(2) == 0) SetForegroundWindow(WindowOf(form_));
    Pump();
    EnableWindow(WindowOf(form_), TRUE);
    DestroyWindow(other);
    Pump();
    SetForegroundWindow(WindowOf(form_));
    Pump();
  }

  std::mt19937 random_{GetParam()};
  std::string what_;
};

TEST_P(ARandomHand, NeverPartsModelAndScreen) {
  std::string before;
  for (int step = 1; step <= 100; ++step) {
    Step();
    Settle();
    before += "\n  " + std::to_string(step) + ": " + what_;
    ExpectOne();
    if (HasFailure()) FAIL() << "seed " << GetParam() << ", steps:" << before;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ARandomHand, testing::Range(1U, 9U));

}  // namespace
}  // namespace ktrv::windows
