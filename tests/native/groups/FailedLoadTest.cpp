#include <atomic>

#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// One call of the driver fails while the dialog is opened.
struct FailedLoad : tests::GroupsOnDatabase {
  FailedLoad() {
    session.DbType = u"ORACLE";  // lists the remote members too
    watched.BeforePrepare = [this](StringView, auto) { Call(); };
    watched.BeforeExecute = [this](StringView) { Call(); };
    watched.BeforeFetch = [this](StringView) { Call(); };
  }
  void Call() {
    if (++calls == failing) throw Error(ErrorNumber::DriverFailure, u"line lost");
  }
  /// \return whether the call was made
  bool OpenWithFailure(int call) {
    calls = 0;
    failing = call;
    OpenToModify(u"11", u"Team");
    EXPECT_TRUE(Complete());
    failing = 0;
    return calls >= call;
  }

  static constexpr StringView kMembers = u"1:S,2:S,R1:R";
  std::atomic<int> calls = 0;
  std::atomic<int> failing = 0;
};

TEST_F(FailedLoad, OkNeverCostsTheGroupItsMembers) {
  int failed = 0;
  for (int call = 1; OpenWithFailure(call); ++call) {
    SCOPED_TRACE(call);
    if (!form->Members().IsComplete()) ++failed;
    for (int time = 0; time < 2 && form->IsLoaded(); ++time) {
      form->cmdOK.UserClicks();
      EXPECT_EQ(MembershipsOf(u"11"), kMembers);
    }
    form.reset();
  }
  EXPECT_GT(failed, 3);
  EXPECT_EQ(MembershipsOf(u"11"), kMembers);
}

TEST_F(FailedLoad, WhatIsMissingIsSaidUnderTheList) {
  for (int call = 1; OpenWithFailure(call); ++call) {
    SCOPED_TRACE(call);
    const bool isComplete = form->Members().IsComplete();
    const StringView text = u"Not all members could be loaded. OK tries again.";
    EXPECT_EQ(form->lblCounts.Caption() == text, !isComplete);
    EXPECT_EQ(form->lblLoadingGrp.Visible(), !isComplete);
    for (const auto* button : {&form->cmdSelect, &form->cmdRemoveAll, &form->cmdCopy}) {
      EXPECT_EQ(button->Enabled(), isComplete);
    }
    form.reset();
  }
}

TEST_F(FailedLoad, NextOkLoadsThemAgain) {
  FailOnce(u"SELECT TO_CHAR(ID) AS ID, FNAME, MOBILENO, COUNTRYCODE, 1");
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->lblCounts.Caption(), u"3 entries, 3 people");
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), kMembers);
}

}  // namespace
}  // namespace ktrv::forms
