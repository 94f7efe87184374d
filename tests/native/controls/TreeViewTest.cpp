#include "controls/TreeView.h"

#include <gtest/gtest.h>

#include "common/Error.h"
#include "controls/Form.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

struct TreeViewTest : testing::Test {
  TreeViewTest() {
    tree.Expand = [this](TreeNode& node) { events.push_back(u"+" + node.Key); };
    tree.Collapse = [this](TreeNode& node) { events.push_back(u"-" + node.Key); };
    tree.NodeClick = [this](TreeNode& node) { events.push_back(u"!" + node.Key); };
  }
  template <class Body>
  std::int32_t NumberOf(Body&& body) {
    try {
      body();
    } catch (const Error& error) {
      return error.Number();
    }
    return 0;
  }

  tests::ScriptedScreen screen;
  Form form{screen, {}};
  TreeView tree{form, {}, {Image::SharedContacts}};
  std::vector<String> events;
};

TEST_F(TreeViewTest, NodesAreCountedInInsertionOrderOverTheWholeTree) {
  tree.Add(u"", u"A", u"a", 1);
  tree.Add(u"A", u"A1", u"a1", 2, 3);
  tree.Add(u"", u"B", u"b", 1);
  tree.Add(u"A", u"A2", u"a2", 2);
  EXPECT_EQ(tree.Count(), 4);
  EXPECT_EQ(tree.At(2).Key, u"A1");
  EXPECT_EQ(tree.At(4).Key, u"A2");
  EXPECT_EQ(tree.Find(u"A")->Children.size(), 2U);
  EXPECT_EQ(tree.At(2).Parent, tree.Find(u"A"));
  EXPECT_EQ(tree.At(2).SelectedImageIndex, 3);
}

TEST_F(TreeViewTest, ANodeHiddenByTheFormIsNotTheSelectedOne) {
  tree.Add(u"", u"A", u"a", 1);
  tree.Add(u"A", u"A1", u"a1", 1);
  tree.SetExpanded(tree.At(1), true);
  tree.Select(&tree.At(2));
  events.clear();
  tree.SetExpanded(tree.At(1), false);
  EXPECT_EQ(tree.SelectedNode(), &tree.At(1));
  EXPECT_EQ(events, std::vector<String>{u"-A"});
}

TEST_F(TreeViewTest, AnUnknownParentIsRefused) {
  EXPECT_EQ(NumberOf([&] { tree.Add(u"X", u"A", u"", 1); }), ErrorNumber::ElementNotFound);
  EXPECT_EQ(tree.Count(), 0);
}

TEST_F(TreeViewTest, ATakenKeyIsRefused) {
  tree.Add(u"", u"A", u"", 1);
  EXPECT_EQ(NumberOf([&] { tree.Add(u"", u"A", u"", 1); }), ErrorNumber::KeyNotUnique);
  EXPECT_EQ(tree.Count(), 1);
}

TEST_F(TreeViewTest, AnIndexOutsideIsRefused) {
  EXPECT_EQ(NumberOf([&] { tree.At(1); }), ErrorNumber::SubscriptOutOfRange);
}

TEST_F(TreeViewTest, ExpandingAChildlessNodeIsKeptAndReportsNothing) {
  TreeNode& node = tree.Add(u"", u"A", u"", 1);
  tree.SetExpanded(node, true);
  EXPECT_TRUE(node.Expanded);
  EXPECT_TRUE(events.empty());
}

TEST_F(TreeViewTest, ExpandingANodeWithChildrenIsReportedOnceWhenItChanges) {
  TreeNode& node = tree.Add(u"", u"A", u"", 1);
  tree.Add(u"A", u"A1", u"", 1);
  tree.SetExpanded(node, true);
  tree.SetExpanded(node, true);
  tree.UserExpands(node, true);
  tree.SetExpanded(node, false);
  tree.UserExpands(node, true);
  EXPECT_EQ(events, (std::vector<String>{u"+A", u"-A", u"+A"}));
}

TEST_F(TreeViewTest, AClickSelectsAndIsReported) {
  TreeNode& node = tree.Add(u"", u"A", u"", 1);
  tree.UserClicks(node);
  EXPECT_EQ(tree.SelectedNode(), &node);
  EXPECT_EQ(events, (std::vector<String>{u"!A"}));
}

TEST_F(TreeViewTest, SelectingByProgramIsNotReported) {
  tree.Select(&tree.Add(u"", u"A", u"", 1));
  EXPECT_TRUE(events.empty());
}

TEST_F(TreeViewTest, RemovingANodeTakesAllBelowItAway) {
  tree.Add(u"", u"A", u"", 1);
  tree.Add(u"A", u"A1", u"", 1);
  tree.Add(u"A1", u"A11", u"", 1);
  tree.Add(u"", u"B", u"", 1);
  tree.Remove(*tree.Find(u"A"));
  EXPECT_EQ(tree.Count(), 1);
  EXPECT_EQ(tree.At(1).Key, u"B");
  EXPECT_EQ(tree.Find(u"A11"), nullptr);
}

TEST_F(TreeViewTest, TheNextSiblingOfARemovedNodeIsSelected) {
  for (const char16_t* key : {u"A", u"B", u"C"}) tree.Add(u"", key, u"", 1);
  tree.Select(tree.Find(u"B"));
  tree.Remove(*tree.Find(u"B"));
  EXPECT_EQ(tree.SelectedNode(), tree.Find(u"C"));
  EXPECT_TRUE(events.empty());
}

TEST_F(TreeViewTest, ThePreviousSiblingOfARemovedLastNodeIsSelected) {
  for (const char16_t* key : {u"A", u"B"}) tree.Add(u"", key, u"", 1);
  tree.Select(tree.Find(u"B"));
  tree.Remove(*tree.Find(u"B"));
  EXPECT_EQ(tree.SelectedNode(), tree.Find(u"A"));
}

TEST_F(TreeViewTest, TheParentOfARemovedOnlyChildIsSelected) {
  tree.Add(u"", u"A", u"", 1);
  tree.Add(u"A", u"A1", u"", 1);
  tree.Add(u"A1", u"A11", u"", 1);
  tree.Select(tree.Find(u"A11"));
  tree.Remove(*tree.Find(u"A1"));
  EXPECT_EQ(tree.SelectedNode(), tree.Find(u"A"));
}

TEST_F(TreeViewTest, ClearLeavesNothingAndReportsNothing) {
  TreeNode& node = tree.Add(u"", u"A", u"", 1);
  tree.Add(u"A", u"A1", u"", 1);
  tree.Select(&node);
  tree.Clear();
  EXPECT_EQ(tree.Count(), 0);
  EXPECT_EQ(tree.SelectedNode(), nullptr);
  EXPECT_TRUE(events.empty());
}

TEST_F(TreeViewTest, ANodeThatTheUserCollapsesAboveTheSelectedOneIsClicked) {
  tree.Add(u"", u"A", u"a", 1);
  tree.Add(u"A", u"A1", u"a1", 2);
  tree.Add(u"A1", u"A11", u"a11", 2);
  tree.UserExpands(tree.At(1), true);
  tree.Select(tree.Find(u"A11"));
  events.clear();
  tree.UserExpands(tree.At(1), false);
  EXPECT_EQ(events, (std::vector<String>{u"-A", u"!A"}));
  EXPECT_EQ(tree.SelectedNode(), tree.Find(u"A"));
}

TEST_F(TreeViewTest, ANodeThatTheFormCollapsesIsNotClicked) {
  tree.Add(u"", u"A", u"a", 1);
  tree.Add(u"A", u"A1", u"a1", 2);
  tree.SetExpanded(tree.At(1), true);
  tree.Select(tree.Find(u"A1"));
  events.clear();
  tree.SetExpanded(tree.At(1), false);
  EXPECT_EQ(events, (std::vector<String>{u"-A"}));
}

}  // namespace
}  // namespace ktrv::controls
