#include "forms/addressbook/ItemMenus.h"

#include "common/Error.h"
#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using Names = std::vector<String>;

const Names kAll = {u"mnuLocalContactContext",  u"mnuLocalGroupContext",
                    u"mnuLocalFolderContext",   u"mnuAddLocalContactGroupContext",
                    u"mnuSharedContactContext", u"mnuSharedGroupContext",
                    u"mnuSharedFolderContext",  u"mnuAddSharedContactGroupContext",
                    u"mnuSeparator1",           u"mnuProperties"};

TEST(ItemMenus, TheTreesMenuHasItsItemsInOrder) {
  const forms::ItemMenus menus;
  Names names;
  Names captions;
  for (const auto& item : menus.mnuContactContext.Items) {
    names.push_back(item.Name);
    captions.push_back(item.Caption);
  }
  EXPECT_EQ(menus.mnuContactContext.Caption, u"Contact Context Menu");
  EXPECT_EQ(names, kAll);
  EXPECT_EQ(captions, (Names{u"Create Local Contact", u"Create Local Group", u"Create Local Folder",
                             u"Add Local Contact to this Group", u"Create Shared Contact",
                             u"Create Shared Group", u"Create Shared Folder",
                             u"Add Shared Contact to this Group", u"-", u"Properties"}));
}

TEST(ItemMenus, TheClipboardsMenuHoldsCopyAndPaste) {
  forms::ItemMenus menus;
  EXPECT_EQ(menus.mnuPropertyContextmenu.Caption, u"Property Context Menu");
  ASSERT_EQ(menus.mnuPropertyContextmenu.Items.size(), 2U);
  EXPECT_EQ(menus.Item(u"mnuCopy").Caption, u"Copy");
  EXPECT_EQ(menus.Item(u"mnuPaste").Caption, u"Paste");
}

TEST(ItemMenus, TheTestMenuHasItsTwoItems) {
  forms::ItemMenus menus;
  EXPECT_EQ(menus.mnuTest.Caption, u"Test Menu");
  ASSERT_EQ(menus.mnuTest.Items.size(), 2U);
  EXPECT_EQ(menus.Item(u"mnuTest1").Caption, u"Test 1");
  EXPECT_EQ(menus.Item(u"mnuTest2").Caption, u"Test 2");
}

TEST(ItemMenus, AnItemThatIsNotThereIsAFailure) {
  EXPECT_THROW(forms::ItemMenus().Item(u"mnuOther"), Error);
}

/// One cell: the node, the item and whether it is to be seen there at the server.
struct Cell {
  const char16_t* Node;
  const char16_t* Item;
  bool Visible;
};

struct MenuCell : AddressBookTest, testing::WithParamInterface<Cell> {
  MenuCell() {
    SharedFolders({{u"7", u"Staff"}});
    RemoteFolders({{u"3", u"Dealers"}});
    Groups({{u"6", u"Drivers", u"7"}});
  }
  Names RightClick(StringView key) {
    Click(key);
    form->tvwContacts.UserReleases(controls::MouseButton::Right, 0, 10, 10);
    return screen.Menus.back().Names;
  }
};

TEST_P(MenuCell, AtTheServer) {
  RunAt(RunApplicationAt::RuntAtServer);
  Open();
  // Whatever the menu showed before.
  RightClick(u"RFLD3");
  RightClick(u"SHARED");
  const Names shown = RightClick(GetParam().Node);
  EXPECT_EQ(std::count(shown.begin(), shown.end(), GetParam().Item), GetParam().Visible ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(, MenuCell,
                         testing::Values(Cell{u"SHARED", u"mnuSharedContactContext", true},
                                         Cell{u"SHGR6", u"mnuSharedContactContext", true},
                                         Cell{u"SFLD7", u"mnuSharedContactContext", true},
                                         Cell{u"RFLD3", u"mnuSharedContactContext", false},
                                         Cell{u"SHARED", u"mnuSharedGroupContext", true},
                                         Cell{u"SHGR6", u"mnuSharedGroupContext", false},
                                         Cell{u"SFLD7", u"mnuSharedGroupContext", true},
                                         Cell{u"RFLD3", u"mnuSharedGroupContext", false},
                                         Cell{u"SHARED", u"mnuSharedFolderContext", true},
                                         Cell{u"SHGR6", u"mnuSharedFolderContext", false},
                                         Cell{u"SFLD7", u"mnuSharedFolderContext", false},
                                         Cell{u"RFLD3", u"mnuSharedFolderContext", false},
                                         Cell{u"SHARED", u"mnuAddSharedContactGroupContext", false},
                                         Cell{u"SHGR6", u"mnuAddSharedContactGroupContext", true},
                                         Cell{u"SFLD7", u"mnuAddSharedContactGroupContext", false},
                                         Cell{u"RFLD3", u"mnuAddSharedContactGroupContext", false},
                                         Cell{u"SHARED", u"mnuSeparator1", false},
                                         Cell{u"SHGR6", u"mnuSeparator1", true},
                                         Cell{u"SFLD7", u"mnuSeparator1", true},
                                         Cell{u"RFLD3", u"mnuSeparator1", false},
                                         Cell{u"SHARED", u"mnuProperties", false},
                                         Cell{u"SHGR6", u"mnuProperties", true},
                                         Cell{u"SFLD7", u"mnuProperties", true},
                                         Cell{u"RFLD3", u"mnuProperties", true}),
                         [](const auto& cell) {
                           return ToUtf8(String(cell.param.Node) + u"_" + String(cell.param.Item));
                         });

struct ItemMenuTest : MenuCell {};

TEST_F(ItemMenuTest, NoLocalItemIsShownAtTheServer) {
  RunAt(RunApplicationAt::RuntAtServer);
  Open();
  for (const StringView node : {u"SHARED", u"SFLD7", u"RFLD3", u"SHGR6"}) {
    for (const String& name : RightClick(node)) EXPECT_EQ(name.find(u"Local"), String::npos);
  }
}

TEST_F(ItemMenuTest, AtTheClientTheMenuIsShownAsItStands) {
  Open();
  for (const StringView node : {u"SHARED", u"SFLD7", u"RFLD3", u"SHGR6"}) {
    EXPECT_EQ(RightClick(node), kAll);
  }
}

TEST_F(ItemMenuTest, AtTheClientItStandsAsTheServerLeftIt) {
  RunAt(RunApplicationAt::RuntAtServer);
  Open();
  const Names left = RightClick(u"RFLD3");
  form->Place().User.RunAt = RunApplicationAt::RuntAtClient;
  EXPECT_EQ(RightClick(u"SHARED"), left);
}

TEST_F(ItemMenuTest, TheLocalItemsDoNothing) {
  Open();
  for (std::size_t item = 0; item < 4; ++item) {
    screen.Choose(kAll[item]);
    RightClick(u"SHARED");
  }
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemMenuTest, ItPopsUpWhereTheNodeWasClicked) {
  Open();
  RightClick(u"SFLD7");
  ASSERT_TRUE(screen.Menus.back().At);
  EXPECT_EQ(screen.Menus.back().At->X, form->tvwContacts.Left() + 10);
  EXPECT_EQ(screen.Menus.back().At->Y, form->tvwContacts.Top() + 10);
}

TEST_F(ItemMenuTest, ItPopsUpAtThePointerWhenNoPlaceIsGiven) {
  Open();
  form->ShowItemContextMenu();
  EXPECT_FALSE(screen.Menus.back().At);
}

TEST_F(ItemMenuTest, OneOfTheTwoPlacesWillDo) {
  Open();
  form->ShowItemContextMenu({}, 700);
  ASSERT_TRUE(screen.Menus.back().At);
  EXPECT_EQ(screen.Menus.back().At->X, 0);
  EXPECT_EQ(screen.Menus.back().At->Y, 700);
}

TEST_F(ItemMenuTest, TheGridShowsNoMenu) {
  Counts(Queries::kCountFolderContacts, 1);
  Lists({Item(u"1", u"Anna")});
  Open();
  ClickAndWait(u"SHARED");
  form->tvwContacts.UserReleases(controls::MouseButton::Left, 0, 10, 10);
  form->vsfContacts.SetRow(1);
  form->vsfContacts.UserReleases(controls::MouseButton::Right, 0, 1);
  EXPECT_TRUE(screen.Menus.empty());
}

/// The tree jumps to the root when it is rebuilt at the server, e.g. after a deletion.
TEST_F(ItemMenuTest, ItemsDoNothingIfAnotherPlaceBecameCurrentMeanwhile) {
  RunAt(RunApplicationAt::RuntAtServer);
  Open();
  for (const StringView item : {u"mnuSharedContactContext", u"mnuSharedGroupContext"}) {
    screen.WhileMenuIsOpen([&] { Click(u"SHARED"); });
    screen.Choose(String(item));
    screen.PlayModal([](controls::Form& editor) {
      ADD_FAILURE() << "an editor was opened for the root";
      editor.UserCloses();
    });
    RightClick(u"SFLD7");
    EXPECT_EQ(screen.LastMessage().Text, u"Another place was selected meanwhile.");
    screen.Messages.clear();
  }
}

TEST_F(ItemMenuTest, PasteDoesNothing) {
  screen.Clipboard = u"Name\tMobile No\r\nAnna\t1\r\n";
  Open();
  ClickAndWait(u"SHARED");
  const std::size_t before = driver.Executed().size();
  form->Menus.Item(u"mnuPaste").Click();
  form->vsfContacts.UserPresses('V', controls::ShiftMask::Ctrl);
  EXPECT_EQ(driver.Executed().size(), before);
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(form->vsfContacts.Rows(), 1);
}

}  // namespace
}  // namespace ktrv::tests
