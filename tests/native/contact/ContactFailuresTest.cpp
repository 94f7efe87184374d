#include <algorithm>

#include "tests/native/contact/ContactFixture.h"

namespace ktrv::tests {
namespace {

/// What goes wrong in a save: one record, no message, the dialog still open with its text.
struct ContactFailuresTest : ContactFixture {
  void ExpectOpenWith(StringView firstName) {
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(form->txtFname.Text(), firstName);
    EXPECT_EQ(SaveErrors(), 1);
    EXPECT_TRUE(screen.Messages.empty());
    EXPECT_EQ(Left().Id, u"");
  }

  /// A contact editor on the fake driver, where the table has no row at first.
  void AddWithFakeDriver() {
    AnswerRows({});
    driver.SetKeyColumns({u"ID"});
    UseFakeDriver();
    AddNamed(u"Ann");
  }
  /// Editing contact 5, whose row has nothing but its id, folder and first name.
  void EditWithFakeDriver() {
    driver.SetKeyColumns({u"ID"});
    EditRowWith({{u"ID", u"5"}, {u"FOLDER_ID", u"0"}, {u"FNAME", u"Ann"}});
    form->txtMobileno.SetText(u"91");
  }
  void AnswerRows(std::vector<FakeDriver::Row> rows) {
    driver.Answer(u"SELECT * FROM SMS_ABCONTACTS", Columns(), std::move(rows));
  }
  /// Texts that were run and start so.
  std::vector<String> Ran(StringView start) {
    std::vector<String> texts;
    for (const auto& each : driver.Executed()) {
      if (StringView(each.Text).substr(0, start.size()) == start) texts.push_back(each.Text);
    }
    return texts;
  }
};

TEST_F(ContactFailuresTest, AConnectionLostBetweenLoadAndSave) {
  EditWithFakeDriver();
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"connection lost"));
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::DriverFailure));
}

// A contact that was not loaded whole is not saved.

TEST_F(ContactFailuresTest, AContactThatCouldNotBeReadIsNotErasedWhenTheDatabaseIsBack) {
  Ann();
  const String before = Row(u"*");
  outage = true;
  Edit();
  ASSERT_EQ(LoadErrors(), 1);
  outage = false;
  form->txtFname.SetText(u"Ann");
  form->txtMobileno.SetText(u"91");
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_EQ(Row(u"*"), before);
}

TEST_F(ContactFailuresTest, AContactThatCouldNotBeReadAsksForNoName) {
  Ann();
  outage = true;
  Edit();
  outage = false;
  PressOk();
  ExpectOpenWith(u"");
}

TEST_F(ContactFailuresTest, AContactThatCameHalfIsNotSaved) {
  driver.SetKeyColumns({u"ID"});
  driver.Answer(u"SELECT * FROM SMS_ABCONTACTS",
                {{u"ID", database::DataType::Integer}, {u"FNAME"}, {u"MOBILENO"}},
                {{u"5", u"Ann", u"91"}});
  UseFakeDriver();
  Edit();
  ASSERT_EQ(LoadErrors(), 1);
  form->txtMobileno.SetText(u"92");
  FakeDriver::Row row(Columns().size());
  row[0] = u"5";
  AnswerRows({row});
  driver.Changes(u"UPDATE", 1);
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_TRUE(Ran(u"UPDATE").empty());
}

TEST_F(ContactFailuresTest, ARowThatAppearsAfterTheLoadIsNotWrittenOver) {
  Edit(u"5");
  form->txtFname.SetText(u"Eve");
  form->txtMobileno.SetText(u"91");
  Ann();
  PressOk();
  ExpectOpenWith(u"Eve");
  EXPECT_EQ(Row(u"FNAME, LNAME"), u"Ann|Lee");
}

TEST_F(ContactFailuresTest, AConstraintViolation) {
  AddWithFakeDriver();
  driver.Fail(u"INSERT", Error(ErrorNumber::IntegrityViolation, u"taken"));
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::IntegrityViolation));
}

TEST_F(ContactFailuresTest, ANumberThatTheDatabaseWantsOnlyOnce) {
  Ann();
  database.Run({u"CREATE UNIQUE INDEX ONCE ON SMS_ABCONTACTS (MOBILENO)"});
  AddNamed(u"Bob");
  form->txtMobileno.SetText(u"7700900");
  PressOk();
  ExpectOpenWith(u"Bob");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::IntegrityViolation));
  EXPECT_EQ(Row(u"FNAME"), u"Ann");
}

TEST_F(ContactFailuresTest, ADatabaseThatIsNotThereAnyMore) {
  Ann();
  Edit();
  outage = true;
  PressOk();
  ExpectOpenWith(u"Ann");
  outage = false;
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
}

TEST_F(ContactFailuresTest, AFailedSaveIsSeenInTheDialogUntilTheNextOk) {
  Ann();
  Edit();
  outage = true;
  PressOk();
  EXPECT_EQ(form->lblNotice.Caption(), u"The contact was not saved. The log says why.");
  form->txtCity.UserFocuses(true);
  form->txtCity.UserFocuses(false);
  EXPECT_EQ(form->lblNotice.Caption(), u"The contact was not saved. The log says why.");
  outage = false;
  form->txtFname.SetText({});
  PressOk();  // tells by a message what is missing
  EXPECT_EQ(screen.Messages.size(), 1u);
  EXPECT_EQ(form->lblNotice.Caption(), u"Required, up to 50 characters.");
}

TEST_F(ContactFailuresTest, AContactThatCouldNotBeLoadedSaysSo) {
  Ann();
  outage = true;
  Edit();
  outage = false;
  const String notice = form->lblNotice.Caption();
  EXPECT_EQ(notice,
            u"The contact could not be loaded, so it cannot be saved. Please open it again.");
  PressOk();
  EXPECT_EQ(form->lblNotice.Caption(), notice);
}

TEST_F(ContactFailuresTest, ADateThatTheDatabaseRefuses) {
  AddWithFakeDriver();
  form->dtBirthday.SetValue(Date(1800, 1, 1));
  driver.Fail(u"INSERT", Error(ErrorNumber::ValueMismatch, u"date out of range"));
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_EQ(form->dtBirthday.Value(), Date(1800, 1, 1));
}

TEST_F(ContactFailuresTest, ARowThatChangesBetweenTheSavesOwnReadAndWrite) {
  EditWithFakeDriver();
  form->txtCity.SetText(u"London");
  driver.Changes(u"UPDATE", 0);
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::RowChanged));
}

TEST_F(ContactFailuresTest, ARowThatIsGoneBeforeTheSaveReadsIt) {
  Ann();
  Edit();
  database.Run({u"DELETE FROM SMS_ABCONTACTS"});
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::NoCurrentRecord));
  EXPECT_EQ(Row(u"ID"), u"no row");
}

TEST_F(ContactFailuresTest, ARowThatIsGoneBeforeItsReadBack) {
  EditWithFakeDriver();
  driver.Changes(u"UPDATE", 1);
  driver.Answer(u"SELECT * FROM SMS_ABCONTACTS WHERE ID = ?", Columns(), {});
  PressOk();
  ExpectOpenWith(u"Ann");
}

TEST_F(ContactFailuresTest, AnIdThatNamesNoRow) {
  Edit(u"99");
  form->txtFname.SetText(u"Ann");
  form->txtMobileno.SetText(u"91");
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::NoCurrentRecord));
}

TEST_F(ContactFailuresTest, AnIdThatIsNoNumberNeverReachesTheDatabase) {
  UseFakeDriver();
  Edit(u"5; DELETE FROM SMS_ABCONTACTS");
  form->txtFname.SetText(u"Ann");
  form->txtMobileno.SetText(u"91");
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_TRUE(driver.Executed().empty());
}

TEST_F(ContactFailuresTest, AnAgeThatIsNoNumber) {
  AddNamed(u"Ann");
  form->txtAge.SetText(u"4x");
  PressOk();
  ExpectOpenWith(u"Ann");
  EXPECT_TRUE(LoggedNumber(ErrorNumber::TypeMismatch));
  EXPECT_EQ(form->txtAge.Text(), u"4x");
  EXPECT_EQ(Row(u"ID"), u"no row");
}

TEST_F(ContactFailuresTest, ASecondTryAfterAFailureAddsOneRow) {
  AddNamed(u"Ann");
  form->txtAge.SetText(u"4x");
  PressOk();
  form->txtAge.SetText(u"40");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"ID, FNAME, AGE"), u"1|Ann|40");
}

TEST_F(ContactFailuresTest, AFailedSaveHasTurnedTheSessionToSharedContactsOnceTheRowWasOpen) {
  Local();
  AddWithFakeDriver();
  driver.Fail(u"INSERT", Error(ErrorNumber::DriverFailure, u"locked"));
  PressOk();
  EXPECT_EQ(form->Result().SharedMode, TypeOfContact::SharedContact);
}

TEST_F(ContactFailuresTest, ALostConnectionLeavesTheSessionsModeAlone) {
  Local();
  AddWithFakeDriver();
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"connection lost"));
  PressOk();
  EXPECT_EQ(form->Result().SharedMode, TypeOfContact::LocalContact);
}

TEST_F(ContactFailuresTest, TheStatementsOfANewContact) {
  AddWithFakeDriver();
  driver.Changes(u"INSERT", 1);
  driver.SetLastInsertedId(9);
  FakeDriver::Row row(Columns().size());
  row[0] = u"9";
  driver.Answer(u"WHERE ID = ?", Columns(), {row});
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(driver.Executed().front().Text, u"SELECT * FROM SMS_ABCONTACTS WHERE 1 = 2");
  ASSERT_EQ(Ran(u"INSERT").size(), 1u);
  EXPECT_EQ(
      Ran(u"INSERT").front(),
      u"INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, "
      u"OFFICEPHONE, HOMEPHONE, FAX, EMAIL, ORGANISATION, ADDRESS, CITY, STATE, COUNTRY, ZIP, "
      u"SEX, HOBBY) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
  EXPECT_EQ(Left().Id, u"9");
}

/// Those that the editor writes, as the statement names them.
constexpr StringView kOrder =
    u"FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, OFFICEPHONE, HOMEPHONE, FAX, EMAIL, ORGANISATION,"
    u" ADDRESS, CITY, STATE, COUNTRY, ZIP, AGE, SEX, BIRTHDAY, ANNIVERSARY, HOBBY)";

TEST_F(ContactFailuresTest, TheTablesOwnOrderIsNotThatOfTheStatement) {
  auto columns = Columns();
  std::reverse(columns.begin(), columns.end());
  driver.Answer(u"SELECT * FROM SMS_ABCONTACTS", columns, {});
  driver.SetKeyColumns({u"ID"});
  driver.Changes(u"INSERT", 1);
  UseFakeDriver();
  AddNamed(u"Ann");
  form->txtAge.SetText(u"30");
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  PressOk();
  ASSERT_EQ(Ran(u"INSERT").size(), 1u);
  const String start = u"INSERT INTO SMS_ABCONTACTS (FOLDER_ID, " + String(kOrder);
  EXPECT_EQ(Ran(u"INSERT").front().substr(0, start.size()), start);
}

TEST_F(ContactFailuresTest, AnUpdateNamesWhatChangedInTheEditorsOrder) {
  EditWithFakeDriver();
  auto columns = Columns();
  std::reverse(columns.begin(), columns.end());
  FakeDriver::Row row(columns.size());
  row.back() = u"5";
  driver.Answer(u"SELECT * FROM SMS_ABCONTACTS", columns, {row});
  driver.Changes(u"UPDATE", 1);
  form->txtHobby.SetText(u"Chess");
  form->txtCity.SetText(u"Leeds");
  PressOk();
  ASSERT_EQ(Ran(u"UPDATE").size(), 1u);
  const StringView start =
      u"UPDATE SMS_ABCONTACTS SET MOBILENO = ?, CITY = ?, HOBBY = ? WHERE ID = ?";
  EXPECT_EQ(Ran(u"UPDATE").front().substr(0, start.size()), start);
}

TEST_F(ContactFailuresTest, ATableOfTheSameNameInAnotherSchemaHindersNoSave) {
  AddWithFakeDriver();
  driver.SetKeyColumns({u"ID", u"ID"});
  driver.Changes(u"INSERT", 1);
  driver.SetLastInsertedId(9);
  FakeDriver::Row row(Columns().size());
  row[0] = u"9";
  driver.Answer(u"WHERE ID = ?", Columns(), {row});
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(SaveErrors(), 0);
  EXPECT_EQ(Left().Id, u"9");
}

}  // namespace
}  // namespace ktrv::tests
