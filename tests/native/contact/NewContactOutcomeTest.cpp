#include <optional>

#include "tests/native/adversary/FailingAllocations.h"
#include "tests/native/contact/ContactFixture.h"
#include "tests/native/support/WatchedDialog.h"

namespace ktrv::tests {
namespace {

using Lines = std::vector<String>;

/// A new contact whose save ends in a way that does not tell whether it is stored, or finds that
/// its folder is gone.
struct NewContactOutcomeTest : WatchedDialog<ContactFixture> {
  Lines Contacts() {
    return database.Rows(u"SELECT ID, FOLDER_ID, FNAME, MOBILENO FROM SMS_ABCONTACTS ORDER BY ID");
  }
  /// The next contact gets the id 1 again.
  void DeleteAll() {
    database.Run({u"DELETE FROM SMS_ABCONTACTS"});
    database.Run({u"DELETE FROM SQLITE_SEQUENCE"});
  }
  void ExpectRefusedWithWhatWasTyped() {
    ASSERT_EQ(screen.Messages.size(), 1u);
    EXPECT_EQ(screen.LastMessage().Text,
              u"The selected folder or group does not exist any more. Please select another one.");
    EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
    EXPECT_EQ(screen.LastMessage().Style, 48);
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(form->txtFname.Text(), u"Ann");
    EXPECT_EQ(Contacts(), Lines{});
    EXPECT_EQ(Left().Id, u"");
    EXPECT_EQ(Log(), u"");
  }
};

TEST_F(NewContactOutcomeTest, AnIdThatIsNotToldLeavesNoContactBehind) {
  AddNamed(u"Ann");
  watched.BeforeLastInsertedId = Lose;
  PressOk();
  EXPECT_EQ(SaveErrors(), 1);
  EXPECT_EQ(form->lblNotice.Caption(), u"The contact was not saved. The log says why.");
  EXPECT_EQ(Contacts(), Lines{});
  watched.BeforeLastInsertedId = nullptr;
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Contacts().size(), 1u);
}

TEST_F(NewContactOutcomeTest, ARowThatCannotBeReadAgainIsNotStoredTwice) {
  AddNamed(u"Ann");
  watched.BeforeExecute = [](StringView text) {
    if (text == u"SELECT * FROM SMS_ABCONTACTS WHERE ID = ?") Lose();
  };
  PressOk();
  EXPECT_EQ(SaveErrors(), 1);
  watched.BeforeExecute = nullptr;
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Contacts().size(), 1u);
  EXPECT_EQ(Left().Name, u"Ann  ");
}

TEST_F(NewContactOutcomeTest, AStoredContactWhoseAnswerWasLostIsNotStoredTwice) {
  AddNamed(u"Ann");
  watched.AfterCommit = Lose;
  PressOk();
  EXPECT_EQ(SaveErrors(), 1);
  ASSERT_EQ(Contacts(), Lines{u"1|0|Ann|91"});
  EXPECT_EQ(Left().Id, u"");
  watched.AfterCommit = nullptr;
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Contacts(), Lines{u"1|0|Ann|91"});
  EXPECT_EQ(Left().Id, u"1");
}

TEST_F(NewContactOutcomeTest, AStoredContactIsNotStoredTwiceWhenMemoryIsShortThen) {
  constexpr int kMost = 1000;
  int allocation = 0;
  do {
    ++allocation;
    AddNamed(u"Ann");
    form->txtAddress.SetText(u"Street 1, Leeds");  // too long for a text without an allocation
    std::optional<FailingAllocations::Scope> counted;
    watched.AfterCommit = [&] {
      FailingAllocations::FailAt(allocation);
      counted.emplace();
    };
    PressOk();
    counted.reset();
    watched.AfterCommit = nullptr;
    if (form->IsLoaded()) PressOk();
    EXPECT_FALSE(form->IsLoaded()) << allocation;
    EXPECT_EQ(Contacts().size(), 1u) << allocation;
    database.Run({u"DELETE FROM SMS_ABCONTACTS"});
  } while (FailingAllocations::HasFailed() && allocation < kMost);
  EXPECT_GT(allocation, 1);
  EXPECT_LT(allocation, kMost);
}

TEST_F(NewContactOutcomeTest, WhatIsChangedAfterALostAnswerChangesTheStoredContact) {
  AddNamed(u"Ann");
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  form->txtAge.SetText(u"41");
  LoseTheCommit();
  form->txtFname.SetText(u"Anna");
  PressOk();
  EXPECT_EQ(Contacts(), Lines{u"1|0|Anna|91"});
  EXPECT_EQ(Row(u"AGE, BIRTHDAY"), u"41|1990-02-28");
  EXPECT_EQ(Left().Name, u"Anna  ");
}

TEST_F(NewContactOutcomeTest, WhatIsChangedAfterTwoLostAnswersChangesTheStoredContact) {
  for (const StringView last : {u"Anna", u"Ann", u"Eve"}) {
    AddNamed(u"Ann");
    watched.AfterCommit = Lose;
    PressOk();
    form->txtFname.SetText(u"Anna");
    PressOk();
    watched.AfterCommit = nullptr;
    form->txtFname.SetText(String(last));
    PressOk();
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(Contacts(), Lines{u"1|0|" + String(last) + u"|91"});
    DeleteAll();
  }
}

TEST_F(NewContactOutcomeTest, AChangeThatWasLostAfterALostAnswerIsWrittenByTheNextOk) {
  AddNamed(u"Ann");
  watched.AfterCommit = Lose;
  PressOk();
  form->txtAge.SetText(u"41");
  watched.UndoTransactions = true;
  PressOk();
  watched.UndoTransactions = false;
  watched.AfterCommit = nullptr;
  PressOk();
  EXPECT_EQ(Contacts(), Lines{u"1|0|Ann|91"});
  EXPECT_EQ(Row(u"AGE"), u"41");
}

TEST_F(NewContactOutcomeTest, AnotherContactWithTheSameValuesIsNotTakenForTheNewOne) {
  for (const StringView last : {u"Ann", u"Anna"}) {
    AddNamed(u"Ann");
    PressOk();
    form.Reset();
    AddNamed(u"Ann");
    watched.UndoTransactions = true;
    watched.AfterCommit = Lose;
    PressOk();
    watched.UndoTransactions = false;
    watched.AfterCommit = nullptr;
    form->txtFname.SetText(String(last));
    PressOk();
    EXPECT_EQ(Contacts(), (Lines{u"1|0|Ann|91", u"2|0|" + String(last) + u"|91"}));
    EXPECT_EQ(Left().Id, u"2");
    DeleteAll();
    form.Reset();
  }
}

TEST_F(NewContactOutcomeTest, AnInsertWithoutAnAnswerNeverChangesAnEarlierContact) {
  for (const StringView last : {u"Ann", u"Anna"}) {
    AddNamed(u"Ann");
    PressOk();
    form.Reset();
    AddNamed(u"Ann");
    watched.BeforeExecute = [](StringView text) {
      if (text.starts_with(u"INSERT")) Lose();
    };
    watched.AfterRollBack = Lose;
    PressOk();
    watched.BeforeExecute = nullptr;
    watched.AfterRollBack = nullptr;
    form->txtFname.SetText(String(last));
    PressOk();
    EXPECT_FALSE(form->IsLoaded());
    // With other values it is certainly not the earlier one.
    const Lines both = {u"1|0|Ann|91", u"2|0|" + String(last) + u"|91"};
    EXPECT_EQ(Contacts(), last == u"Ann" ? Lines{u"1|0|Ann|91"} : both);
    DeleteAll();
    form.Reset();
  }
}

TEST_F(NewContactOutcomeTest, ALookThatFailsStoresNothing) {
  AddNamed(u"Ann");
  LoseTheCommit();
  watched.BeforeExecute = [](StringView text) {
    if (text != u"SELECT * FROM SMS_ABCONTACTS WHERE 1 = 2") Lose();
  };
  PressOk();
  watched.BeforeExecute = nullptr;
  PressOk();
  EXPECT_EQ(SaveErrors(), 2);
  EXPECT_EQ(Contacts(), Lines{u"1|0|Ann|91"});
}

TEST_F(NewContactOutcomeTest, AContactThatIsGoneAfterALostAnswerIsAddedAgain) {
  AddNamed(u"Ann");
  LoseTheCommit();
  database.Run({u"DELETE FROM SMS_ABCONTACTS"});
  PressOk();
  EXPECT_EQ(Contacts().size(), 1u);
}

TEST_F(NewContactOutcomeTest, AContactThatATriggerChangesIsFoundAgain) {
  database.Run(
      {u"CREATE TRIGGER BIG AFTER INSERT ON SMS_ABCONTACTS BEGIN UPDATE SMS_ABCONTACTS SET FNAME = "
       u"UPPER(FNAME) WHERE ID = NEW.ID; END",
       u"CREATE TRIGGER BIGGER AFTER UPDATE ON SMS_ABCONTACTS BEGIN UPDATE SMS_ABCONTACTS SET "
       u"FNAME = UPPER(FNAME) WHERE ID = NEW.ID; END"});
  AddNamed(u"Ann");
  watched.AfterCommit = Lose;
  PressOk();
  ASSERT_EQ(Contacts(), Lines{u"1|0|ANN|91"});
  form->txtFname.SetText(u"Eve");
  PressOk();
  watched.AfterCommit = nullptr;
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Contacts(), Lines{u"1|0|EVE|91"});
}

TEST_F(NewContactOutcomeTest, AContactThatATriggerChangesIsFoundAgainAfterItsGroupFailed) {
  database.Run(
      {u"CREATE TRIGGER BIG AFTER INSERT ON SMS_ABCONTACTS BEGIN UPDATE SMS_ABCONTACTS SET FNAME = "
       u"UPPER(FNAME) WHERE ID = NEW.ID; END"});
  watched.HasTransactions = false;
  bool fails = true;
  request.With.Store = [&](auto&, auto&) {
    if (fails) Lose();
  };
  AddNamed(u"Ann");
  PressOk();
  fails = false;
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Contacts(), Lines{u"1|0|ANN|91"});
}

TEST_F(NewContactOutcomeTest, AnAgeAndDatesThatAreClearedAfterALostAnswerAreNotKept) {
  AddNamed(u"Ann");
  form->txtAge.SetText(u"41");
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  form->dtAnniversary.UserPicks(Date(2015, 6, 1));
  LoseTheCommit();
  ASSERT_EQ(Row(u"AGE, BIRTHDAY, ANNIVERSARY"), u"41|1990-02-28|2015-06-01");
  form->txtAge.SetText({});
  form->dtBirthday.UserPicks({});
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"AGE, BIRTHDAY, ANNIVERSARY"), u"null|null|null");
}

TEST_F(NewContactOutcomeTest, AnAnniversaryThatOnlyTheNextSaveCanStoreIsStored) {
  AddNamed(u"Ann");
  form->dtAnniversary.UserPicks(Date(2015, 6, 1));  // not stored without a birthday
  LoseTheCommit();
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"BIRTHDAY, ANNIVERSARY"), u"1990-02-28|2015-06-01");
}

TEST_F(NewContactOutcomeTest, DatesThatAreClearedAndPickedAgainAreStored) {
  AddNamed(u"Ann");
  watched.AfterCommit = Lose;
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  form->dtAnniversary.UserPicks(Date(2015, 6, 1));
  PressOk();
  form->dtBirthday.UserPicks({});
  PressOk();
  watched.AfterCommit = nullptr;
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"BIRTHDAY, ANNIVERSARY"), u"1990-02-28|2015-06-01");
}

TEST_F(NewContactOutcomeTest, AStoredContactIsSavedAlthoughItsGroupIsGone) {
  bool isGone = false;
  const auto refuse = [&] {
    if (isGone) throw forms::ContactRefused{u"gone"};
  };
  request.With = {.Check = [&](auto&) { refuse(); }, .Store = [&](auto&, auto&) { refuse(); }};
  AddNamed(u"Ann");
  LoseTheCommit();
  isGone = true;
  form->txtFname.SetText(u"Anna");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Contacts(), Lines{u"1|0|Anna|91"});
}

TEST_F(NewContactOutcomeTest, ACheckThatFailsRefusesAStoredContact) {
  bool fails = false;
  request.With.Check = [&](auto&) {
    if (fails) throw forms::ContactRefused{};
  };
  AddNamed(u"Ann");
  LoseTheCommit();
  fails = true;
  PressOk();
  EXPECT_TRUE(form->IsLoaded());
  fails = false;
  PressOk();
  EXPECT_EQ(Contacts(), Lines{u"1|0|Ann|91"});
}

TEST_F(NewContactOutcomeTest, TheGroupIsCheckedBeforeAllElse) {
  Folder(u"3");
  Lines order;
  watched.BeforeBegin = [&] {
    watched.BeforeExecute = [&](StringView text) { order.emplace_back(text.substr(0, 6)); };
  };
  request.With.Check = [&](auto&) { order.emplace_back(u"check"); };
  form->FolderId = 3;
  AddNamed(u"Ann");
  PressOk();
  ASSERT_FALSE(order.empty());
  EXPECT_EQ(order.front(), u"check");
}

TEST_F(NewContactOutcomeTest, ARefusalThatWasLoggedIsSeenInTheDialog) {
  request.With.Store = [](auto&, const auto&) { throw forms::ContactRefused{}; };
  AddNamed(u"Ann");
  PressOk();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(form->lblNotice.Caption(), u"The contact was not saved. The log says why.");
  EXPECT_EQ(Contacts(), Lines{});
}

TEST_F(NewContactOutcomeTest, AFolderThatIsGoneGetsNoContact) {
  Folder(u"3");
  form->FolderId = 3;
  AddNamed(u"Ann");
  database.Run({u"DELETE FROM SMS_ABFOLDERS"});
  PressOk();
  ExpectRefusedWithWhatWasTyped();
}

TEST_F(NewContactOutcomeTest, AFolderThatGoesDuringTheSaveGetsNoContact) {
  Folder(u"3");
  form->FolderId = 3;
  AddNamed(u"Ann");
  watched.BeforeBegin = [this] { database.Run({u"DELETE FROM SMS_ABFOLDERS"}); };
  PressOk();
  ExpectRefusedWithWhatWasTyped();
}

TEST_F(NewContactOutcomeTest, NobodyIsKeptWaitingWhileTheWordIsRead) {
  form->FolderId = 3;
  AddNamed(u"Ann");
  screen.WhileAsked([this] { Folder(u"3"); });
  PressOk();
  ASSERT_EQ(screen.Messages.size(), 1u);
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Contacts(), Lines{u"1|3|Ann|91"});
}

}  // namespace
}  // namespace ktrv::tests
