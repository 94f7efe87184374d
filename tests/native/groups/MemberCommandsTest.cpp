#include "controls/Image.h"
#include "data/GroupQueries.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// The commands on the right list.
struct MemberCommandsTest : tests::GroupsTest {
  MemberCommandsTest() {
    Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
                {u"2", u"Bert", u"98002", u"", u"1", u"98002"},
                {u"3", u"Cora", u"", u"", u"1", u""},
                {u"4", u"Dora", u"98004", u"", u"1", u"98004"},
                {u"2", u"Team", u"", u"", u"2", u""}});
  }
  void Open() {
    OpenPicker();
    ASSERT_TRUE(Complete());
  }
  void OpenWithFour() {
    Open();
    Take({1, 2, 3, 4});
  }
  controls::FlexGrid& List() const { return form->vsfGroupContacts; }
  std::vector<String> Ids() const { return Column(List(), u"ID"); }
  void Select(std::vector<int> rows) { List().UserSelects(rows, rows.front()); }
  void Remove(std::vector<int> rows) {
    Select(std::move(rows));
    form->cmdRemove.UserClicks();
  }
  const String& Outcome() const { return form->lblOutcome.Caption(); }
  bool IsTicked(int row) const { return form->vsfFolderContacts.Mark.Has(row); }
  /// Remove, Remove all, Undo; 1 is enabled.
  std::string Enabled() const {
    std::string enabled;
    for (const auto* button : {&form->cmdRemove, &form->cmdRemoveAll, &form->cmdUndo}) {
      enabled += button->Enabled() ? '1' : '0';
    }
    return enabled;
  }
};

TEST_F(MemberCommandsTest, ButtonsThatHaveNoEffectAreDisabled) {
  Open();
  EXPECT_EQ(Enabled(), "000");
  Take({1, 2});
  EXPECT_EQ(Enabled(), "011");
  Select({1});
  EXPECT_EQ(Enabled(), "111");
  form->cmdRemoveAll.UserClicks();
  EXPECT_EQ(Enabled(), "001");
  form->cmdUndo.UserClicks();
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Enabled(), "000");
}

TEST_F(MemberCommandsTest, OrdinaryUserMayOnlyLookAtThem) {
  session.IsAdmin = UserType::GeneralUser;
  OpenWithFour();
  Select({1});
  EXPECT_EQ(Enabled(), "000");
}

TEST_F(MemberCommandsTest, RemoveTakesTheSelectedRowsOut) {
  OpenWithFour();
  Remove({1, 3});
  EXPECT_EQ(Ids(), (std::vector<String>{u"2", u"4"}));
  EXPECT_EQ(MemberCount(), u"2 Member(s)");
  EXPECT_EQ(Outcome(), u"2 removed");
}

TEST_F(MemberCommandsTest, NextRowIsCurrentAfterwards) {
  OpenWithFour();
  Remove({2});
  EXPECT_EQ(List().SelectedRows(), (std::vector<int>{2}));
  EXPECT_EQ(List().Row(), 2);
  EXPECT_EQ(List().Text(2, List().ColIndex(u"NAME")), u"Cora");
  List().UserPresses(controls::KeyCode::Delete, 0);
  List().UserPresses(controls::KeyCode::Delete, 0);
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
  EXPECT_EQ(List().Row(), 1);  // nothing follows the last one
  List().UserPresses(controls::KeyCode::Delete, 0);
  EXPECT_EQ(List().Row(), 0);
}

TEST_F(MemberCommandsTest, UndoPutsRowsBackWhereTheyWere) {
  OpenWithFour();
  Remove({1, 3});
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"2", u"3", u"4"}));
  EXPECT_EQ(Column(List(), u"MOBILE_DISPLAY"),
            (std::vector<String>{u"91 98001", u"98002", u"", u"98004"}));
  EXPECT_EQ(Column(List(), u"CONTACTTYPE"), (std::vector<String>{u"1", u"1", u"1", u"1"}));
  EXPECT_EQ(MemberCount(), u"4 Member(s)");
  EXPECT_EQ(Outcome(), u"Undone: 2 back in the list");
  EXPECT_EQ(List().Row(), 1);
}

TEST_F(MemberCommandsTest, ManyRowsComeBackInTheirOrder) {
  constexpr int kRows = 50001;  // several portions, the last one not full
  std::vector<Row> candidates;
  for (int id = 1; id <= kRows; ++id) {
    candidates.push_back({ToDecimal(id), u"Name", u"", u"", u"1", u""});
  }
  Candidates(candidates);
  Open();
  form->cmdSelectAll.UserClicks();
  const std::vector<String> all = Ids();
  ASSERT_EQ(all.size(), candidates.size());
  std::vector<int> odd;
  std::vector<String> even;
  for (int row = 1; row <= kRows; ++row) {
    if (row % 2 == 1) {
      odd.push_back(row);
    } else {
      even.push_back(all[static_cast<std::size_t>(row) - 1]);
    }
  }
  Remove(odd);
  EXPECT_EQ(Ids(), even);
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), all);
  form->cmdRemoveAll.UserClicks();
  EXPECT_TRUE(Ids().empty());
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), all);
  form->cmdSelectAll.UserClicks();  // all are known again
  EXPECT_EQ(MemberCount(), u"50001 Member(s)");
  form->cmdUndo.UserClicks();
  EXPECT_TRUE(Ids().empty());
  EXPECT_EQ(Outcome(), u"Undone: 50001 removed");
}

TEST_F(MemberCommandsTest, UndoGoesBackChangeByChange) {
  Open();
  Take({1});
  Take({2, 3});
  form->cmdRemoveAll.UserClicks();
  EXPECT_TRUE(Ids().empty());
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"2", u"3"}));
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
  EXPECT_EQ(Outcome(), u"Undone: 2 removed");
  form->cmdUndo.UserClicks();
  EXPECT_TRUE(Ids().empty());
  EXPECT_EQ(MemberCount(), u"0 Member(s)");
}

TEST_F(MemberCommandsTest, WhatAddedNothingIsNotUndone) {
  Open();
  Take({1});
  Take({1});
  form->cmdUndo.UserClicks();
  EXPECT_TRUE(Ids().empty());
}

TEST_F(MemberCommandsTest, OnlyTheLastTwentyChangesAreUndone) {
  Open();
  Take({1});
  for (int time = 0; time < 10; ++time) {
    Take({2});
    Remove({2});
  }
  for (int time = 0; time < 30; ++time) form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
  EXPECT_FALSE(form->cmdUndo.Enabled());
}

TEST_F(MemberCommandsTest, UndoBringsNobodyTwice) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}, {u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Remove({1});
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), (std::vector<String>{u"1"}));
  EXPECT_EQ(Outcome(), u"Undone: 0 back in the list");
  Remove({1});
  EXPECT_TRUE(Ids().empty());
}

TEST_F(MemberCommandsTest, UndoBringsBackEachKindOfAnId) {
  MembersAre({{u"7", u"Anna", u"", u"", u"1", u""}, {u"7", u"Rita", u"", u"", u"3", u""}});
  const auto names = [&] { return Column(List(), u"NAME"); };
  const std::vector<String> both{u"Anna", u"Rita"};
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  form->cmdRemoveAll.UserClicks();
  form->cmdUndo.UserClicks();
  EXPECT_EQ(names(), both);
  EXPECT_EQ(Outcome(), u"Undone: 2 back in the list");
  Remove({2});
  EXPECT_EQ(names(), std::vector<String>{u"Anna"});
  form->cmdUndo.UserClicks();
  EXPECT_EQ(names(), both);
  Remove({1});
  EXPECT_FALSE(form->Members().Has(ContactKind::Contact, u"7"));
  EXPECT_TRUE(form->Members().Has(ContactKind::RemoteContact, u"7"));
}

TEST_F(MemberCommandsTest, IdIsFreeOnceNoKindHasIt) {
  MembersAre({{u"2", u"Bert", u"", u"", u"1", u""}, {u"2", u"Rita", u"", u"", u"3", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Remove({1});
  Take({2});
  EXPECT_EQ(Column(List(), u"NAME"), (std::vector<String>{u"Rita"}));
  Remove({1});
  Take({2});
  EXPECT_EQ(List().Rows(), 2);
  form->cmdUndo.UserClicks();
  form->cmdUndo.UserClicks();
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Column(List(), u"NAME"), (std::vector<String>{u"Bert", u"Rita"}));
}

TEST_F(MemberCommandsTest, RowsBackInTheListAreKnownAgain) {
  OpenWithFour();
  Remove({2});
  form->cmdUndo.UserClicks();
  Take({2});
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"2", u"3", u"4"}));
  Take({5});  // a group with the number of a contact
  EXPECT_EQ(form->lblLeftOut.Caption(), u"1 left out, ids already in the list: Team");
  form->cmdRemoveAll.UserClicks();
  Take({5});
  EXPECT_EQ(Column(List(), u"NAME"), (std::vector<String>{u"Team"}));
}

TEST_F(MemberCommandsTest, NothingIsChangedOrUndoneWhileMembersAreLoading) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}, {u"4", u"Dora", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Remove({1});
  HoldFetches();
  form->LoadGroupContacts();
  EXPECT_EQ(Enabled(), "000");
  for (auto* button : {&form->cmdRemove, &form->cmdRemoveAll, &form->cmdUndo}) {
    button->UserClicks();
  }
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"4"}));
  // What was removed before belongs to a list that is no longer there.
  EXPECT_EQ(Enabled(), "010");
}

TEST_F(MemberCommandsTest, RemovedRowsStayOutOfAListThatCouldNotBeLoadedAgain) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  Remove({1});
  driver.Fail(data::GroupQueries::kCountMembers, Error(ErrorNumber::DriverFailure, u"gone"));
  form->LoadGroupContacts();
  EXPECT_EQ(Enabled(), "000");
  form->cmdUndo.UserClicks();
  EXPECT_TRUE(Ids().empty());
}

// What is said afterwards.

TEST_F(MemberCommandsTest, SelectSaysHowManyWereAddedAndWhy) {
  Open();
  Take({1});
  EXPECT_EQ(Outcome(), u"1 added");
  Take({1, 2, 3});
  EXPECT_EQ(Outcome(), u"2 added, 1 was in the list already, 1 has no number");
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(Outcome(), u"1 added, 3 were in the list already");
}

TEST_F(MemberCommandsTest, GroupsNeedNoNumber) {
  Candidates({{u"7", u"Team", u"", u"", u"2", u""},
              {u"R1", u"Rita", u"", u"", u"3", u""},
              {u"R2", u"Rolf", u"", u"", u"3", u""}});
  Open();
  form->cmdSelectAll.UserClicks();
  EXPECT_EQ(Outcome(), u"3 added, 2 have no number");
}

// Ticks.

TEST_F(MemberCommandsTest, RowsThatAreTakenAreTicked) {
  Open();
  EXPECT_EQ(form->vsfFolderContacts.Mark.Picture, controls::Image::Tick);
  EXPECT_FALSE(IsTicked(2));
  Take({2});
  EXPECT_TRUE(IsTicked(2));
  EXPECT_FALSE(IsTicked(1));
  EXPECT_FALSE(IsTicked(5));  // a group with the same number
  Remove({1});
  EXPECT_FALSE(IsTicked(2));
  form->cmdUndo.UserClicks();
  EXPECT_TRUE(IsTicked(2));
}

TEST_F(MemberCommandsTest, WhileMembersAreLoadingNobodyIsTicked) {
  MembersAre({{u"1", u"Anna", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_TRUE(IsTicked(1));
  HoldFetches();
  form->LoadGroupContacts();
  EXPECT_FALSE(IsTicked(1));
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
}

// The order.

TEST_F(MemberCommandsTest, ArrowGoesWhenRowsComeAndStaysWhenTheyGo) {
  OpenWithFour();
  const int name = List().ColIndex(u"NAME");
  const auto arrow = [&] { return List().ColumnAt(name).HeadingPicture; };
  List().UserClicksHeading(name);
  List().UserClicksHeading(name);
  Remove({2});
  EXPECT_EQ(arrow(), controls::Image::SortDescending);
  form->cmdUndo.UserClicks();
  EXPECT_EQ(arrow(), controls::Image::None);
  EXPECT_EQ(Ids(), (std::vector<String>{u"4", u"3", u"2", u"1"}));
  List().UserClicksHeading(name);
  EXPECT_EQ(arrow(), controls::Image::SortAscending);
  EXPECT_EQ(Ids(), (std::vector<String>{u"1", u"2", u"3", u"4"}));
  Take({5});
  EXPECT_EQ(arrow(), controls::Image::SortAscending);  // nobody came
  Remove({2});
  Take({2});
  EXPECT_EQ(arrow(), controls::Image::None);
}

/// The same with what is written.
struct MemberCommandsOnDatabase : tests::GroupsOnDatabase {
  void Modify() {
    OpenToModify(u"11", u"Team");
    ASSERT_TRUE(Complete());
  }
  void RemoveRow(int row) {
    form->vsfGroupContacts.UserSelects({row}, row);
    form->cmdRemove.UserClicks();
  }
};

TEST_F(MemberCommandsOnDatabase, WhatIsSeenIsSaved) {
  Modify();
  Take({3});
  form->cmdRemoveAll.UserClicks();
  form->cmdUndo.UserClicks();
  RemoveRow(1);
  const auto seen = Column(form->vsfGroupContacts, u"ID");
  EXPECT_EQ(seen, (std::vector<String>{u"2", u"3"}));
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"2:S,3:S");
}

TEST_F(MemberCommandsOnDatabase, NothingIsUndoneWhileTheGroupIsSaved) {
  Modify();
  RemoveRow(1);
  Take({3});
  watched.BeforeExecute = [this](StringView text) {
    if (!text.starts_with(u"INSERT INTO SMS_ABGROUPMAPS")) return;
    for (auto* button : {&form->cmdRemove, &form->cmdRemoveAll, &form->cmdUndo}) {
      button->UserClicks();
    }
  };
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"2:S,3:S");
}

TEST_F(MemberCommandsOnDatabase, UndoBringsBackWhatTheContactIsCalledNow) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  Take({1});
  RemoveRow(1);
  AnswerContacts([this](const ContactRequest& request) {
    Run(u"UPDATE SMS_ABCONTACTS SET MOBILENO = '55555' WHERE ID = " + request.EditContactId);
    return request.EditContactId;
  });
  form->vsfFolderContacts.SetRow(1);
  form->cmdProperty.UserClicks();
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Column(form->vsfGroupContacts, u"MOBILENO"), (std::vector<String>{u"55555"}));
  form->cmdOK.UserClicks();
  EXPECT_EQ(Texts(*Left().SelectedMobileNos), (std::vector<String>{u"55555"}));
}

}  // namespace
}  // namespace ktrv::forms
