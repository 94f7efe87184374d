#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

struct CopyTest : AddressBookTest {
  void Show(std::vector<Row> rows) {
    Counts(Queries::kCountFolderContacts, static_cast<std::int64_t>(rows.size()));
    Lists(std::move(rows));
    Open();
    ClickAndWait(u"SHARED");
  }
  void PressCopy() { form->vsfContacts.UserPresses('C', controls::ShiftMask::Ctrl); }
};

TEST_F(CopyTest, TheSelectedRowsStandUnderTheHeadingsSeparatedByTabs) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert"), Item(u"3", u"Carl")});
  form->vsfContacts.SelectRows(1, 2);
  PressCopy();
  EXPECT_EQ(screen.Clipboard,
            u"Name\tMobile No\tEmail\tAddress\tOrganisation\r\n"
            u"Anna\t91 98200\ta@b.c\tStreet 1\tAcme\r\n"
            u"Bert\t91 98200\ta@b.c\tStreet 1\tAcme\r\n");
}

TEST_F(CopyTest, TheMenusItemDoesTheSame) {
  Show({Item(u"1", u"Anna")});
  form->vsfContacts.SetRow(1);
  form->Menus.Item(u"mnuCopy").Click();
  ASSERT_TRUE(screen.Clipboard);
  EXPECT_TRUE(screen.Clipboard->ends_with(u"Anna\t91 98200\ta@b.c\tStreet 1\tAcme\r\n"));
}

TEST_F(CopyTest, RowsStandInTheOrderShown) {
  Show({Item(u"1", u"Anna"), Item(u"2", u"Bert")});
  form->ChangeSortOrder(u"NAME", controls::SortOrder::Descending);
  form->vsfContacts.SelectAll();
  PressCopy();
  EXPECT_LT(screen.Clipboard->find(u"Bert"), screen.Clipboard->find(u"Anna"));
}

TEST_F(CopyTest, WithoutASelectionTheClipboardKeepsWhatItHolds) {
  Show({Item(u"1", u"Anna")});
  screen.Clipboard = u"before";
  PressCopy();
  EXPECT_EQ(screen.Clipboard, u"before");
}

TEST_F(CopyTest, OnAResetGridNothingIsCopied) {
  Open();
  form->vsfContacts.SetRow(1);
  screen.Clipboard = u"before";
  PressCopy();
  EXPECT_EQ(screen.Clipboard, u"before");
}

TEST_F(CopyTest, OtherKeysCopyNothing) {
  Show({Item(u"1", u"Anna")});
  form->vsfContacts.SetRow(1);
  form->vsfContacts.UserPresses('C', 0);
  form->vsfContacts.UserPresses('C', controls::ShiftMask::Ctrl | controls::ShiftMask::Shift);
  form->vsfContacts.UserPresses('X', controls::ShiftMask::Ctrl);
  EXPECT_FALSE(screen.Clipboard);
}

TEST_F(CopyTest, TabsAndLineBreaksWithinACellAreBlanks) {
  Show({Item(u"1", u"An\tna\r\nB")});
  form->vsfContacts.SetRow(1);
  PressCopy();
  EXPECT_NE(screen.Clipboard->find(u"\r\nAn na  B\t"), String::npos);
}

TEST_F(CopyTest, ARemoteContactAndAGroupAreCopiedToo) {
  Show({Item(u"5", u"Drivers", u"2"), Item(u"D1", u"Acme", u"3")});
  form->vsfContacts.SelectAll();
  PressCopy();
  EXPECT_NE(screen.Clipboard->find(u"\r\nDrivers\t"), String::npos);
  EXPECT_NE(screen.Clipboard->find(u"\r\nAcme\t"), String::npos);
}

}  // namespace
}  // namespace ktrv::tests
