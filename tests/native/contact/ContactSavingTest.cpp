#include "tests/native/contact/ContactFixture.h"

namespace ktrv::tests {
namespace {

struct ContactSavingTest : ContactFixture {};

// Validation.

struct Refusal {
  StringView FirstName;
  StringView Mobile;
  StringView Email;
  StringView Message;
};

class ContactValidationTest : public ContactSavingTest,
                              public testing::WithParamInterface<Refusal> {};

TEST_P(ContactValidationTest, TheFirstFaultIsToldAndItsBoxGetsTheFocus) {
  Add();
  form->txtFname.SetText(String(GetParam().FirstName));
  form->txtMobileno.SetText(String(GetParam().Mobile));
  form->txtEmail.SetText(String(GetParam().Email));
  PressOk();
  ASSERT_EQ(screen.Messages.size(), 1u);
  EXPECT_EQ(screen.LastMessage().Text, GetParam().Message);
  EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
  EXPECT_EQ(screen.LastMessage().Style, 48);
  const auto& box = GetParam().Message.find(u"Name") != String::npos    ? form->txtFname
                    : GetParam().Message.find(u"Email") != String::npos ? form->txtEmail
                                                                        : form->txtMobileno;
  EXPECT_TRUE(box.HasFocus());
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(Row(u"ID"), u"no row");
}

constexpr StringView kNoName = u"Please enter the First Name.";
constexpr StringView kNoMobile = u"Please enter the Mobile No.";
constexpr StringView kBadMobile = u"Enter a proper Mobile No.";
constexpr StringView kBadEmail = u"Enter a valid Email Id";

INSTANTIATE_TEST_SUITE_P(Faults, ContactValidationTest,
                         testing::Values(Refusal{u"   ", u"", u"x", kNoName},
                                         Refusal{u"", u"91", u"", kNoName},
                                         Refusal{u"Ann", u"", u"x", kNoMobile},
                                         Refusal{u"Ann", u"  ", u"", kNoMobile},
                                         Refusal{u"Ann", u"000", u"x", kBadMobile},
                                         Refusal{u"Ann", u"abc", u"", kBadMobile},
                                         Refusal{u"Ann", u"91", u"a@bc", kBadEmail},
                                         Refusal{u"Ann", u"91", u".a@b@c", kBadEmail}));

TEST_F(ContactSavingTest, ThePrefixAloneIsAMobileNumber) {
  AddNamed(u"Ann");
  PressOk();
  EXPECT_EQ(Row(u"MOBILENO"), u"91");
  EXPECT_FALSE(form->IsLoaded());
}

class MobileValueTest : public ContactSavingTest, public testing::WithParamInterface<StringView> {};

TEST_P(MobileValueTest, ATextThatStartsWithANumberOtherThanZeroIsAMobileNumber) {
  AddNamed(u"Ann");
  form->txtMobileno.SetText(String(GetParam()));
  PressOk();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Row(u"MOBILENO"), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Numbers, MobileValueTest,
                         testing::Values(u"7", u" 91", u"91 98765", u"91abc", u"0.5", u"-5"));

TEST_F(ContactSavingTest, TheAddressIsCheckedWithTheBlanksAroundIt) {
  AddNamed(u"Ann");
  form->txtEmail.SetText(u"a@b. ");  // ends with a blank and not with its point
  PressOk();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Row(u"EMAIL"), u"a@b. ");
}

TEST_F(ContactSavingTest, AnAddressTooLongToCheckIsLoggedAndRefused) {
  AddNamed(u"Ann");
  form->txtEmail.SetText(u"a@b." + String(32768, u'c'));
  PressOk();
  EXPECT_EQ(screen.LastMessage().Text, u"Enter a valid Email Id");
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occurred. Sub: ValidateEmail, Module: Global"),
            1);
  EXPECT_TRUE(form->IsLoaded());
}

TEST_F(ContactSavingTest, AnAddressOfBlanksIsNotCheckedAndSavedAsTyped) {
  AddNamed(u"Ann");
  form->txtEmail.SetText(u"   ");
  PressOk();
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Row(u"EMAIL"), u"   ");
}

// New contacts.

TEST_F(ContactSavingTest, ANewContactIsWrittenWithItsFolderAndEveryBox) {
  Folder(u"12");
  form->FolderId = 12;
  AddNamed(u"Ann");
  form->txtMname.SetText(u"B");
  form->txtLname.SetText(u"Lee");
  form->txtCountryCode.SetText(u"44");
  form->txtMobileno.SetText(u"7700900");
  form->txtOfficePhone.SetText(u"off");
  form->txtHomePhone.SetText(u"home");
  form->txtFax.SetText(u"fax");
  form->txtEmail.SetText(u"ann@lee.org");
  form->txtOrganisation.SetText(u"Acme");
  form->txtAddress.SetText(u"Street 1");
  form->txtCity.SetText(u"Leeds");
  form->txtState.SetText(u"York");
  form->txtCountry.SetText(u"UK");
  form->txtZip.SetText(u"LS1");
  form->txtAge.SetText(u"30");
  form->cboSex.UserChooses(2);
  form->dtBirthday.UserPicks(Date(1990, 2, 28));
  form->dtAnniversary.UserPicks(Date(2015, 6, 1));
  form->txtHobby.SetText(u"Chess");
  PressOk();
  EXPECT_EQ(Row(u"*"),
            u"1|12|Ann|B|Lee|44|7700900|off|home|fax|ann@lee.org|Acme|Street 1|Leeds|York|UK|LS1|"
            u"30|F|1990-02-28|2015-06-01|Chess");
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactSavingTest, EmptyBoxesAreWrittenAsEmptyTextsNotAsNull) {
  AddNamed(u"Ann");
  PressOk();
  EXPECT_EQ(Row(u"MNAME, LNAME, COUNTRYCODE, EMAIL, ZIP, HOBBY"), u"|||||");
  EXPECT_EQ(Row(u"AGE, SEX, BIRTHDAY, ANNIVERSARY"), u"null|null|null|null");
}

TEST_F(ContactSavingTest, TextsAreWrittenUntrimmedAndAsTyped) {
  const String name = u"  O'Brien \"&\"\t; --\r\n\U0001F600 ";
  AddNamed(name);
  PressOk();
  EXPECT_EQ(Row(u"FNAME"), name);
}

TEST_F(ContactSavingTest, TheNewIdIsHandedBackAndKeptForTheHost) {
  database.Run({u"INSERT INTO SMS_ABCONTACTS (ID) VALUES (41)"});
  AddNamed(u"Ann");
  PressOk();
  EXPECT_EQ(Left().Id, u"42");
  EXPECT_EQ(form->Result().EditContactId, u"42");
}

TEST_F(ContactSavingTest, AnEarlierContactsIdStaysTheHostsAfterAnAdd) {
  request.EditContactId = u"5";
  AddNamed(u"Ann");
  PressOk();
  EXPECT_EQ(form->Result().EditContactId, u"5");
  EXPECT_EQ(Left().Id, u"1");
}

TEST_F(ContactSavingTest, AnIdOfBlanksIsNoEarlierContactsId) {
  request.EditContactId = u"  ";
  AddNamed(u"Ann");
  PressOk();
  EXPECT_EQ(form->Result().EditContactId, u"1");
  EXPECT_EQ(Left().Id, u"1");
}

TEST_F(ContactSavingTest, TheResultValuesSumTheContactUp) {
  AddNamed(u"Ann");
  form->txtLname.SetText(u"Lee");
  form->txtCountryCode.SetText(u"91");
  form->txtMobileno.SetText(u"9876543210");
  form->txtEmail.SetText(u"ann@lee.org");
  form->txtAddress.SetText(u"Street 1");
  form->txtOrganisation.SetText(u"Acme");
  PressOk();
  EXPECT_EQ(Saved(), u"1|Ann  Lee|91 9876543210|ann@lee.org|Street 1|Acme");
}

TEST_F(ContactSavingTest, WithoutACountryCodeTheMobileNumberStandsAlone) {
  AddNamed(u"Ann");
  form->txtMobileno.SetText(u"9876543210");
  PressOk();
  EXPECT_EQ(Left().Mobile, u"9876543210");
}

TEST_F(ContactSavingTest, BlanksBeforeTheCountryCodeAreNotHandedBack) {
  AddNamed(u"Ann");
  form->txtCountryCode.SetText(u"  44");
  form->txtMobileno.SetText(u"7700900");
  PressOk();
  EXPECT_EQ(Left().Mobile, u"44 7700900");
}

TEST_F(ContactSavingTest, WithACountryCodeOfBlanksTheMobileNumberStandsAlone) {
  AddNamed(u"Ann");
  form->txtCountryCode.SetText(u"   ");
  form->txtMobileno.SetText(u"7700900");
  PressOk();
  EXPECT_EQ(Left().Mobile, u"7700900");
}

TEST_F(ContactSavingTest, ASaveTurnsTheSessionToSharedContacts) {
  Local();
  AddNamed(u"Ann");
  PressOk();
  EXPECT_EQ(form->Result().SharedMode, TypeOfContact::SharedContact);
}

TEST_F(ContactSavingTest, ASaveOfAnEditedLocalContactDoesToo) {
  Ann();
  Local();
  Edit();
  EXPECT_EQ(form->Result().SharedMode, TypeOfContact::LocalContact);
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(form->Result().SharedMode, TypeOfContact::SharedContact);
}

TEST_F(ContactSavingTest, TheDialectsSaveAlike) {
  for (const StringView dialect : {u"SQL", u"ORACLE", u"MYSQL"}) {
    session.DbType = dialect;
    form.Reset();
    AddNamed(u"Ünïcode " + String(dialect));
    PressOk();
    EXPECT_EQ(Row(u"FNAME"), u"Ünïcode " + String(dialect));
  }
}

// Changed contacts.

TEST_F(ContactSavingTest, AChangedContactKeepsItsIdAndFolder) {
  Ann();
  Edit();
  form->FolderId = 8;
  form->txtFname.SetText(u"Anna");
  PressOk();
  EXPECT_EQ(Row(u"ID, FOLDER_ID, FNAME, LNAME"), u"5|3|Anna|Lee");
  EXPECT_EQ(Saved(), u"5|Anna B Lee|44 7700900|ann@lee.org|Street 1|Acme");
}

TEST_F(ContactSavingTest, AnUnchangedContactIsSaved) {
  Ann();
  const String before = Row(u"*");
  Edit();
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"*"), before);
  EXPECT_EQ(Left().Id, u"5");
}

TEST_F(ContactSavingTest, ClearingTheAgeDoesNotClearIt) {
  Ann();
  Edit();
  form->txtAge.SetText(u" ");
  PressOk();
  EXPECT_EQ(Row(u"AGE"), u"30");
}

TEST_F(ContactSavingTest, ClearingTheSexClearsIt) {
  Ann();
  Edit();
  form->cboSex.UserChooses(0);
  PressOk();
  EXPECT_EQ(Row(u"SEX"), u"null");
}

TEST_F(ContactSavingTest, TheSexIsStoredAsALetter) {
  Ann();
  Edit();
  form->cboSex.UserChooses(1);
  PressOk();
  EXPECT_EQ(Row(u"SEX"), u"M");
}

TEST_F(ContactSavingTest, ABirthdayWithoutAnAnniversaryClearsTheAnniversary) {
  Ann();
  Edit();
  form->dtAnniversary.UserPicks(std::nullopt);
  PressOk();
  EXPECT_EQ(Row(u"BIRTHDAY, ANNIVERSARY"), u"1990-02-28|null");
}

TEST_F(ContactSavingTest, WithoutABirthdayBothDatesStayAsTheyWere) {
  Ann();
  Edit();
  form->dtBirthday.UserPicks(std::nullopt);
  form->dtAnniversary.UserPicks(Date(2020, 1, 1));
  PressOk();
  EXPECT_EQ(Row(u"BIRTHDAY, ANNIVERSARY"), u"1990-02-28|2015-06-01");
}

TEST_F(ContactSavingTest, WithoutABirthdayANewContactHasNoAnniversary) {
  AddNamed(u"Ann");
  form->dtAnniversary.UserPicks(Date(2020, 1, 1));
  PressOk();
  EXPECT_EQ(Row(u"ANNIVERSARY"), u"null");
}

TEST_F(ContactSavingTest, ThePickersTakeNoDateThatADatabaseCannotHold) {
  AddNamed(u"Ann");
  form->dtBirthday.UserPicks(Date(1600, 1, 1));
  EXPECT_EQ(form->dtBirthday.Value(), Date(1753, 1, 1));
}

TEST_F(ContactSavingTest, ALaterSaveUndoesNothingThatItsUserLeftAlone) {
  Ann();
  Edit();
  form->txtCity.SetText(u"London");
  database.Run({u"UPDATE SMS_ABCONTACTS SET CITY = 'Paris', STATE = 'IDF' WHERE ID = 5"});
  PressOk();
  EXPECT_EQ(Row(u"CITY, STATE"), u"London|IDF");
  EXPECT_EQ(SaveErrors(), 0);
}

TEST_F(ContactSavingTest, ADateThatStaysIsLeftAsTheDatabaseHasIt) {
  Ann(u"BIRTHDAY = '1990-02-28 00:00:00', ANNIVERSARY = '1700-01-01'");
  Edit();
  form->txtCity.SetText(u"London");
  PressOk();
  EXPECT_EQ(Log(), u"");
  EXPECT_EQ(Row(u"CITY, BIRTHDAY, ANNIVERSARY"), u"London|1990-02-28 00:00:00|1700-01-01");
}

TEST_F(ContactSavingTest, ValuesOfOtherKindsThanTheirColumnsAreLeftAlone) {
  Ann(u"AGE = 30.5, FNAME = 5, HOBBY = 1e3, ZIP = NULL, SEX = 'x'");
  Edit();
  form->txtCity.SetText(u"London");
  PressOk();
  EXPECT_EQ(Log(), u"");
  EXPECT_EQ(Row(u"CITY, FNAME, ZIP, SEX"), u"London|5|null|x");
}

// OK writes what the user changed and nothing else.

class UntouchedTest : public ContactFixture, public testing::WithParamInterface<StringView> {};

TEST_P(UntouchedTest, OkWithoutAChangeChangesNothing) {
  Ann(GetParam());
  const String before = Row(u"*");
  Edit();
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(SaveErrors(), 0);
  EXPECT_EQ(Row(u"*"), before);
}

INSTANTIATE_TEST_SUITE_P(Values, UntouchedTest,
                         testing::Values(u"AGE = 41.5", u"AGE = 'old'", u"SEX = 'f'", u"SEX = ''",
                                         u"FOLDER_ID = 40000", u"BIRTHDAY = '01/05/1980'",
                                         u"ANNIVERSARY = '01/05/1980'", u"BIRTHDAY = '1700-01-01'",
                                         u"BIRTHDAY = NULL", u"LNAME = NULL", u"HOBBY = NULL",
                                         u"MNAME = '  '"));

TEST_F(ContactSavingTest, AFolderIdOfMoreThan16BitsErasesNothing) {
  Ann(u"FOLDER_ID = 40000");
  Edit();
  form->txtFname.SetText(u"Anna");
  form->txtMobileno.SetText(u"91");
  PressOk();
  EXPECT_EQ(Row(u"FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, EMAIL, CITY, HOBBY"),
            u"40000|Anna|B|Lee|44|91|ann@lee.org|Leeds|Chess");
}

TEST_F(ContactSavingTest, ADateThatCannotBeReadIsWrittenOnlyWhenTheUserSetsOne) {
  Ann(u"BIRTHDAY = '01/05/1980', ANNIVERSARY = 'spring'");
  Edit();
  form->dtBirthday.UserPicks(Date(1980, 5, 1));
  PressOk();
  EXPECT_EQ(Row(u"BIRTHDAY, ANNIVERSARY, HOBBY"), u"1980-05-01|spring|Chess");
}

TEST_F(ContactSavingTest, ABirthdayThatNoPickerShowsCarriesNoAnniversary) {
  Ann(u"BIRTHDAY = '1700-01-01'");
  Edit();
  form->dtAnniversary.UserPicks(std::nullopt);
  PressOk();
  EXPECT_EQ(Row(u"BIRTHDAY, ANNIVERSARY"), u"1700-01-01|2015-06-01");
}

TEST_F(ContactSavingTest, WhatWasTypedAndTakenBackIsNoChange) {
  Ann(u"AGE = 41.5, SEX = 'f', ZIP = NULL");
  Edit();
  form->txtAge.SetText(u"42");
  form->txtAge.SetText(u"41.5");
  form->cboSex.UserChooses(2);
  form->cboSex.UserChooses(0);
  form->txtZip.UserTypes(u"1");
  form->txtZip.SetText({});
  PressOk();
  EXPECT_EQ(Row(u"AGE, SEX, ZIP"), u"41.5|f|null");
}

TEST_F(ContactSavingTest, ATextThatIsEmptiedIsWrittenEmpty) {
  Ann();
  Edit();
  form->txtLname.SetText({});
  PressOk();
  EXPECT_EQ(Row(u"LNAME, HOBBY"), u"|Chess");
}

TEST_F(ContactSavingTest, APresetLongerThanItsBoxIsCut) {
  request.PresetContactName = String(49, u'n') + u"\U0001F600";
  request.PresetMobileNo = String(30, u'9');
  Add();
  EXPECT_EQ(form->txtFname.Text(), String(49, u'n'));
  EXPECT_EQ(form->txtMobileno.Text(), String(20, u'9'));
  PressOk();
  EXPECT_EQ(Row(u"FNAME, MOBILENO"), String(49, u'n') + u"|" + String(20, u'9'));
}

TEST_F(ContactSavingTest, TheLargestFolderIdIsWritten) {
  Folder(u"32767");
  form->FolderId = 32767;
  AddNamed(u"Ann");
  PressOk();
  EXPECT_EQ(Row(u"FOLDER_ID"), u"32767");
}

TEST_F(ContactSavingTest, AFailureLeavesNoResult) {
  AddNamed(u"Ann");
  form->txtAge.SetText(u"4x");
  PressOk();
  EXPECT_FALSE(form->Result().Saved);
}

// Cancel.

TEST_F(ContactSavingTest, CancelEmptiesTheResultsOfAnEarlierSave) {
  AddNamed(u"Ann");
  PressOk();
  ASSERT_NE(Saved(), u"|||||");
  form.Reset();
  session.Take(request);
  Add();
  EXPECT_NE(session.SavedContactId, u"");
  form->cmdCancel.UserClicks();
  EXPECT_EQ(Saved(), u"|||||");
  EXPECT_FALSE(form->IsLoaded());
}

TEST_F(ContactSavingTest, CancelAsksNothingOfTheDatabase) {
  UseFakeDriver();
  Add();
  form->cmdCancel.UserClicks();
  EXPECT_TRUE(driver.Opened().empty());
}

TEST_F(ContactSavingTest, TheCloseButtonIsACancel) {
  session.SavedContactId = u"3";
  Add();
  form->UserCloses();
  EXPECT_EQ(Saved(), u"|||||");
}

}  // namespace
}  // namespace ktrv::tests
