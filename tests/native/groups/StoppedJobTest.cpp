#include <thread>

#include "tests/native/groups/GroupsFixture.h"
#include "tests/native/support/NoPeers.h"

namespace ktrv::forms {
namespace {

constexpr StringView kInsertMember = u"INSERT INTO SMS_ABGROUPMAPS";

/// Jobs of the dialog that take so long that the user stops them.
struct StoppedJob : tests::GroupsOnDatabase {
  StoppedJob() {
    TakesLong(kInsertMember);
    screen.WhileWorking = [this](controls::Form&) {
      if (!isSlow) return;
      ++looks;
      form->cmdCancel.UserClicks();
    };
  }
  /// Statements that start so give the dialog the time to look for input.
  void TakesLong(StringView start) {
    watched.BeforeExecute = [this, start = String(start)](StringView text) {
      if (!text.starts_with(start)) return;
      isSlow = true;
      std::this_thread::sleep_for(std::chrono::milliseconds(110));
    };
  }
  void Modify() {
    OpenToModify(u"11", u"Team");
    ASSERT_TRUE(Complete());
    Take({3});
    form->txtGroupName.SetText(u"Crew");
  }
  String Groups() { return Query(u"SELECT NAME FROM SMS_ABGROUPS ORDER BY ID"); }

  int looks = 0;
  bool isSlow = false;
};

TEST_F(StoppedJob, LeavesTheGroupAsItWas) {
  Modify();
  form->cmdOK.UserClicks();
  EXPECT_EQ(looks, 2) << "one that stops it, and one at its end";
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R");
  EXPECT_EQ(Groups(), u"Team,Void");
  EXPECT_EQ(form->lblSave.Caption(), u"Stopped. Nothing was saved.");
  EXPECT_TRUE(form->lblSave.Visible());
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(StoppedJob, IsDoneByTheNextOk) {
  Modify();
  form->cmdOK.UserClicks();
  screen.WhileWorking = nullptr;
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,3:S");
  EXPECT_EQ(Groups(), u"Crew,Void");
}

TEST_F(StoppedJob, LeavesNoNewGroupBehind) {
  OpenToAdd(u"1");
  ASSERT_TRUE(Complete());
  Take({1, 2, 3});
  form->txtGroupName.UserTypes(u"Crew");
  form->cmdOK.UserClicks();
  EXPECT_EQ(Groups(), u"Team,Void");
  screen.WhileWorking = nullptr;
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Groups(), u"Team,Void,Crew");
}

TEST_F(StoppedJob, IsToldAsIncompleteWhereNothingCanBeUndone) {
  watched.HasTransactions = false;
  Modify();
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(form->lblSave.Caption(), u"The stored group is incomplete. OK tries again.");
  screen.WhileWorking = nullptr;
  form->cmdOK.UserClicks();
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,3:S");
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(StoppedJob, StopsTooWhenTheWindowIsClosed) {
  screen.WhileWorking = [](controls::Form& working) { working.UserCloses(); };
  Modify();
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,R1:R");
}

TEST_F(StoppedJob, ObeysNoOtherButton) {
  Modify();
  const std::vector<String> before = Column(form->vsfGroupContacts, u"ID");
  screen.WhileWorking = [&](controls::Form&) {
    ++looks;
    for (auto* button :
         {&form->cmdOK, &form->cmdSelect, &form->cmdSelectAll, &form->cmdNew, &form->cmdProperty,
          &form->cmdFind, &form->cmdRemove, &form->cmdRemoveAll, &form->cmdUndo}) {
      button->UserClicks();
    }
    EXPECT_EQ(form->cmdCancel.Caption(), u"&Stop");
    EXPECT_EQ(form->Pointer(), controls::MousePointer::Hourglass);
    EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), before);
  };
  form->cmdOK.UserClicks();
  EXPECT_GT(looks, 1);
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S,3:S");
  EXPECT_EQ(form->cmdCancel.Caption(), u"&Cancel");
}

TEST_F(StoppedJob, PicksNobody) {
  TakesLong(u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABGROUPMAPS");
  session.ExpandGroups = true;
  OpenPicker();
  ASSERT_TRUE(Complete());
  Take({4, 5});
  form->cmdOK.UserClicks();
  EXPECT_EQ(looks, 2) << "one that stops it, and one at its end";
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_FALSE(form->Picked());
  EXPECT_EQ(form->lblSave.Caption(), u"Stopped. Nothing was selected.");
  EXPECT_EQ(ErrorsLogged(), 0);
}

/// A bar of which each step takes long.
struct SlowBar final : controls::ProgressBarPeer {
  void BoundsChanged() override {}
  void VisibleChanged() override {}
  void EnabledChanged() override {}
  void TextChanged() override {}
  void FocusRequested() override {}
  void RefreshRequested() override {}
  void PlacedIn(controls::StatusBar&, int) override {}
  void ValueChanged() override { std::this_thread::sleep_for(std::chrono::milliseconds(40)); }
};

struct SlowBars final : tests::NoPeers {
  using NoPeers::Make;
  Window<controls::ProgressBarPeer> Make(controls::ProgressBar&) override {
    return std::make_unique<SlowBar>();
  }
};

/// Changes of the right list that the user stops.
struct StoppedChange : tests::GroupsTest {
  StoppedChange() { Candidates(Contacts(5)); }
  void OpenWithFour() {
    OpenPicker();
    ASSERT_TRUE(Complete());
    Take({1, 2, 3, 4});
  }
  void StopsFromNowOn() {
    form->pbrSave.Realise(bars);
    screen.WhileWorking = [this](controls::Form&) { form->cmdCancel.UserClicks(); };
  }
  void StopsNoMore() { screen.WhileWorking = nullptr; }
  std::vector<String> Ids() const { return Column(form->vsfGroupContacts, u"ID"); }
  const String& Outcome() const { return form->lblOutcome.Caption(); }

  const std::vector<String> all{u"1", u"2", u"3", u"4"};
  SlowBars bars;
};

TEST_F(StoppedChange, RemovalRemovesNobody) {
  OpenWithFour();
  StopsFromNowOn();
  form->cmdRemoveAll.UserClicks();
  EXPECT_EQ(Ids(), all);
  EXPECT_EQ(Outcome(), u"Stopped. Nothing was removed.");
  form->vsfGroupContacts.UserSelects({1, 3}, 1);
  form->cmdRemove.UserClicks();
  EXPECT_EQ(Ids(), all);
  StopsNoMore();
  form->cmdUndo.UserClicks();  // takes the four back
  EXPECT_TRUE(Ids().empty());
  EXPECT_TRUE(form->IsLoaded());
}

TEST_F(StoppedChange, UndoUndoesNothing) {
  OpenWithFour();
  StopsFromNowOn();
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), all);
  EXPECT_EQ(Outcome(), u"Stopped. Nothing was undone.");
  StopsNoMore();
  form->cmdRemoveAll.UserClicks();
  StopsFromNowOn();
  form->cmdUndo.UserClicks();
  EXPECT_TRUE(Ids().empty());
  StopsNoMore();
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Ids(), all);
}

}  // namespace
}  // namespace ktrv::forms
