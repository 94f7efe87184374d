#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <set>

#include "tests/scripthost/UiInput.h"
#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"
#include "tests/wine/controls/Seen.h"

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

  POINT MiddleOf(int row) const { return Seen::MiddleOf(List(), row); }
  POINT Beside(int row) const { return Seen::Beside(List(), row); }
  void Band(POINT from, POINT to, UINT keys) { Seen::Band(List(), from, to, keys); }

  /// What the program believes is what the user sees.
  void ExpectOne() {
    const std::vector<int> rows = form_.Grid.SelectedRows();
    EXPECT_EQ(std::set<int>(rows.begin(), rows.end()), Seen::SelectedRows(List()));
    EXPECT_EQ(form_.Grid.Row(), Seen::CurrentRow(List()));
    EXPECT_EQ(form_.Tree.SelectedNode(), Seen::Node(Tree()));
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
  ASSERT_TRUE(form_.Grid.SelectedRows().empty());
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
      Seen::TakeFocusAway(WindowOf(form_), Any(2) == 0, Any(2) == 0);
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
      const POINT text = Seen::PlaceOf(Tree(), node);
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
