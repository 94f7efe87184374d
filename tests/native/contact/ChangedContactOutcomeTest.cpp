#include "tests/native/contact/ContactFixture.h"
#include "tests/native/support/WatchedDialog.h"

namespace ktrv::tests {
namespace {

/// A changed contact whose save ends in a way that does not tell whether it is stored.
struct ChangedContactOutcomeTest : WatchedDialog<ContactFixture> {
  ChangedContactOutcomeTest() {
    Ann();
    Edit();
  }

  void LoseTheReadBack() {
    watched.BeforeExecute = [](StringView text) {
      if (text == u"SELECT * FROM SMS_ABCONTACTS WHERE ID = ?") Lose();
    };
  }
  void SaveCity(StringView city) {
    form->txtCity.SetText(String(city));
    PressOk();
  }
  void ExpectThatLeedsCanBePutBack() {
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(form->lblNotice.Caption(),
              u"It is unknown whether the contact was saved; see the log. OK looks for it first.");
    SaveCity(u"Leeds");
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(Row(u"CITY"), u"Leeds");
  }
  /// After a save that was refused.
  void ExpectThatLeedsPutBackOverwritesNobody() {
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(form->lblNotice.Caption(), u"The contact was not saved. The log says why.");
    EXPECT_NE(Row(u"CITY"), u"Paris");
    database.Run({u"UPDATE SMS_ABCONTACTS SET CITY = 'Rome' WHERE ID = 5"});
    SaveCity(u"Leeds");
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(Row(u"CITY"), u"Rome");
  }
};

TEST_F(ChangedContactOutcomeTest, AValueWhoseCommitGotNoAnswerCanBePutBack) {
  form->txtCity.SetText(u"Paris");
  LoseTheCommit();
  EXPECT_EQ(Row(u"CITY"), u"Paris");
  ExpectThatLeedsCanBePutBack();
}

TEST_F(ChangedContactOutcomeTest, AValueThatWasNotReadBackCanBePutBackWithoutTransactions) {
  watched.HasTransactions = false;
  LoseTheReadBack();
  SaveCity(u"Paris");
  watched.BeforeExecute = nullptr;
  EXPECT_EQ(Row(u"CITY"), u"Paris");
  ExpectThatLeedsCanBePutBack();
}

TEST_F(ChangedContactOutcomeTest, AValueCanBePutBackAfterALostRollBack) {
  LoseTheReadBack();
  watched.AfterRollBack = Lose;
  SaveCity(u"Paris");
  watched.BeforeExecute = nullptr;
  watched.AfterRollBack = nullptr;
  ExpectThatLeedsCanBePutBack();
}

TEST_F(ChangedContactOutcomeTest, AValueCanBePutBackAfterSeveralFailures) {
  form->txtCity.SetText(u"Paris");
  LoseTheCommit();
  watched.BeforeExecute = [](StringView text) {
    if (text.starts_with(u"UPDATE")) Lose();
  };
  SaveCity(u"Leeds");
  EXPECT_EQ(Row(u"CITY"), u"Paris");
  watched.BeforeExecute = nullptr;
  ExpectThatLeedsCanBePutBack();
}

TEST_F(ChangedContactOutcomeTest, AValueThatWasNotReadBackIsNotStored) {
  LoseTheReadBack();
  SaveCity(u"Paris");
  watched.BeforeExecute = nullptr;
  ExpectThatLeedsPutBackOverwritesNobody();
}

TEST_F(ChangedContactOutcomeTest, ARefusedValueThatIsPutBackOverwritesNobody) {
  watched.BeforeBegin = [this] {
    database.Run({u"UPDATE SMS_ABCONTACTS SET CITY = 'Rome' WHERE ID = 5"});
  };
  SaveCity(u"Paris");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::RowChanged));
  watched.BeforeBegin = nullptr;
  ExpectThatLeedsPutBackOverwritesNobody();
}

TEST_F(ChangedContactOutcomeTest, ValueThatTheDatabaseRefusesIsNotStored) {
  for (const std::int32_t number : {ErrorNumber::IntegrityViolation, ErrorNumber::DriverFailure}) {
    watched.BeforeExecute = [&](StringView text) {
      if (text.starts_with(u"UPDATE")) throw Error(number, u"not that city");
    };
    SaveCity(u"Paris");
    watched.BeforeExecute = nullptr;
    ExpectThatLeedsPutBackOverwritesNobody();
    database.Run({u"UPDATE SMS_ABCONTACTS SET CITY = 'Leeds' WHERE ID = 5"});
    Edit();
  }
}

TEST_F(ChangedContactOutcomeTest, AValueThatATriggerChangesIsNotStoredWithoutACount) {
  database.Run(
      {u"CREATE TRIGGER BIG AFTER UPDATE ON SMS_ABCONTACTS BEGIN UPDATE SMS_ABCONTACTS SET CITY = "
       u"UPPER(CITY) WHERE ID = NEW.ID; END"});
  watched.CountsRows = false;
  SaveCity(u"Paris");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::RowChanged));
  EXPECT_EQ(Row(u"CITY"), u"Leeds");
  database.Run({u"DROP TRIGGER BIG"});
  ExpectThatLeedsPutBackOverwritesNobody();
}

TEST_F(ChangedContactOutcomeTest, ADeletedContactIsNotInDoubt) {
  form->txtCity.SetText(u"Paris");
  LoseTheCommit();
  database.Run({u"DELETE FROM SMS_ABCONTACTS"});
  PressOk();
  EXPECT_TRUE(LoggedNumber(ErrorNumber::NoCurrentRecord));
  EXPECT_EQ(form->lblNotice.Caption(), u"The contact was not saved. The log says why.");
}

TEST_F(ChangedContactOutcomeTest, AnAgeAndDatesThatAreClearedAfterALostAnswerAreNotKept) {
  database.Run({u"UPDATE SMS_ABCONTACTS SET AGE = NULL, BIRTHDAY = NULL WHERE ID = 5"});
  form.Reset();
  Edit();
  form->txtAge.SetText(u"41");
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  form->dtAnniversary.UserPicks(Date(2020, 1, 1));
  LoseTheCommit();
  ASSERT_EQ(Row(u"AGE, BIRTHDAY, ANNIVERSARY"), u"41|1990-02-28|2020-01-01");
  form->txtAge.SetText({});
  form->dtBirthday.UserPicks({});
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"AGE, BIRTHDAY, ANNIVERSARY"), u"null|null|2015-06-01");
}

TEST_F(ChangedContactOutcomeTest, ABirthdayThatIsClearedTakesNoOthersAnniversaryAlong) {
  database.Run({u"UPDATE SMS_ABCONTACTS SET BIRTHDAY = NULL WHERE ID = 5"});
  form.Reset();
  Edit();
  database.Run({u"UPDATE SMS_ABCONTACTS SET ANNIVERSARY = '2001-01-01' WHERE ID = 5"});
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  LoseTheCommit();
  ASSERT_EQ(Row(u"BIRTHDAY, ANNIVERSARY"), u"1990-02-28|2001-01-01");
  form->dtBirthday.UserPicks({});
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"BIRTHDAY, ANNIVERSARY"), u"null|2001-01-01");
}

TEST_F(ChangedContactOutcomeTest, AnAgeAndABirthdayOfOthersAreKeptWhenTheOwnWereNotStored) {
  database.Run({u"UPDATE SMS_ABCONTACTS SET AGE = NULL, BIRTHDAY = NULL WHERE ID = 5"});
  form.Reset();
  Edit();
  form->txtAge.SetText(u"41");
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  watched.UndoTransactions = true;
  LoseTheCommit();
  watched.UndoTransactions = false;
  database.Run({u"UPDATE SMS_ABCONTACTS SET AGE = 50, BIRTHDAY = '1980-05-05' WHERE ID = 5"});
  form->txtAge.SetText({});
  form->dtBirthday.UserPicks({});
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"AGE, BIRTHDAY, ANNIVERSARY"), u"50|1980-05-05|2015-06-01");
}

TEST_F(ChangedContactOutcomeTest, AnAgeAndDatesThatWereShownAreKeptWhenTheyAreCleared) {
  form->txtAge.SetText(u"41");
  LoseTheCommit();
  form->txtAge.SetText({});
  form->dtBirthday.UserPicks({});
  PressOk();
  EXPECT_EQ(Row(u"AGE, BIRTHDAY, ANNIVERSARY"), u"41|1990-02-28|2015-06-01");
}

}  // namespace
}  // namespace ktrv::tests
