#include "tests/native/addressbook/AddressBookFixture.h"
#include "tests/native/addressbook/ToldPeers.h"

namespace ktrv::tests {
namespace {

using Texts = std::vector<String>;

constexpr StringView kLock = u"UPDATE SMS_ABGROUPS SET NAME = NAME WHERE ID = 6";

/// A tree of lines that are 100 twips high, all expanded.
struct TreeOfLines final : Told<controls::TreeViewPeer, controls::TreeView> {
  TreeOfLines(Steps& steps, controls::TreeView& tree) : Told(steps, tree, "tree") {}
  void NodeAdded(controls::TreeNode&) override {}
  void NodeRemoving(controls::TreeNode&) override {}
  void Cleared() override {}
  void NodeTextChanged(controls::TreeNode&) override {}
  void NodeExpandedChanged(controls::TreeNode&) override {}
  void SelectionChanged() override {}
  controls::TreeNode* DraggedOver(int x, int y) override {
    const int line = y / 100 + 1 + Scrolled;
    if (Scrolls) ++Scrolled;
    return x < 0 || y < 0 || line > Shown.Count() ? nullptr : &Shown.At(line);
  }
  void DropTargetChanged(controls::TreeNode* node) override {
    Note(node ? "marks " + ToUtf8(node->Key) : "marks none");
  }

  bool Scrolls = false;  ///< by a line each time it is asked, as at the edge of a long tree
  int Scrolled = 0;
};

struct TreePeers final : NoPeers {
  using NoPeers::Make;
  Window<controls::TreeViewPeer> Make(controls::TreeView& tree) override {
    auto lines = std::make_unique<TreeOfLines>(Happened, tree);
    Lines = lines.get();
    return lines;
  }
  Steps Happened;
  TreeOfLines* Lines = nullptr;
};

/// Three contacts, a group and a remote contact, and a group Drivers in the tree.
struct DragTest : AddressBookTest {
  DragTest() {
    SharedFolders({{u"7", u"Staff"}});
    Groups({{u"6", u"Drivers", u"7"}});
    Counts(Queries::kCountFolderContacts, 5);
    Lists({Item(u"1", u"Anna"), Item(u"2", u"Bert"), Item(u"3", u"Carla"),
           Item(u"6", u"Drivers", u"2"), Item(u"C9", u"Meyer", u"3")});
    driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS", {{u"NAME"}}, {{u"Drivers"}});
    driver.Answer(u"SELECT FNAME FROM SMS_ABCONTACTS", {{u"FNAME"}}, {{u"Anna"}});
    driver.Answer(u"SELECT GROUP_ID FROM SMS_ABGROUPMAPS", {{u"GROUP_ID"}}, {});
    driver.Changes(kLock, 1);
    driver.Changes(u"INSERT", 1);
    Open();
    ClickAndWait(u"SHARED");
    form->tvwContacts.Realise(peers);
  }
  ~DragTest() override { form->tvwContacts.Unrealise(); }

  /// A point in the form over the node.
  int LineOf(StringView key) {
    for (int index = 1; index <= form->tvwContacts.Count(); ++index) {
      if (form->tvwContacts.At(index).Key == key) {
        return form->tvwContacts.Top() + (index - 1) * 100 + 50;
      }
    }
    throw std::logic_error("no such node");
  }
  bool MayDropOn(StringView key) { return form->vsfContacts.DragOver(10, LineOf(key)); }
  void DropOn(StringView key) {
    const int line = LineOf(key);
    form->vsfContacts.DragOver(10, line);
    EndWithDrop();
  }
  void EndWithDrop() {
    form->vsfContacts.DragEnd(true);
    ASSERT_TRUE(screen.WaitUntil([&] { return !form->IsAdding(); }));
    ASSERT_TRUE(Complete());
  }
  /// Drops so many contacts on Drivers that most are still to be added.
  void DropMany() {
    std::vector<Row> rows;
    for (int id = 1; id <= 3000; ++id) rows.push_back(Item(ToDecimal(id), u"Anna"));
    Counts(Queries::kCountFolderContacts, 3000);
    Lists(std::move(rows));
    ClickAndWait(u"SFLD7");
    form->vsfContacts.SelectAll();
    form->vsfContacts.UserSelectsRange(1, 0, true, 1);
    form->vsfContacts.DragOver(10, LineOf(u"SHGR6"));
    form->vsfContacts.DragEnd(true);
  }
  void Select(int first, int last) { form->vsfContacts.SelectRows(first, last); }
  Texts Inserted() const {
    Texts texts;
    for (const auto& each : Ran(u"INSERT")) texts.push_back(each.Text);
    return texts;
  }

  TreePeers peers;
};

TEST_F(DragTest, RowsMayBeDroppedOnAGroupOnlyWhichIsMarked) {
  Select(1, 1);
  EXPECT_TRUE(MayDropOn(u"SHGR6"));
  EXPECT_FALSE(MayDropOn(u"SFLD7"));
  EXPECT_FALSE(MayDropOn(u"SHARED"));
  EXPECT_FALSE(form->vsfContacts.DragOver(10, 5000));
  form->vsfContacts.DragEnd(false);
  EXPECT_EQ(peers.Happened, (Steps{"tree marks SHGR6", "tree marks none", "tree marks none",
                                   "tree marks none", "tree marks none"}));
  EXPECT_TRUE(Inserted().empty());
}

TEST_F(DragTest, TheSelectedContactsBecomeMembersAndNothingElseChanges) {
  Select(1, 2);
  DropOn(u"SHGR6");
  EXPECT_EQ(Inserted(), (Texts{u"INSERT INTO SMS_ABGROUPMAPS VALUES(6,1, 'S')",
                               u"INSERT INTO SMS_ABGROUPMAPS VALUES(6,2, 'S')"}));
  EXPECT_EQ(Ran(u"UPDATE").size(), Ran(kLock).size());
  EXPECT_TRUE(Ran(u"DELETE").empty());
  EXPECT_EQ(Panel(2), u"2 contact(s) added to Drivers.");
  EXPECT_EQ(form->vsfContacts.SelectedRows(), (std::vector<int>{1, 2}));
}

TEST_F(DragTest, TheMarkedGroupGetsThemThoughTheTreeScrollsUnderThePointer) {
  Groups({{u"6", u"Drivers", u"7"}, {u"8", u"Guards", u"7"}});
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS", {{u"NAME"}}, {{u"Drivers"}});
  form->UserPresses(controls::KeyCode::F5, controls::ShiftMask::None);
  ASSERT_TRUE(Complete());
  Select(1, 1);
  peers.Lines->Scrolls = true;
  form->vsfContacts.DragOver(10, LineOf(u"SHGR6"));
  EXPECT_EQ(peers.Happened.back(), "tree marks SHGR6");
  EndWithDrop();
  EXPECT_EQ(Inserted(), Texts{u"INSERT INTO SMS_ABGROUPMAPS VALUES(6,1, 'S')"});
}

TEST_F(DragTest, RowsThatWereDraggedAreAddedThoughTheListIsLoadedMeanwhile) {
  Select(1, 3);
  EXPECT_TRUE(MayDropOn(u"SHGR6"));
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(form->vsfContacts.Selection().Count(), 0);
  EXPECT_TRUE(MayDropOn(u"SHGR6"));
  EndWithDrop();
  EXPECT_EQ(Inserted().size(), 3U);
}

TEST_F(DragTest, NextDragHasTheRowsThatAreSelectedThen) {
  Select(1, 1);
  EXPECT_TRUE(MayDropOn(u"SHGR6"));
  form->vsfContacts.DragEnd(false);
  EXPECT_TRUE(Inserted().empty());
  Select(2, 2);
  DropOn(u"SHGR6");
  EXPECT_EQ(Inserted(), Texts{u"INSERT INTO SMS_ABGROUPMAPS VALUES(6,2, 'S')"});
}

TEST_F(DragTest, DropWhereNothingIsMarkedAddsNothing) {
  Select(1, 1);
  EXPECT_TRUE(MayDropOn(u"SHGR6"));
  EXPECT_FALSE(MayDropOn(u"SFLD7"));
  EndWithDrop();
  EXPECT_TRUE(Inserted().empty());
}

TEST_F(DragTest, RowsWhoseDragEndedWithTheWindowAreForgotten) {
  Select(1, 2);
  EXPECT_TRUE(MayDropOn(u"SHGR6"));
  form->Unload();  // with the button held
  form->Show();
  ClickAndWait(u"SHARED");
  Select(3, 3);
  DropOn(u"SHGR6");
  EXPECT_EQ(Inserted(), Texts{u"INSERT INTO SMS_ABGROUPMAPS VALUES(6,3, 'S')"});
}

TEST_F(DragTest, GroupsAndRemoteContactsAreLeftOut) {
  Select(3, 5);
  DropOn(u"SHGR6");
  EXPECT_EQ(Inserted(), Texts{u"INSERT INTO SMS_ABGROUPMAPS VALUES(6,3, 'S')"});
  EXPECT_EQ(Panel(2), u"1 contact(s) added to Drivers, 2 left out.");
}

TEST_F(DragTest, WithoutAContactNothingIsAdded) {
  Select(4, 5);
  DropOn(u"SHGR6");
  EXPECT_TRUE(Inserted().empty());
  EXPECT_EQ(Panel(2), u"Only contacts that can be changed here are added to a group.");
}

TEST_F(DragTest, AMemberIsNotAddedTwice) {
  driver.Answer(u"SELECT GROUP_ID FROM SMS_ABGROUPMAPS", {{u"GROUP_ID"}}, {{u"6"}});
  Select(1, 2);
  DropOn(u"SHGR6");
  EXPECT_TRUE(Inserted().empty());
  EXPECT_EQ(Panel(2), u"0 contact(s) added to Drivers, 2 were in it.");
}

TEST_F(DragTest, ContactsThatAreGoneAreSaid) {
  driver.Answer(u"SELECT FNAME FROM SMS_ABCONTACTS", {{u"FNAME"}}, {});
  Select(1, 2);
  DropOn(u"SHGR6");
  EXPECT_TRUE(Inserted().empty());
  EXPECT_EQ(Panel(2), u"0 contact(s) added to Drivers, 2 no longer exist.");
}

TEST_F(DragTest, AGroupThatIsGoneIsSaidOnceAndLeavesTheTree) {
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS", {{u"NAME"}}, {});
  Groups({});
  Select(1, 3);
  DropOn(u"SHGR6");
  EXPECT_TRUE(Inserted().empty());
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(form->tvwContacts.Find(u"SHGR6"), nullptr);
}

TEST_F(DragTest, AFailureIsLoggedAndSaid) {
  driver.Fail(u"INSERT", Error(ErrorNumber::DriverFailure, u"connection lost"));
  Select(1, 3);
  DropOn(u"SHGR6");
  EXPECT_EQ(
      ErrorsLogged(u"KTRVAddressBook: Error occurred. Sub: AddMembers, Module: frmAddressBook"), 1);
  EXPECT_EQ(Panel(2), u"0 contact(s) added to Drivers; not all, the log says why.");
  EXPECT_EQ(Ran(u"INSERT").size(), 1U);
}

TEST_F(DragTest, ManyContactsAreAddedWhileTheWindowAnswersAndStopWithIt) {
  DropMany();
  ASSERT_TRUE(form->IsAdding());
  form->ContactNew({});  // no other command meanwhile
  EXPECT_EQ(Panel(2), u"Contacts are still being added to a group.");
  form->Unload();
  EXPECT_FALSE(form->IsAdding());
  const std::size_t inserted = Ran(u"INSERT").size();
  EXPECT_LT(inserted, 3000U);
  EXPECT_NE(Log().find(u"Adding members stopped: "), String::npos);
}

TEST_F(DragTest, AWindowThatIsClosedBelowItsMessageIsThereUntilTheAnswer) {
  DropMany();
  ASSERT_TRUE(form->IsAdding());
  driver.Answer(u"SELECT NAME FROM SMS_ABGROUPS", {{u"NAME"}}, {});
  bool mayBeDestroyed = true;
  screen.WhileAsked([&] {
    form->Unload();
    int turns = 0;  // of the message loop
    EXPECT_TRUE(screen.WaitUntil([&] { return ++turns > 5; }));
    mayBeDestroyed = form->IsGone();
  });
  ASSERT_TRUE(screen.WaitUntil([&] { return !screen.Messages.empty(); }));
  EXPECT_FALSE(mayBeDestroyed);
  EXPECT_TRUE(screen.WaitUntil([&] { return form->IsGone(); }));
}

}  // namespace
}  // namespace ktrv::tests
