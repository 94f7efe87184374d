#include <gtest/gtest.h>

#include "controls/Form.h"
#include "tests/native/support/NoPeers.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

using Steps = std::vector<std::string>;

/// Writes down what the window of a control is called for.
template <class PeerType>
struct NotedControl : PeerType {
  explicit NotedControl(Steps& steps) : Noted(steps) {}
  void Note(const char* what) { Noted.emplace_back(what); }
  void BoundsChanged() override { Note("bounds"); }
  void VisibleChanged() override { Note("visible"); }
  void EnabledChanged() override { Note("enabled"); }
  void TextChanged() override { Note("text"); }
  void FocusRequested() override { Note("focus"); }
  void RefreshRequested() override { Note("refresh"); }
  Steps& Noted;
};

template <class PeerType>
struct Noted;

template <>
struct Noted<LabelPeer> final : NotedControl<LabelPeer> {
  using NotedControl::NotedControl;
};
template <>
struct Noted<CheckBoxPeer> final : NotedControl<CheckBoxPeer> {
  using NotedControl::NotedControl;
  void CheckedChanged() override { Note("checked"); }
};
template <>
struct Noted<ComboBoxPeer> final : NotedControl<ComboBoxPeer> {
  using NotedControl::NotedControl;
  void ItemsChanged() override { Note("items"); }
  void SelectionChanged() override { Note("selection"); }
  void BackColorChanged() override { Note("colour"); }
};
template <>
struct Noted<DatePickerPeer> final : NotedControl<DatePickerPeer> {
  using NotedControl::NotedControl;
  void ValueChanged() override { Note("value"); }
};
template <>
struct Noted<FlexGridPeer> final : NotedControl<FlexGridPeer> {
  using NotedControl::NotedControl;
  void ColumnsChanged() override { Note("columns"); }
  void RowsChanged() override { Note("rows"); }
  void RowsAppended() override { Note("more rows"); }
  void HeadingChanged(int) override { Note("heading"); }
  void SelectionChanged() override { Note("selection"); }
  void RowShown(int) override { Note("row in sight"); }
  void RedrawChanged() override { Note("redraw"); }
  void TopRowChanged(int) override { Note("top row"); }
};
template <>
struct Noted<PictureBoxPeer> final : NotedControl<PictureBoxPeer> {
  using NotedControl::NotedControl;
  void BackColorChanged() override { Note("colour"); }
};
template <>
struct Noted<ProgressBarPeer> final : NotedControl<ProgressBarPeer> {
  using NotedControl::NotedControl;
  void ValueChanged() override { Note("value"); }
  void MarqueeChanged() override { Note("marquee"); }
  void PlacedIn(StatusBar&, int) override { Note("place"); }
};
template <>
struct Noted<StatusBarPeer> final : NotedControl<StatusBarPeer> {
  using NotedControl::NotedControl;
  void PanelsChanged() override { Note("panels"); }
  void PanelTextChanged(int) override { Note("panel text"); }
};
template <>
struct Noted<TextBoxPeer> final : NotedControl<TextBoxPeer> {
  using NotedControl::NotedControl;
  void SelectionChanged() override { Note("selection"); }
  void BackColorChanged() override { Note("colour"); }
};
template <>
struct Noted<ToolBarPeer> final : NotedControl<ToolBarPeer> {
  using NotedControl::NotedControl;
  void ButtonsChanged() override { Note("buttons"); }
};
template <>
struct Noted<TreeViewPeer> final : NotedControl<TreeViewPeer> {
  using NotedControl::NotedControl;
  void NodeAdded(TreeNode&) override { Note("node"); }
  void NodeRemoving(TreeNode&) override { Note("node goes"); }
  void Cleared() override { Note("no nodes"); }
  void NodeTextChanged(TreeNode&) override { Note("node text"); }
  void NodeExpandedChanged(TreeNode&) override { Note("expanded"); }
  void SelectionChanged() override { Note("selection"); }
  void TopNodeChanged(TreeNode&) override { Note("top node"); }
  void RedrawChanged() override { Note("redraw"); }
};

struct NotedPeers final : tests::NoPeers {
  explicit NotedPeers(Steps& steps) : Happened(steps) {}
  using NoPeers::Make;
  template <class PeerType>
  Window<PeerType> New() {
    return std::make_unique<Noted<PeerType>>(Happened);
  }
  Window<CheckBoxPeer> Make(CheckBox&) override { return New<CheckBoxPeer>(); }
  Window<ComboBoxPeer> Make(ComboBox&) override { return New<ComboBoxPeer>(); }
  Window<DatePickerPeer> Make(DatePicker&) override { return New<DatePickerPeer>(); }
  Window<FlexGridPeer> Make(FlexGrid&) override { return New<FlexGridPeer>(); }
  Window<LabelPeer> Make(Label&) override { return New<LabelPeer>(); }
  Window<PictureBoxPeer> Make(PictureBox&) override { return New<PictureBoxPeer>(); }
  Window<ProgressBarPeer> Make(ProgressBar&) override { return New<ProgressBarPeer>(); }
  Window<StatusBarPeer> Make(StatusBar&) override { return New<StatusBarPeer>(); }
  Window<TextBoxPeer> Make(TextBox&) override { return New<TextBoxPeer>(); }
  Window<ToolBarPeer> Make(ToolBar&) override { return New<ToolBarPeer>(); }
  Window<TreeViewPeer> Make(TreeView&) override { return New<TreeViewPeer>(); }

  Steps& Happened;
};

/// What a program changes in a control is never left unseen.
struct WindowToldTest : testing::Test {
  /// What the control's window is called for by the change.
  template <class Change>
  Steps By(Control& control, Change&& change) {
    if (realised_ != &control) {
      control.Realise(peers);
      realised_ = &control;
    }
    steps.clear();
    change();
    return steps;
  }

  tests::ScriptedScreen screen;
  Form form{screen, {}};
  Steps steps;
  NotedPeers peers{steps};

 private:
  Control* realised_ = nullptr;
};

TEST_F(WindowToldTest, OfWhatAllControlsHave) {
  Label label(form, {}, u"a");
  EXPECT_EQ(By(label, [&] { label.Move({1, 2, 3, 4}); }), Steps{"bounds"});
  EXPECT_EQ(By(label, [&] { label.SetVisible(false); }), Steps{"visible"});
  EXPECT_EQ(By(label, [&] { label.SetEnabled(false); }), Steps{"enabled"});
  EXPECT_EQ(By(label, [&] { label.Refresh(); }), Steps{"refresh"});
  EXPECT_EQ(By(label, [&] { label.SetCaption(u"b"); }), Steps{"text"});
}

TEST_F(WindowToldTest, OfBoxes) {
  TextBox text(form, {}, 9);
  EXPECT_EQ(By(text, [&] { text.SetText(u"abc"); }), Steps{"text"});
  EXPECT_EQ(By(text, [&] { text.Select(1, 1); }), Steps{"selection"});
  EXPECT_EQ(By(text, [&] { text.SetBackColor(1); }), Steps{"colour"});
  EXPECT_EQ(By(text, [&] { text.UserTypes(u"x"); }), Steps{"text"});
  CheckBox check(form, {}, u"");
  EXPECT_EQ(By(check, [&] { check.SetChecked(true); }), Steps{"checked"});
  ComboBox combo(form, {});
  EXPECT_EQ(By(combo, [&] { combo.AddItem(u"a"); }), Steps{"items"});
  EXPECT_EQ(By(combo, [&] { combo.SetListIndex(0); }), Steps{"selection"});
  EXPECT_EQ(By(combo, [&] { combo.SetBackColor(1); }), Steps{"colour"});
  EXPECT_EQ(By(combo, [&] { combo.Clear(); }), Steps{"items"});
  DatePicker date(form, {});
  EXPECT_EQ(By(date, [&] { date.SetValue(DateTime()); }), Steps{"value"});
  PictureBox picture(form, {});
  EXPECT_EQ(By(picture, [&] { picture.SetBackColor(1); }), Steps{"colour"});
}

TEST_F(WindowToldTest, OfBars) {
  StatusBar status(form);
  EXPECT_EQ(By(status, [&] { status.AddPanel({u"a", 100}); }), Steps{"panels"});
  EXPECT_EQ(By(status, [&] { status.SetPanelText(1, u"b"); }), Steps{"panel text"});
  EXPECT_EQ(By(status, [&] { status.RemovePanel(1); }), Steps{"panels"});
  ProgressBar progress(form, {});
  EXPECT_EQ(By(progress, [&] { progress.SetRange(0, 7); }), Steps{"value"});
  EXPECT_EQ(By(progress, [&] { progress.SetValue(3); }), Steps{"value"});
  EXPECT_EQ(By(progress, [&] { progress.PlaceIn(status, 0); }), Steps{"place"});
  EXPECT_EQ(By(progress, [&] { progress.SetMarquee(true); }), Steps{"marquee"});
  ToolBar tools(form);
  EXPECT_EQ(By(tools, [&] { tools.AddButton({.Key = u"NEW"}); }), Steps{"buttons"});
  EXPECT_EQ(By(tools, [&] { tools.SetButtonEnabled(u"NEW", false); }), Steps{"buttons"});
}

TEST_F(WindowToldTest, OfATree) {
  TreeView tree(form, {}, {});
  TreeNode* node = nullptr;
  EXPECT_EQ(By(tree, [&] { node = &tree.Add(u"", u"R", u"Root", 0); }), Steps{"node"});
  TreeNode& child = tree.Add(u"R", u"C", u"Child", 0);
  EXPECT_EQ(By(tree, [&] { tree.Select(node); }), Steps{"selection"});
  EXPECT_EQ(By(tree, [&] { tree.SetText(*node, u"b"); }), Steps{"node text"});
  EXPECT_EQ(By(tree, [&] { tree.SetTopNode(*node); }), Steps{"top node"});
  EXPECT_EQ(By(tree, [&] { tree.SetRedraw(false); }), Steps{"redraw"});
  EXPECT_EQ(By(tree, [&] { tree.SetExpanded(*node, !node->Expanded); }), Steps{"expanded"});
  EXPECT_EQ(By(tree, [&] { tree.Remove(child); }), Steps{"node goes"});
  EXPECT_EQ(tree.SelectedNode(), node) << "which did not go";
  EXPECT_EQ(By(tree, [&] { tree.Clear(); }), Steps{"no nodes"});
}

TEST_F(WindowToldTest, OfAGrid) {
  FlexGrid grid(form, {});
  EXPECT_EQ(By(grid, [&] { grid.Reset(1, 2); }), (Steps{"columns", "rows"}));
  EXPECT_EQ(By(grid, [&] { grid.ColumnsChanged(); }), Steps{"columns"});
  EXPECT_EQ(By(grid, [&] { grid.AddRow({u"b", u"1"}); }), Steps{"more rows"});
  grid.AddRow({u"a", u"2"});
  EXPECT_EQ(By(grid, [&] { grid.SetText(1, 0, u"c"); }), Steps{"rows"});
  EXPECT_EQ(By(grid, [&] { grid.SetRow(2); }), Steps{"selection"});
  EXPECT_EQ(By(grid, [&] { grid.SelectRows(1, 2); }), Steps{"selection"});
  EXPECT_EQ(By(grid, [&] { grid.SelectAll(); }), Steps{"selection"});
  EXPECT_EQ(By(grid, [&] { grid.ShowRow(2); }), Steps{"row in sight"});
  EXPECT_EQ(By(grid, [&] { grid.SetTopRow(2); }), Steps{"top row"});
  EXPECT_EQ(By(grid, [&] { grid.SetHeadingPicture(0, Image::SortAscending); }), Steps{"heading"});
  EXPECT_EQ(By(grid, [&] { grid.Sort(0, SortOrder::Ascending); }), Steps{"rows"});
  EXPECT_EQ(By(grid, [&] { grid.SetRedraw(false); }), Steps{"redraw"});
  EXPECT_EQ(By(grid, [&] { grid.RemoveItem(1); }), Steps{"rows"});
}

}  // namespace
}  // namespace ktrv::controls
