#include "tests/native/contact/ContactFixture.h"
#include "tests/native/support/WatchedDriver.h"

namespace ktrv::tests {
namespace {

/// A changed contact whose save ends in a way that does not tell whether it is stored.
struct ChangedContactOutcomeTest : ContactFixture {
  ChangedContactOutcomeTest() {
    session.Database.Environment.DriverFor = [this](StringView) -> database::Driver& {
      return watched;
    };
    Ann();
    Edit();
  }

  static void Lose() { throw Error(ErrorNumber::DriverFailure, u"connection lost"); }
  void LoseTheReadBack() {
    watched.BeforeExecute = [](StringView text) {
      if (text == u"SELECT * FROM SMS_ABCONTACTS WHERE ID = ?") Lose();
    };
  }
  void SaveCity(StringView city) {
    form->txtCity.SetText(String(city));
    PressOk();
  }
  /// After a failed save of another city.
  void ExpectThatLeedsCanBePutBack() {
    EXPECT_TRUE(form->IsLoaded());
    watched.BeforeExecute = nullptr;
    SaveCity(u"Leeds");
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(Row(u"CITY"), u"Leeds");
  }

  WatchedDriver watched{database.Driver()};
};

TEST_F(ChangedContactOutcomeTest, AValueThatWasNotReadBackCanBePutBack) {
  LoseTheReadBack();
  SaveCity(u"Paris");
  EXPECT_EQ(form->lblNotice.Caption(),
            u"It is unknown whether the contact was saved. OK tries again and saves it once.");
  ExpectThatLeedsCanBePutBack();
}

TEST_F(ChangedContactOutcomeTest, AValueWhoseUpdateGotNoAnswerCanBePutBack) {
  watched.BeforeExecute = [this](StringView text) {
    if (!text.starts_with(u"UPDATE")) return;
    database.Run({u"UPDATE SMS_ABCONTACTS SET CITY = 'Paris' WHERE ID = 5"});
    Lose();
  };
  SaveCity(u"Paris");
  ExpectThatLeedsCanBePutBack();
}

TEST_F(ChangedContactOutcomeTest, AValueCanBePutBackAfterSeveralFailures) {
  LoseTheReadBack();
  SaveCity(u"Paris");
  watched.BeforeExecute = [](StringView text) {
    if (text.starts_with(u"UPDATE")) Lose();
  };
  SaveCity(u"Leeds");
  EXPECT_EQ(Row(u"CITY"), u"Paris");
  ExpectThatLeedsCanBePutBack();
}

TEST_F(ChangedContactOutcomeTest, ARefusedValueThatIsPutBackOverwritesNobody) {
  watched.BeforeExecute = [this](StringView text) {
    if (!text.starts_with(u"UPDATE")) return;
    database.Run({u"UPDATE SMS_ABCONTACTS SET CITY = 'Rome' WHERE ID = 5"});
  };
  SaveCity(u"Paris");
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_TRUE(LoggedNumber(ErrorNumber::RowChanged));
  EXPECT_EQ(form->lblNotice.Caption(), u"The contact was not saved. The log says why.");
  watched.BeforeExecute = nullptr;
  SaveCity(u"Leeds");
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"CITY"), u"Rome");
}

TEST_F(ChangedContactOutcomeTest, ValueThatTheDatabaseRefusesIsNotStored) {
  watched.BeforeExecute = [](StringView text) {
    if (text.starts_with(u"UPDATE")) throw Error(ErrorNumber::IntegrityViolation, u"not that city");
  };
  SaveCity(u"Paris");
  EXPECT_EQ(form->lblNotice.Caption(), u"The contact was not saved. The log says why.");
  watched.BeforeExecute = nullptr;
  database.Run({u"UPDATE SMS_ABCONTACTS SET CITY = 'Rome' WHERE ID = 5"});
  SaveCity(u"Leeds");
  EXPECT_EQ(Row(u"CITY"), u"Rome");
}

}  // namespace
}  // namespace ktrv::tests
