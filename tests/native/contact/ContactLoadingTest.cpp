#include "tests/native/contact/ContactFixture.h"

namespace ktrv::tests {
namespace {

struct ContactLoadingTest : ContactFixture {};

// New contacts.

TEST_F(ContactLoadingTest, ANewLocalContactHasTheDesignCaptionAndAnUncheckedBox) {
  EXPECT_EQ(Add().Caption(), u"New Contact");
  EXPECT_FALSE(form->chkContacts.Checked());
}

TEST_F(ContactLoadingTest, ANewSharedContactSaysSo) {
  Shared();
  EXPECT_EQ(Add().Caption(), u"Add Shared Contact");
  EXPECT_TRUE(form->chkContacts.Checked());
  EXPECT_FALSE(form->chkContacts.Enabled());
}

TEST_F(ContactLoadingTest, ThePresetNameStandsInTheFirstName) {
  request.PresetContactName = u"Ann";
  EXPECT_EQ(Add().txtFname.Text(), u"Ann");
}

struct MobilePreset {
  StringView Preset;
  StringView Shown;
};

class MobilePresetTest : public ContactFixture, public testing::WithParamInterface<MobilePreset> {};

TEST_P(MobilePresetTest, TheMobileNumberStartsWithThePresetOrTheCountryPrefix) {
  request.PresetMobileNo = GetParam().Preset;
  Add();
  EXPECT_EQ(form->txtMobileno.Text(), GetParam().Shown);
  EXPECT_EQ(form->Result().PresetMobileNo, GetParam().Shown);
  EXPECT_EQ(form->txtCountryCode.Text(), u"");
}

INSTANTIATE_TEST_SUITE_P(Presets, MobilePresetTest,
                         testing::Values(MobilePreset{u"", u"91"}, MobilePreset{u"  ", u"91"},
                                         MobilePreset{u"98", u"98"}, MobilePreset{u" 98", u" 98"}));

TEST_F(ContactLoadingTest, ANewContactHasTheEmptySexAndNoDates) {
  Add();
  EXPECT_EQ(form->cboSex.ListIndex(), 0);
  EXPECT_EQ(form->cboSex.Text(), u"");
  EXPECT_EQ(form->cboSex.List(1), u"Male");
  EXPECT_EQ(form->cboSex.List(2), u"Female");
  EXPECT_FALSE(form->dtBirthday.Value());
  EXPECT_FALSE(form->dtAnniversary.Value());
}

TEST_F(ContactLoadingTest, ANewContactAsksNothingOfTheDatabase) {
  UseFakeDriver();
  Add();
  EXPECT_TRUE(driver.Opened().empty());
}

TEST_F(ContactLoadingTest, TheIdOfAnEarlierContactIsNotLoadedIntoANewOne) {
  Ann();
  request.EditContactId = u"5";
  EXPECT_EQ(Add().txtLname.Text(), u"");
}

// Existing contacts.

TEST_F(ContactLoadingTest, EveryColumnStandsInItsBox) {
  Ann();
  Edit();
  EXPECT_EQ(form->txtFname.Text(), u"Ann");
  EXPECT_EQ(form->txtMname.Text(), u"B");
  EXPECT_EQ(form->txtLname.Text(), u"Lee");
  EXPECT_EQ(form->txtCountryCode.Text(), u"44");
  EXPECT_EQ(form->txtMobileno.Text(), u"7700900");
  EXPECT_EQ(form->txtOfficePhone.Text(), u"off");
  EXPECT_EQ(form->txtHomePhone.Text(), u"home");
  EXPECT_EQ(form->txtFax.Text(), u"fax");
  EXPECT_EQ(form->txtEmail.Text(), u"ann@lee.org");
  EXPECT_EQ(form->txtOrganisation.Text(), u"Acme");
  EXPECT_EQ(form->txtAddress.Text(), u"Street 1");
  EXPECT_EQ(form->txtCity.Text(), u"Leeds");
  EXPECT_EQ(form->txtState.Text(), u"York");
  EXPECT_EQ(form->txtCountry.Text(), u"UK");
  EXPECT_EQ(form->txtZip.Text(), u"LS1");
  EXPECT_EQ(form->txtAge.Text(), u"30");
  EXPECT_EQ(form->cboSex.Text(), u"Female");
  EXPECT_EQ(form->dtBirthday.Value(), Date(1990, 2, 28));
  EXPECT_EQ(form->dtAnniversary.Value(), Date(2015, 6, 1));
  EXPECT_EQ(form->txtHobby.Text(), u"Chess");
  EXPECT_EQ(form->FolderId, 3);
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactLoadingTest, TheRowIsReadByItsIdOnAConnectionOfItsOwn) {
  UseFakeDriver();
  Edit();
  ASSERT_EQ(driver.Executed().size(), 1u);
  EXPECT_EQ(driver.Executed().front().Text, u"SELECT * FROM SMS_ABCONTACTS WHERE ID = 5");
  EXPECT_EQ(driver.LinksAlive(), 0);
}

TEST_F(ContactLoadingTest, ALocalContactKeepsTheCaptionOfANewOne) {
  Ann();
  Local();
  EXPECT_EQ(Edit().Caption(), u"New Contact");
  EXPECT_FALSE(form->chkContacts.Checked());
  EXPECT_FALSE(form->chkContacts.Enabled());
}

TEST_F(ContactLoadingTest, ASharedContactHasItsCaptionAndACheckedBox) {
  Ann();
  Shared();
  EXPECT_EQ(Edit().Caption(), u"Edit Shared Contact");
  EXPECT_TRUE(form->chkContacts.Checked());
  EXPECT_FALSE(form->chkContacts.Enabled());
}

TEST_F(ContactLoadingTest, NullColumnsGiveEmptyBoxesAndNoDates) {
  database.Run({u"INSERT INTO SMS_ABCONTACTS (ID, FNAME) VALUES (5, 'Ann')"});
  Edit();
  EXPECT_EQ(form->txtLname.Text(), u"");
  EXPECT_EQ(form->txtAge.Text(), u"");
  EXPECT_EQ(form->txtHobby.Text(), u"");
  EXPECT_EQ(form->cboSex.ListIndex(), 0);
  EXPECT_FALSE(form->dtBirthday.Value());
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactLoadingTest, ANullBirthdayLeavesOnlyTheAnniversary) {
  Ann(u"BIRTHDAY = NULL");
  Edit();
  EXPECT_FALSE(form->dtBirthday.Value());
  EXPECT_EQ(form->dtAnniversary.Value(), Date(2015, 6, 1));
}

struct Sex {
  StringView Stored;
  StringView Shown;
};

class SexLoadingTest : public ContactFixture, public testing::WithParamInterface<Sex> {};

TEST_P(SexLoadingTest, OnlyTheCapitalLettersCount) {
  Ann(u"SEX = " + String(GetParam().Stored));
  EXPECT_EQ(Edit().cboSex.Text(), GetParam().Shown);
}

INSTANTIATE_TEST_SUITE_P(Letters, SexLoadingTest,
                         testing::Values(Sex{u"'F'", u"Female"}, Sex{u"'M'", u"Male"},
                                         Sex{u"'f'", u""}, Sex{u"'m'", u""}, Sex{u"'F '", u""},
                                         Sex{u"''", u""}, Sex{u"NULL", u""}));

TEST_F(ContactLoadingTest, ADateThatNoPickerShowsIsNoneInTheDialogToo) {
  Ann(u"BIRTHDAY = '1700-01-01'");
  Edit();
  EXPECT_FALSE(form->dtBirthday.Value());
  EXPECT_EQ(form->txtHobby.Text(), u"Chess");
  EXPECT_EQ(Log(), u"");
}

// What goes wrong is logged, and the dialog stays with what was filled in so far.

TEST_F(ContactLoadingTest, AnIdThatNamesNoRowLeavesTheDialogEmptyAndUsable) {
  Edit(u"99");
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(form->txtFname.Text(), u"");
  EXPECT_EQ(Log(), u"");
}

TEST_F(ContactLoadingTest, AnIdThatIsNoNumberNeverReachesTheDatabase) {
  UseFakeDriver();
  Edit(u"5 OR 1=1");
  EXPECT_TRUE(driver.Executed().empty());
  EXPECT_EQ(LoadErrors(), 1);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::TypeMismatch));
  EXPECT_TRUE(form->IsLoaded());
}

TEST_F(ContactLoadingTest, AnIdOfBlanksLoadsNothing) {
  UseFakeDriver();
  Edit(u"  ");
  EXPECT_TRUE(driver.Executed().empty());
  EXPECT_EQ(Log(), u"");
  EXPECT_FALSE(form->chkContacts.Enabled());
}

TEST_F(ContactLoadingTest, AnEmptyIdPresentsNothing) {
  Shared();
  Edit(u"");
  EXPECT_EQ(form->Caption(), u"New Contact");
  EXPECT_TRUE(form->chkContacts.Enabled());
}

TEST_F(ContactLoadingTest, ALostConnectionIsLoggedAndTheDialogStays) {
  UseFakeDriver();
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"no server"));
  Shared();
  Edit();
  EXPECT_EQ(LoadErrors(), 1);
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(form->Caption(), u"Edit Shared Contact");
}

TEST_F(ContactLoadingTest, AFolderIdOfMoreThan16BitsHidesNothing) {
  Ann(u"FOLDER_ID = 40000");
  Edit();
  EXPECT_EQ(Log(), u"");
  EXPECT_EQ(form->txtFname.Text(), u"Ann");
  EXPECT_EQ(form->txtMname.Text(), u"B");
  EXPECT_EQ(form->txtHobby.Text(), u"Chess");
}

TEST_F(ContactLoadingTest, ADateThatComesAsATextIsADate) {
  Ann();
  database.Run({u"ALTER TABLE SMS_ABCONTACTS DROP COLUMN BIRTHDAY",
                u"ALTER TABLE SMS_ABCONTACTS ADD COLUMN BIRTHDAY VARCHAR(30)",
                u"UPDATE SMS_ABCONTACTS SET BIRTHDAY = '1990-02-28'"});
  Edit();
  EXPECT_EQ(form->dtBirthday.Value(), Date(1990, 2, 28));
  EXPECT_EQ(form->txtHobby.Text(), u"Chess");
  EXPECT_EQ(LoadErrors(), 0);
}

TEST_F(ContactLoadingTest, ADateThatComesAsATextMayHaveBlanksAroundIt) {
  Ann(u"BIRTHDAY = ' 1990-02-28 '");
  Edit();
  EXPECT_EQ(form->dtBirthday.Value(), Date(1990, 2, 28));
  EXPECT_EQ(form->txtHobby.Text(), u"Chess");
  EXPECT_EQ(LoadErrors(), 0);
}

TEST_F(ContactLoadingTest, ABirthdayThatIsNoDateIsLoggedAndHidesNothingElse) {
  Ann(u"BIRTHDAY = '01/05/1980'");
  Edit();
  EXPECT_EQ(LoadErrors(), 1);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::TypeMismatch));
  EXPECT_FALSE(form->dtBirthday.Value());
  EXPECT_EQ(form->dtAnniversary.Value(), Date(2015, 6, 1));
  EXPECT_EQ(form->txtHobby.Text(), u"Chess");
}

TEST_F(ContactLoadingTest, EachBirthdayAndAnniversaryThatIsNoDateIsLogged) {
  Ann(u"BIRTHDAY = 'spring', ANNIVERSARY = 'autumn'");
  Edit();
  EXPECT_EQ(LoadErrors(), 2);
  EXPECT_EQ(form->txtHobby.Text(), u"Chess");
}

TEST_F(ContactLoadingTest, AFolderIdThatIsNullHidesNothing) {
  EditRowWith({{u"ID", u"5"}, {u"FNAME", u"Ann"}, {u"HOBBY", u"Chess"}});
  EXPECT_EQ(Log(), u"");
  EXPECT_EQ(form->txtFname.Text(), u"Ann");
  EXPECT_EQ(form->txtHobby.Text(), u"Chess");
}

TEST_F(ContactLoadingTest, ATextOverTheLimitIsShownWhole) {
  Ann(u"LNAME = '" + String(60, u'x') + u"'");
  Edit();
  EXPECT_EQ(form->txtLname.Text(), String(60, u'x'));
}

TEST_F(ContactLoadingTest, QuotesTabsLineBreaksAndEmojiAreShownAsStored) {
  Ann(u"LNAME = 'O''Brien \"&\"\t;\r\n\U0001F600'");
  Edit();
  EXPECT_EQ(form->txtLname.Text(), u"O'Brien \"&\"\t;\r\n\U0001F600");
}

// At the server.

TEST_F(ContactLoadingTest, AtTheServerEveryContactIsMarkedShared) {
  AtServer();
  Local();
  Add();
  EXPECT_TRUE(form->chkContacts.Visible());
  EXPECT_TRUE(form->chkContacts.Checked());
  EXPECT_FALSE(form->chkContacts.Enabled());
  EXPECT_EQ(form->Caption(), u"New Contact");
}

TEST_F(ContactLoadingTest, AtTheServerAnEditedContactIsMarkedSharedAndEnabledToo) {
  AtServer();
  Local();
  Ann();
  request.Mode = ModeOfOperation::Modify;
  request.EditContactId = u"5";
  form->txtCity.SetEnabled(false);
  form->Load();
  EXPECT_TRUE(form->chkContacts.Checked());
  EXPECT_FALSE(form->chkContacts.Enabled());
  EXPECT_TRUE(form->txtCity.Enabled());
  EXPECT_EQ(form->txtCity.Text(), u"Leeds");
  EXPECT_EQ(form->Caption(), u"New Contact");
}

TEST_F(ContactLoadingTest, AtTheServerAllInputIsEnabledOnTheWindowColour) {
  AtServer();
  form->txtCity.SetEnabled(false);
  form->txtCity.SetBackColor(controls::kSystemButtonFace);
  form->cboSex.SetEnabled(false);
  form->cboSex.SetBackColor(controls::kSystemButtonFace);
  form->dtBirthday.SetEnabled(false);
  form->dtAnniversary.SetEnabled(false);
  form->cmdSave.SetEnabled(false);
  form->cmdSave.SetVisible(false);
  form->Frame1.SetEnabled(false);
  Add();
  EXPECT_TRUE(form->txtCity.Enabled());
  EXPECT_EQ(form->txtCity.BackColor(), controls::kSystemWindowBackground);
  EXPECT_TRUE(form->cboSex.Enabled());
  EXPECT_EQ(form->cboSex.BackColor(), controls::kSystemWindowBackground);
  EXPECT_TRUE(form->dtBirthday.Enabled());
  EXPECT_TRUE(form->dtAnniversary.Enabled());
  EXPECT_TRUE(form->cmdSave.Enabled());
  EXPECT_TRUE(form->cmdSave.Visible());
  EXPECT_TRUE(form->Frame1.Enabled());
}

}  // namespace
}  // namespace ktrv::tests
