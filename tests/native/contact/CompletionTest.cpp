#include "data/ContactQueries.h"
#include "tests/native/contact/ContactFixture.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::ContactQueries;

struct ContactCompletionTest : tests::ContactFixture {
  static void Type(controls::TextBox& box, StringView text) {
    for (const char16_t unit : text) box.UserTypes(String(1, unit));
  }
  static void Clear(controls::TextBox& box) {
    box.Select(0, static_cast<int>(box.Text().size()));
    box.UserTypes({});
  }
  void AreStored(StringView query, const std::vector<StringView>& values) {
    std::vector<tests::FakeDriver::Row> rows;
    for (const StringView value : values) rows.push_back({String(value)});
    driver.Answer(query, {{u"CITY"}}, std::move(rows));
    UseFakeDriver();
  }
  /// The box's text when `typed` is typed and the values are there.
  String Completed(controls::TextBox& box, StringView typed) {
    screen.WaitUntil([&] {
      Clear(box);
      Type(box, typed);
      return box.Text() != typed;
    });
    return box.Text();
  }
  int Reads() const { return static_cast<int>(Ran(u"GROUP BY").size()); }
};

TEST_F(ContactCompletionTest, FourBoxesAreCompletedFromStoredContactsTheMostUsedFirst) {
  for (const StringView values : {u"3, 0, 'A', 'Bern', 'Bayern', 'Schweiz', 'Acme'",
                                  u"4, 0, 'B', 'Berlin', 'Baden', 'Spanien', 'Ab'",
                                  u"5, 0, 'C', 'Berlin', 'Baden', 'Spanien', 'Ab'"}) {
    database.Run(
        {u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, CITY, STATE, COUNTRY, "
         u"ORGANISATION) VALUES (" +
         String(values) + u")"});
  }
  Add();
  EXPECT_EQ(Completed(form->txtCity, u"Ber"), u"Berlin");
  EXPECT_EQ(form->txtCity.SelectionStart(), 3);
  EXPECT_EQ(form->txtCity.SelectionLength(), 3);
  Clear(form->txtCity);
  Type(form->txtCity, u"Bern");
  EXPECT_EQ(form->txtCity.Text(), u"Bern");
  EXPECT_EQ(Completed(form->txtCountry, u"Sp"), u"Spanien");
  EXPECT_EQ(Completed(form->txtCountry, u"Sc"), u"Schweiz");
  EXPECT_EQ(Completed(form->txtOrganisation, u"Ac"), u"Acme");
  EXPECT_EQ(Completed(form->txtState, u"Ba"), u"Baden");
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(ContactCompletionTest, WhatIsShownIsWhatIsSaved) {
  database.Run(
      {u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, CITY) VALUES (3, 0, 'A', "
       u"'Berlin')"});
  AddNamed(u"Ben");
  ASSERT_EQ(Completed(form->txtCity, u"Ber"), u"Berlin");
  form->txtCity.UserTypes({});  // Backspace on the selected rest
  EXPECT_EQ(form->txtCity.Text(), u"Ber");
  Type(form->txtCountry, u"Italy");
  PressOk();
  EXPECT_EQ(Row(u"CITY, COUNTRY"), u"Ber|Italy");
}

TEST_F(ContactCompletionTest, TheColumnIsReadOnceAndNotBeforeItsBoxIsTypedIn) {
  AreStored(Queries::kCities, {u"Berlin", u"Bern"});
  Add();
  form->txtCity.SetFocus();
  Type(form->txtAddress, u"Unter");
  EXPECT_EQ(Reads(), 0);
  ASSERT_EQ(Completed(form->txtCity, u"Be"), u"Berlin");
  Clear(form->txtCity);
  Type(form->txtCity, u"Bern");
  EXPECT_EQ(form->txtCity.Text(), u"Bern");
  EXPECT_EQ(Reads(), 1);
}

TEST_F(ContactCompletionTest, ALetterAndAValueItselfStayAsTheyAre) {
  AreStored(Queries::kStates, {u"California", u"CA", u"Cali"});
  Add();
  EXPECT_EQ(Completed(form->txtState, u"Cal"), u"California");
  for (const StringView typed : {u"C", u"CA", u"Cali", u"ca"}) {
    Clear(form->txtState);
    Type(form->txtState, typed);
    EXPECT_EQ(form->txtState.Text(), typed);
  }
}

TEST_F(ContactCompletionTest, ValuesThatABoxCannotShowWholeAreLeftOut) {
  AreStored(Queries::kCities, {u"Berlin ", u" Berlin", u"Ber\nlin", String(51, u'B'), u"", u"BBC"});
  Add();
  EXPECT_EQ(Completed(form->txtCity, u"BB"), u"BBC");
  Clear(form->txtCity);
  Type(form->txtCity, u"Ber");
  EXPECT_EQ(form->txtCity.Text(), u"Ber");
}

TEST_F(ContactCompletionTest, ASlowLineHoldsNothingUp) {
  AreStored(Queries::kCities, {u"Berlin"});
  driver.Answer(Queries::kNone, Columns(), {});
  driver.FetchGateOf = u"GROUP BY";
  driver.FetchGate.Close();
  AddNamed(u"Ben");
  Type(form->txtCity, u"Berg");
  EXPECT_EQ(form->txtCity.Text(), u"Berg");
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  driver.FetchGate.Open();
}

TEST_F(ContactCompletionTest, AFailureIsLoggedOnceAndNotShown) {
  driver.Fail(Queries::kCities, Error(ErrorNumber::TableNotFound, u"no table"));
  UseFakeDriver();
  Add();
  Type(form->txtCity, u"Ber");
  ASSERT_TRUE(screen.WaitUntil([&] { return ErrorsLogged() == 1; }));
  Type(form->txtCity, u"lin");
  EXPECT_EQ(form->txtCity.Text(), u"Berlin");
  EXPECT_EQ(Reads(), 1);
  EXPECT_EQ(ErrorsLogged(), 1);
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(form->lblNotice.Caption(), u"Required, up to 50 characters.");
}

TEST_F(ContactCompletionTest, TheMostUsedTenThousandAreKept) {
  std::vector<tests::FakeDriver::Row> rows;
  for (std::size_t number = 0; number <= StoredValues::kMost; ++number) {
    rows.push_back({u"City " + ToDecimal(static_cast<std::int64_t>(number)) + u"!"});
  }
  driver.Answer(Queries::kCities, {{u"CITY"}}, std::move(rows));
  UseFakeDriver();
  Add();
  EXPECT_EQ(Completed(form->txtCity, u"City 9999"), u"City 9999!");
  Clear(form->txtCity);
  Type(form->txtCity, u"City 10000");
  EXPECT_EQ(form->txtCity.Text(), u"City 10000");
}

}  // namespace
}  // namespace ktrv::forms
