#include <algorithm>
#include <array>
#include <random>

#include "tests/scripthost/UiInput.h"
#include "tests/wine/addressbook/BookWindow.h"
#include "tests/wine/controls/Seen.h"

namespace ktrv::windows {
namespace {

namespace UiInput = scripthost::UiInput;

/// Somebody who does one thing after another by chance in the address book, the same for the same
/// seed: the system's list view, tree and focus are the judges.
class ABookHand : public BookWindow, public testing::WithParamInterface<unsigned> {
 protected:
  ABookHand() {
    form_.vsfContacts.DoubleClick = {};  // two quick clicks would open an editor
  }

  /// From 0 to below `count`.
  int Any(int count) {
    return count > 0 ? static_cast<int>(random_() % static_cast<unsigned>(count)) : 0;
  }
  template <class Value, std::size_t Count>
  Value AnyOf(const std::array<Value, Count>& values) {
    return values[static_cast<std::size_t>(Any(Count))];
  }
  UINT AnyKeys() { return AnyOf(std::array<UINT, 5>{0, 0, MK_SHIFT, MK_SHIFT, MK_CONTROL}); }
  int AnyRow() {
    if (Any(5) == 0) return 1 + Any(Rows());
    const int top = ListView_GetTopIndex(List());
    return std::min(top + 1 + Any(ListView_GetCountPerPage(List())), Rows());
  }

  void Step() {
    switch (Any(8)) {
      case 0:
      case 1:
        return Any(3) > 0 && Rows() > 0 ? ByMouseInList() : ByKeyInList();
      case 2:
        return ByKeyInList();
      case 3:
      case 4:
        return InTree();
      case 5:
        return InBars();
      case 6:
        return FromOutside();
      default:
        return Rows() > 0 ? ByMouseInList() : InTree();
    }
  }

  void ByMouseInList() {
    const int row = AnyRow();
    const UINT keys = AnyKeys();
    const int act = Any(4);
    what_ = "mouse " + std::to_string(act) + " on " + std::to_string(row) + " with " +
            std::to_string(keys);
    if (act < 2) UiInput::Click(List(), Seen::MiddleOf(List(), row), keys);
    if (act == 2) UiInput::RightClick(List(), Seen::MiddleOf(List(), row), keys);
    if (act != 3) return;
    const POINT start = Seen::Beside(List(), row);
    const int top = ListView_GetTopIndex(List());
    RECT end{};
    const int to = std::min(top + Any(ListView_GetCountPerPage(List())), Rows() - 1);
    ListView_GetItemRect(List(), to, &end, LVIR_LABEL);
    Seen::Band(List(), start, {end.left + 20, (end.top + end.bottom) / 2}, keys);
  }
  void ByKeyInList() {
    const WORD key = AnyOf(std::array<WORD, 9>{VK_UP, VK_DOWN, VK_HOME, VK_END, VK_PRIOR, VK_NEXT,
                                               VK_SPACE, 'N', 'A'});
    UINT keys = key == 'A' ? MK_CONTROL : AnyKeys();
    if (key == 'N') keys = 0;  // with Ctrl it would open an editor
    what_ = "key " + std::to_string(key) + " with " + std::to_string(keys);
    SetFocus(List());
    UiInput::Press(List(), key, keys);
  }
  void InTree() {
    const int act = Any(5);
    controls::TreeNode& node = form_.tvwContacts.At(1 + Any(form_.tvwContacts.Count()));
    what_ = "tree " + std::to_string(act) + " at " + ToUtf8(node.Key);
    const POINT text = Seen::PlaceOf(Tree(), node);
    if (act == 0) {
      SetFocus(Tree());
      UiInput::Press(Tree(), AnyOf(std::array<WORD, 5>{VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_HOME}),
                     0);
    } else if (act == 1 && text.x >= 0) {
      UiInput::RightClick(Tree(), text);
      UiInput::PressAnywhere(VK_ESCAPE);  // for the menu
    } else if (text.x >= 0) {
      UiInput::Click(Tree(), text, 0);
    }
  }
  void InBars() {
    const int act = Any(4);
    what_ = "bars " + std::to_string(act);
    if (act == 0) {
      const HWND header = ListView_GetHeader(List());
      RECT heading{};
      Header_GetItemRect(header, 1 + Any(3), &heading);
      UiInput::Click(header, {heading.left + 15, (heading.top + heading.bottom) / 2}, 0);
    } else if (act == 1) {
      UiInput::Type(WindowOf(form_.txtFind), L"name " + std::to_wstring(Any(10)));
    } else if (act == 2) {
      UiInput::Press(WindowOf(form_.txtFind), VK_BACK, 0);
    } else {
      Lists(Any(3) > 0 ? Rows() : Any(40));
      form_.tlbMain.ButtonClick(u"REFRESH");
    }
  }
  void FromOutside() {
    const int act = Any(4);
    what_ = "outside " + std::to_string(act);
    if (act == 0) Seen::TakeFocusAway(Window(), Any(2) == 0, Any(2) == 0);
    if (act == 1) form_.LoadTreeView();
    if (act == 2) form_.Show();
    if (act == 3) MoveWindow(Window(), 0, 0, 400 + Any(600), 300 + Any(400), TRUE);
  }

  /// What the window believes is what the user sees.
  void ExpectOne() {
    const std::vector<int> rows = form_.vsfContacts.SelectedRows();
    const std::set<int> seen = Seen::SelectedRows(List());
    EXPECT_EQ(std::set<int>(rows.begin(), rows.end()), seen);
    EXPECT_EQ(form_.vsfContacts.Row(), Seen::CurrentRow(List()));
    EXPECT_EQ(form_.tvwContacts.SelectedNode(), Seen::Node(Tree()));
    if (const controls::TreeNode* node = Seen::Node(Tree())) {
      EXPECT_EQ(ToUtf8(form_.Current().Key), ToUtf8(node->Key));
    }
    int believers = 0;
    for (const controls::Control* control : form_.Controls()) believers += control->HasFocus();
    EXPECT_LE(believers, 1);
    const HWND focus = GetFocus();
    if (focus == List() || focus == Tree()) {
      EXPECT_EQ(form_.vsfContacts.HasFocus(), focus == List());
      EXPECT_EQ(form_.tvwContacts.HasFocus(), focus == Tree());
    }
    ExpectCopyOf(seen);
  }
  /// Copy takes the rows that are seen as selected.
  void ExpectCopyOf(const std::set<int>& seen) {
    if (seen.empty()) return;
    form_.Copy();
    std::wstring names;
    for (const int row : seen) {
      std::array<wchar_t, 100> name{};
      LVITEMW item{};
      item.iSubItem = NameColumn();
      item.pszText = name.data();
      item.cchTextMax = static_cast<int>(name.size());
      SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row - 1),
                   reinterpret_cast<LPARAM>(&item));
      names += std::wstring(name.data()) + L";";
    }
    EXPECT_EQ(ToUtf8(FromWide(names)), CopiedNames());
    ++copies_;
  }

  std::mt19937 random_{GetParam()};
  std::string what_;
  int copies_ = 0;  ///< that were compared

 private:
  static String FromWide(const std::wstring& text) { return {text.begin(), text.end()}; }
  /// Of the list view: the one whose heading says so.
  int NameColumn() const {
    const HWND header = ListView_GetHeader(List());
    for (int column = 0; column < Header_GetItemCount(header); ++column) {
      std::array<wchar_t, 50> text{};
      HDITEMW item{};
      item.mask = HDI_TEXT;
      item.pszText = text.data();
      item.cchTextMax = static_cast<int>(text.size());
      SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column),
                   reinterpret_cast<LPARAM>(&item));
      if (std::wstring(text.data()) == L"Name") return column;
    }
    return 0;
  }
  std::string CopiedNames() {
    std::string names;
    const std::string text = ToUtf8(screen_.ClipboardText().value_or(u""));
    for (std::size_t line = text.find("\r\n"); line != std::string::npos;) {
      const std::size_t from = line + 2;
      if (from >= text.size()) break;
      names += text.substr(from, text.find('\t', from) - from) + ";";
      line = text.find("\r\n", from);
    }
    return names;
  }
};

TEST_P(ABookHand, NeverPartsWhatIsSeenFromWhatACommandTakes) {
  std::string before;
  ExpectOne();
  for (int step = 1; step <= 100 && !HasFailure(); ++step) {
    Step();
    Settle();
    before += "\n  " + std::to_string(step) + ": " + what_;
    ExpectOne();
  }
  if (HasFailure()) FAIL() << "seed " << GetParam() << ", steps:" << before;
  EXPECT_GT(copies_, 20);  // or the hand did nothing
}

INSTANTIATE_TEST_SUITE_P(Seeds, ABookHand, testing::Range(1U, 7U));

}  // namespace
}  // namespace ktrv::windows
