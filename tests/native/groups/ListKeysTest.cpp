#include "controls/Color.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// Finding, sorting and the keys of both lists.
struct ListKeysTest : tests::GroupsTest {
  ListKeysTest() {
    Candidates({{u"1", u"Bert Al", u"98001", u"91", u"1", u"91 98001"},
                {u"2", u"Anna Ek", u"98002", u"", u"1", u"98002"},
                {u"3", u"Zo\u00EB Ek", u"030-1234", u"49", u"1", u"49 030-1234"},
                {u"4", u"Alma", u"", u"", u"1", u""}});
  }
  void OpenWithAll() {
    OpenPicker();
    ASSERT_TRUE(Complete());
    form->cmdSelectAll.UserClicks();
  }
  void FindMember(StringView text) {
    form->txtFindMember.UserFocuses(true);
    form->txtFindMember.Select(0, static_cast<int>(form->txtFindMember.Text().size()));
    form->txtFindMember.UserTypes(text);
  }
  int Member() const { return form->vsfGroupContacts.ChosenRow(); }
  int Candidate() const { return form->vsfFolderContacts.ChosenRow(); }
  bool IsRed() const { return form->txtFindMember.BackColor() == controls::kNotFoundBackground; }
};

TEST_F(ListKeysTest, MembersAreFoundByWordsAndNumbers) {
  OpenWithAll();
  FindMember(u"a");
  EXPECT_EQ(Member(), 2);  // the first name that starts so
  FindMember(u"ek zo");
  EXPECT_EQ(Member(), 3);
  FindMember(u"98 00 2");
  EXPECT_EQ(Member(), 2);
  EXPECT_FALSE(IsRed());
}

TEST_F(ListKeysTest, MembersOfALoadedGroupAreFoundToo) {
  MembersAre({{u"1", u"Bert", u"", u"", u"1", u""}, {u"2", u"Anna Ek", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  FindMember(u"ek");
  EXPECT_EQ(Member(), 2);
}

TEST_F(ListKeysTest, WhatIsNotFoundIsSaid) {
  OpenWithAll();
  FindMember(u"al");
  FindMember(u"xy");
  EXPECT_EQ(Member(), 4);
  EXPECT_TRUE(IsRed());
  EXPECT_EQ(form->lblOutcome.Caption(), u"Not found: xy");
  FindMember(u"b");
  EXPECT_FALSE(IsRed());
  EXPECT_EQ(form->lblOutcome.Caption(), u"");
  EXPECT_EQ(Member(), 1);
}

TEST_F(ListKeysTest, EmptyTextChangesNothing) {
  OpenWithAll();
  FindMember(u"al");
  form->txtFindMember.SetText(u"  ");
  EXPECT_EQ(Member(), 4);
  EXPECT_FALSE(IsRed());
}

TEST_F(ListKeysTest, NothingIsFoundInAnEmptyList) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  FindMember(u"a");
  EXPECT_TRUE(IsRed());
  EXPECT_EQ(Member(), 0);
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(ListKeysTest, EnterAndF3GoOnAndAround) {
  using controls::KeyCode::Enter;
  using controls::KeyCode::F3;
  OpenWithAll();
  FindMember(u"ek");
  EXPECT_EQ(Member(), 2);
  form->UserPresses(Enter, controls::ShiftMask::None);
  EXPECT_EQ(Member(), 3);
  form->UserPresses(F3, controls::ShiftMask::None);
  EXPECT_EQ(Member(), 2);
  form->UserPresses(Enter, controls::ShiftMask::Shift);
  EXPECT_EQ(Member(), 3);
  form->vsfGroupContacts.UserFocuses(true);
  form->UserPresses(F3, controls::ShiftMask::Shift);
  EXPECT_EQ(Member(), 2);
  form->vsfFolderContacts.UserFocuses(true);
  EXPECT_EQ(form->ShortcutOf(F3, controls::ShiftMask::None), nullptr);
}

TEST_F(ListKeysTest, DownGoesToTheListAndEscapeClears) {
  using controls::KeyCode::Escape;
  OpenWithAll();
  FindMember(u"zo");
  form->UserPresses(Escape, controls::ShiftMask::None);
  EXPECT_EQ(form->txtFindMember.Text(), u"");
  EXPECT_EQ(form->ShortcutOf(Escape, controls::ShiftMask::None), nullptr);  // closes the dialog
  form->UserPresses(controls::KeyCode::Down, controls::ShiftMask::None);
  EXPECT_TRUE(form->vsfGroupContacts.HasFocus());
  EXPECT_EQ(Member(), 3);
}

TEST_F(ListKeysTest, CandidatesWhoseNameBeginsSoAreFoundFirst) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  form->txtFind.UserTypes(u"al");
  EXPECT_EQ(Candidate(), 4);
  form->cmdFind.UserClicks();
  EXPECT_EQ(Candidate(), 4);
}

TEST_F(ListKeysTest, OtherwiseCandidatesAreFoundByWordsAndNumbers) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  form->txtFind.UserTypes(u"ek");
  EXPECT_EQ(Candidate(), 2);
  form->cmdFind.UserClicks();
  EXPECT_EQ(Candidate(), 3);
  form->cmdFind.UserClicks();
  EXPECT_EQ(Candidate(), 2);
  form->txtFind.SetText(u"030 12");
  EXPECT_EQ(Candidate(), 3);
}

TEST_F(ListKeysTest, LettersTypedInAListAreMeantForTheName) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  for (const auto* grid : {&form->vsfFolderContacts, &form->vsfGroupContacts}) {
    EXPECT_EQ(grid->TypingColumn(), grid->ColIndex(u"NAME"));
  }
}

TEST_F(ListKeysTest, EnterTakesTheRow) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  form->vsfFolderContacts.SetRow(2);
  form->vsfFolderContacts.UserPresses(controls::KeyCode::Enter, 0);
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (std::vector<String>{u"2"}));
}

TEST_F(ListKeysTest, EnterInTheRightListIsOk) {
  OpenWithAll();
  form->vsfGroupContacts.SetRow(1);
  form->vsfGroupContacts.UserPresses(controls::KeyCode::Enter, 0);
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Left().SelectedRecipients->Count(), 4);
}

TEST_F(ListKeysTest, EnterDoesNotPressAnOkThatIsDisabled) {
  session.IsAdmin = UserType::GeneralUser;
  OpenWithAll();
  form->vsfGroupContacts.UserPresses(controls::KeyCode::Enter, 0);
  EXPECT_TRUE(form->IsLoaded());
}

TEST_F(ListKeysTest, WidthsOutlastTheSource) {
  Folders({{u"3", u"Friends", u"S", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  auto& grid = form->vsfFolderContacts;
  grid.UserSizesColumn(grid.ColIndex(u"NAME"), 3210);
  ASSERT_TRUE(Choose(u"Friends"));
  EXPECT_EQ(grid.ColumnAt(grid.ColIndex(u"NAME")).Width, 3210);
}

TEST_F(ListKeysTest, BothListsAreSortedByEachOfTheirColumns) {
  OpenWithAll();
  for (auto* grid : {&form->vsfFolderContacts, &form->vsfGroupContacts}) {
    grid->UserClicksHeading(grid->ColIndex(u"NAME"));
    EXPECT_EQ(Column(*grid, u"ID"), (std::vector<String>{u"4", u"2", u"1", u"3"}));
    grid->UserClicksHeading(grid->ColIndex(u"MOBILE_DISPLAY"));
    EXPECT_EQ(Column(*grid, u"ID"), (std::vector<String>{u"4", u"3", u"1", u"2"}));
  }
}

TEST_F(ListKeysTest, ArrowGoesWhenMoreRowsArrive) {
  Candidates(Contacts(1200));
  OpenPicker();
  ASSERT_TRUE(Complete());
  HoldFetches();
  form->LoadFolderContacts(u"0");
  auto& grid = form->vsfFolderContacts;
  grid.UserClicksHeading(grid.ColIndex(u"NAME"));
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  for (int column = 0; column < grid.Cols(); ++column) {
    EXPECT_EQ(grid.ColumnAt(column).HeadingPicture, controls::Image::None) << column;
  }
}

}  // namespace
}  // namespace ktrv::forms
