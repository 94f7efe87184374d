#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using controls::kSystemWindowBackground;
using controls::SortOrder;
namespace KeyCode = controls::KeyCode;
using controls::ShiftMask::None;
using controls::ShiftMask::Shift;

struct FindBoxTest : AddressBookTest {
  /// The window with a list of these names for the root.
  void Show(std::vector<Row> rows) {
    Counts(Queries::kCountFolderContacts, static_cast<std::int64_t>(rows.size()));
    Lists(std::move(rows));
    Open();
    ClickAndWait(u"SHARED");
    form->txtFind.SetFocus();
  }
  void ShowNames() {
    Show({Item(u"1", u"Anna  Zoll"), Item(u"2", u"Zolt\u00E1n  Kov\u00E1cs"),
          Item(u"3", u"Zo\u00EB  Ek"), Item(u"4", u"Zora  O'Brien")});
  }
  void Type(StringView text) {
    form->txtFind.SetText({});
    for (const char16_t unit : text) form->txtFind.UserTypes(StringView(&unit, 1));
  }
  int Found() const { return form->vsfContacts.ChosenRow(); }
  bool SaysNotFound() const {
    const bool said = Panel(2).starts_with(u"Not found: ");
    EXPECT_EQ(form->txtFind.BackColor() != kSystemWindowBackground, said);
    return said;
  }
};

TEST_F(FindBoxTest, NamesAreFoundAsTheUsersLanguageComparesThem) {
  ShowNames();
  Type(u"zoe");
  EXPECT_EQ(Found(), 3);
  Type(u"zoltan k");
  EXPECT_EQ(Found(), 2);
  Type(u" zoe e");
  EXPECT_EQ(Found(), 3);
}

TEST_F(FindBoxTest, ANameThatBeginsSoIsFoundBeforeOtherWords) {
  ShowNames();
  Type(u"zol");
  EXPECT_EQ(Found(), 2);
  Type(u"zoll");
  EXPECT_EQ(Found(), 1);
  Type(u"bri zo");
  EXPECT_EQ(Found(), 4);
}

TEST_F(FindBoxTest, CompaniesAndNumbersAreFoundWhenNoNameIs) {
  Row zoe = Item(u"2", u"Zoe");
  zoe[3] = u"+49 30-1234";
  zoe[6] = u"Fine Wines";
  Show({Item(u"1", u"Winston"), zoe});
  Type(u"win");
  EXPECT_EQ(Found(), 1);
  Type(u"wine");
  EXPECT_EQ(Found(), 2);
  form->vsfContacts.SetRow(1);
  Type(u"030 12");
  EXPECT_EQ(Found(), 2);
}

TEST_F(FindBoxTest, AnEmptyTextChangesNothing) {
  ShowNames();
  form->vsfContacts.SetRow(3);
  form->txtFind.UserTypes(u" ");
  form->txtFind.SetText({});
  EXPECT_EQ(Found(), 3);
  EXPECT_EQ(Panel(2), u"1 selected");
}

TEST_F(FindBoxTest, WhatIsNotFoundIsSaid) {
  ShowNames();
  Type(u"zo");
  EXPECT_FALSE(SaysNotFound());
  Type(u"zox");
  EXPECT_TRUE(SaysNotFound());
  EXPECT_EQ(Panel(2), u"Not found: zox");
  Type(u"zo");
  EXPECT_FALSE(SaysNotFound());
  EXPECT_EQ(Panel(2), u"1 selected");
}

TEST_F(FindBoxTest, EnterAndF3GoOnAndAroundTheList) {
  ShowNames();
  Type(u"zo");
  EXPECT_EQ(Found(), 2);
  form->UserPresses(KeyCode::Enter, None);
  EXPECT_EQ(Found(), 3);
  form->UserPresses(KeyCode::F3, None);
  EXPECT_EQ(Found(), 4);
  form->UserPresses(KeyCode::F3, None);
  EXPECT_EQ(Found(), 1);
  form->UserPresses(KeyCode::F3, Shift);
  EXPECT_EQ(Found(), 4);
  form->UserPresses(KeyCode::Enter, Shift);
  EXPECT_EQ(Found(), 3);
}

TEST_F(FindBoxTest, F3AlsoGoesOnFromTheList) {
  ShowNames();
  Type(u"zo");
  form->vsfContacts.SetFocus();
  form->UserPresses(KeyCode::F3, None);
  EXPECT_EQ(Found(), 3);
  EXPECT_TRUE(form->vsfContacts.HasFocus());
}

TEST_F(FindBoxTest, F3WithoutATextGoesToTheBox) {
  ShowNames();
  form->vsfContacts.SetFocus();
  form->UserPresses(KeyCode::F3, None);
  EXPECT_TRUE(form->txtFind.HasFocus());
  EXPECT_EQ(Found(), 0);
}

TEST_F(FindBoxTest, EnterInTheListStillOpensTheRow) {
  Show({Item(u"D1", u"Zoe", u"3"), Item(u"D2", u"Zora", u"3")});
  Type(u"zo");
  form->vsfContacts.SetFocus();
  EXPECT_EQ(form->ShortcutOf(KeyCode::Enter, None), nullptr);
  form->vsfContacts.UserPresses(KeyCode::Enter, None);
  EXPECT_EQ(screen.Messages.size(), 1U);
}

TEST_F(FindBoxTest, DownGoesIntoTheListAndEscapeClears) {
  ShowNames();
  Type(u"zoe");
  form->UserPresses(KeyCode::Escape, None);
  EXPECT_EQ(form->txtFind.Text(), u"");
  EXPECT_EQ(Found(), 3);
  form->UserPresses(KeyCode::Down, None);
  EXPECT_TRUE(form->vsfContacts.HasFocus());
  EXPECT_EQ(Found(), 3);
}

TEST_F(FindBoxTest, DownChoosesTheFirstRowWhenNoneIsChosen) {
  ShowNames();
  form->UserPresses(KeyCode::Down, None);
  EXPECT_EQ(Found(), 1);
}

TEST_F(FindBoxTest, ControlFSelectsTheText) {
  ShowNames();
  Type(u"zoe");
  form->vsfContacts.SetFocus();
  form->UserPresses(u'F', controls::ShiftMask::Ctrl);
  EXPECT_TRUE(form->txtFind.HasFocus());
  EXPECT_EQ(form->txtFind.SelectionStart(), 0);
  EXPECT_EQ(form->txtFind.SelectionLength(), 3);
}

TEST_F(FindBoxTest, RowsAreFoundInTheOrderInWhichTheyAreShown) {
  ShowNames();
  form->ChangeSortOrder(u"NAME", SortOrder::Descending);
  Type(u"zo");
  EXPECT_EQ(form->vsfContacts.Text(Found(), form->vsfContacts.ColIndex(u"NAME")), u"Zora  O'Brien");
}

/// A text that is typed while rows are still to come.
struct FindWhileLoadingTest : FindBoxTest {
  FindWhileLoadingTest() {
    SharedFolders({{u"7", u"Staff"}});
    Counts(Queries::kCountFolderContacts, kRows);
    std::vector<Row> rows;
    for (int i = 1; i < kRows; ++i) rows.push_back(Item(ToDecimal(i), u"Name " + ToDecimal(i)));
    rows.push_back(Item(ToDecimal(kRows), u"Zoe"));
    Lists(std::move(rows));
  }
  void OpenAndHold() {
    Open();
    driver.OpenGate.Close();
    Click(u"SHARED");
    form->txtFind.SetFocus();
  }
  void LetGo() {
    driver.OpenGate.Open();
    ASSERT_TRUE(Complete());
  }

  static constexpr int kRows = 2500;
};

TEST_F(FindWhileLoadingTest, ItIsTriedAgainAsRowsCome) {
  OpenAndHold();
  Type(u"zo");
  EXPECT_EQ(Found(), 0);
  EXPECT_FALSE(SaysNotFound());
  LetGo();
  EXPECT_EQ(Found(), kRows);
  EXPECT_FALSE(SaysNotFound());
}

TEST_F(FindWhileLoadingTest, ItIsTriedAgainBeforeAllRowsAreThere) {
  OpenAndHold();
  Type(u"name 900");
  driver.OpenGate.Open();
  ASSERT_TRUE(screen.WaitUntil([this] { return Found() == 900; }));
  EXPECT_TRUE(form->List().IsLoading());
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Found(), 900);
}

TEST_F(FindWhileLoadingTest, WhatIsNotFoundIsSaidWhenAllRowsAreThere) {
  OpenAndHold();
  Type(u"zox");
  EXPECT_FALSE(SaysNotFound());
  LetGo();
  EXPECT_TRUE(SaysNotFound());
  EXPECT_EQ(Found(), 0);
}

TEST_F(FindWhileLoadingTest, ARowThatTheUserSelectsMeanwhileStaysSelected) {
  OpenAndHold();
  Type(u"zo");
  driver.OpenGate.Open();
  ASSERT_TRUE(screen.WaitUntil([this] { return form->vsfContacts.Rows() > 100; }));
  form->vsfContacts.UserSelects({50}, 50);
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Found(), 50);
}

TEST_F(FindWhileLoadingTest, AUserWhoHasGoneToTheListKeepsTheRow) {
  OpenAndHold();
  driver.OpenGate.Open();
  ASSERT_TRUE(screen.WaitUntil([this] { return form->vsfContacts.Rows() > 100; }));
  form->vsfContacts.UserSelects({50}, 50);
  Type(u"zo");
  form->vsfContacts.SetFocus();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Found(), 50);
}

TEST_F(FindWhileLoadingTest, ATextForAnotherListIsNotTriedInTheNext) {
  OpenAndHold();
  Type(u"zo");
  Click(u"SFLD7");
  LetGo();
  EXPECT_EQ(Found(), 0);
}

}  // namespace
}  // namespace ktrv::tests
