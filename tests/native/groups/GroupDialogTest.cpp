#include "data/GroupQueries.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::GroupQueries;

struct GroupDialogTest : tests::GroupsTest {
  void BeAnOrdinaryUser() { session.IsAdmin = UserType::GeneralUser; }
  void TypeName(StringView name) { form->txtGroupName.UserTypes(name); }

  static constexpr StringView kFormLoad =
      u"KTRVAddressBook: Error occurred. Sub:Form_Load() Module: frmGroupsNew()";
  static constexpr StringView kValidate =
      u"KTRVAddressBook: Error occurred. Sub:Validate_Data(), Module: frmGroupsNew()";
  static constexpr StringView kNew =
      u"KTRVAddressBook: Error occured. Sub: cmdNew_Click(),  Module: frmGroupsNew()";
  static constexpr StringView kProperty =
      u"KTRVAddressBook: Error occured. Sub: cmdNew_Click(), Module: frmGroupsNew()";
};

TEST_F(GroupDialogTest, HasItsCaptions) {
  OpenToAdd();
  EXPECT_EQ(form->Caption(), u"New Group");
  EXPECT_EQ(form->lblGroupName.Caption(), u"Group Name");
  EXPECT_EQ(form->chkGroup.Caption(), u"This is a Shared Group");
  EXPECT_FALSE(form->chkGroup.Enabled());
  EXPECT_EQ(form->Frame2.Caption(), u" Select Group Members ");
  EXPECT_EQ(form->Label2.Caption(), u"Type Name or select from list");
  EXPECT_EQ(form->cmdFind.Caption(), u"&Find");
  EXPECT_EQ(form->cmdSelect.Caption(), u"&Select ->");
  EXPECT_EQ(form->cmdSelectAll.Caption(), u"&All ->");
  EXPECT_EQ(form->cmdProperty.Caption(), u"&Properties");
  EXPECT_EQ(form->cmdNew.Caption(), u"&New Contact");
  EXPECT_EQ(form->chkIncudeCountryCode.Caption(), u"Prefix Country code (if available)");
  EXPECT_EQ(form->lblSave.Caption(), u"Saving Group...");
  EXPECT_EQ(form->cmdOK.Caption(), u"&OK");
  EXPECT_EQ(form->cmdCancel.Caption(), u"&Cancel");
}

TEST_F(GroupDialogTest, OrdinaryUserSeesASharedGroupButCannotChangeItOrMakeContacts) {
  BeAnOrdinaryUser();
  OpenToAdd();
  EXPECT_FALSE(form->cmdOK.Enabled());
  EXPECT_FALSE(form->cmdNew.Enabled());
  EXPECT_TRUE(form->cmdCancel.Enabled());
}

TEST_F(GroupDialogTest, OrdinaryUserMayWorkOnLocalGroups) {
  BeAnOrdinaryUser();
  WorkOn(TypeOfGroup::LocalGroup);
  OpenToAdd();
  EXPECT_TRUE(form->cmdOK.Enabled());
  EXPECT_TRUE(form->cmdNew.Enabled());
}

TEST_F(GroupDialogTest, AdministratorMayChangeSharedGroups) {
  OpenToAdd();
  EXPECT_TRUE(form->cmdOK.Enabled());
  EXPECT_TRUE(form->cmdNew.Enabled());
}

TEST_F(GroupDialogTest, SharedModeOfContactsHasNoSayHere) {
  session.SharedMode = TypeOfContact::SharedContact;
  WorkOn(TypeOfGroup::LocalGroup);
  OpenToAdd();
  EXPECT_FALSE(form->chkGroup.Checked());
  EXPECT_TRUE(Sources().empty());
}

TEST_F(GroupDialogTest, PickerHasNoNameRowAndIs660TwipsShorter) {
  OpenToAdd();
  const auto height = form->ScaleHeight();
  const controls::Rectangle frame = form->Frame2.Bounds();
  const controls::Rectangle ok = form->cmdOK.Bounds();
  const controls::Rectangle cancel = form->cmdCancel.Bounds();
  const controls::Rectangle label = form->lblSave.Bounds();
  const controls::Rectangle bar = form->pbrSave.Bounds();
  const controls::Rectangle grid = form->vsfGroupContacts.Bounds();
  OpenPicker();
  EXPECT_EQ(form->ScaleHeight(), height - 660);
  EXPECT_FALSE(form->lblGroupName.Visible());
  EXPECT_FALSE(form->txtGroupName.Visible());
  EXPECT_FALSE(form->chkGroup.Visible());
  EXPECT_EQ(form->Frame2.Top(), frame.Top - 660);
  EXPECT_EQ(form->cmdOK.Top(), ok.Top - 660);
  EXPECT_EQ(form->cmdCancel.Top(), cancel.Top - 660);
  EXPECT_EQ(form->lblSave.Top(), label.Top - 660);
  EXPECT_EQ(form->pbrSave.Top(), bar.Top - 660);
  EXPECT_EQ(form->vsfGroupContacts.Top(), grid.Top - 660);
  EXPECT_EQ(form->vsfGroupContacts.Left(), grid.Left);
  EXPECT_EQ(form->Caption(), u"Select Recipient");
}

TEST_F(GroupDialogTest, EditorTicksTheSharedBoxForASharedGroup) {
  OpenToAdd();
  EXPECT_TRUE(form->chkGroup.Checked());
  WorkOn(TypeOfGroup::LocalGroup);
  OpenToAdd();
  EXPECT_FALSE(form->chkGroup.Checked());
}

TEST_F(GroupDialogTest, ModifyingHasItsCaptionAndTheGroupsName) {
  OpenToModify(u"5", u"Team");
  EXPECT_EQ(form->Caption(), u"Modify Group");
  EXPECT_EQ(form->txtGroupName.Text(), u"Team");
}

TEST_F(GroupDialogTest, ModeHasNoMeaningForThePicker) {
  Open({.LoadGroupFor = LoadGroupFor::SelectReceipient,
        .Mode = ModeOfOperation::Modify,
        .GroupType = TypeOfGroup::SharedGroup});
  EXPECT_EQ(form->Caption(), u"Select Recipient");
  EXPECT_TRUE(Ran(Queries::kCountMembers).empty());
}

TEST_F(GroupDialogTest, NewGroupAndPickerStartWithoutMembers) {
  OpenToAdd();
  EXPECT_EQ(form->Members().Count(), 0);
  EXPECT_EQ(MemberCount(), u"0 Member(s)");
  OpenPicker();
  EXPECT_EQ(form->Members().Count(), 0);
  EXPECT_EQ(form->vsfGroupContacts.Text(0, form->vsfGroupContacts.ColIndex(u"NAME")), u"Name");
}

TEST_F(GroupDialogTest, FirstSourceIsChosenAndAskedForOnce) {
  OpenPicker();
  EXPECT_EQ(form->cboContactType.ListIndex(), 0);
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Ran(u"AS MOBILE_DISPLAY FROM").size(), 1U);
}

TEST_F(GroupDialogTest, OpensWithoutADatabaseAndLogsItOnce) {
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"no server"));
  OpenToModify(u"5", u"Team");
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsLogged(kFormLoad), 1);
  EXPECT_EQ(ErrorsLogged(), 1);
  EXPECT_EQ(form->lblLoadingFolder.Caption(), u"The contacts could not be loaded.");
  EXPECT_EQ(form->lblLoadingGrp.Caption(), u"The members could not be loaded.");
  EXPECT_FALSE(form->pbrFolder.Visible());
}

TEST_F(GroupDialogTest, WithoutADatabaseAnOrdinaryUserGetsNoMoreRights) {
  BeAnOrdinaryUser();
  driver.FailOpen(Error(ErrorNumber::DriverFailure, u"no server"));
  OpenPicker();
  EXPECT_FALSE(form->cmdOK.Enabled());
  EXPECT_EQ(form->Caption(), u"Select Recipient");
}

TEST_F(GroupDialogTest, MySqlOpensListsNothingAndSaysSo) {
  session.DbType = u"MYSQL";
  Folders({{u"1", u"Friends", u"S", u""}});
  OpenPicker();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 1);
  EXPECT_TRUE(form->lblLoadingFolder.Visible());
  EXPECT_EQ(form->lblLoadingFolder.Caption(), u"No lists for database type MYSQL.");
  EXPECT_EQ(Sources(), (std::vector<String>{u"Shared Contacts", u"Friends"}));
  EXPECT_TRUE(Ran(u"AS MOBILE_DISPLAY FROM").empty());
}

// Names.

TEST_F(GroupDialogTest, NameOfBlanksIsRefused) {
  OpenToAdd();
  TypeName(u"   ");
  form->cmdOK.UserClicks();
  EXPECT_EQ(screen.LastMessage().Text, u"Please enter the Group Name.");
  EXPECT_EQ(screen.LastMessage().Style, MessageStyle::Exclamation);
  EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
  EXPECT_TRUE(form->txtGroupName.HasFocus());
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_TRUE(Ran(Queries::kNameTaken).empty());
}

TEST_F(GroupDialogTest, TakenNameOfANewGroupIsRefused) {
  driver.Answer(Queries::kNameTaken, {{u"1"}}, {{u"1"}});
  OpenToAdd();
  TypeName(u" Team ");
  form->cmdOK.UserClicks();
  EXPECT_EQ(screen.LastMessage().Text,
            u"A group with that name already exists. Please use a different group name.");
  EXPECT_TRUE(form->txtGroupName.HasFocus());
  ASSERT_EQ(Ran(Queries::kNameTaken).size(), 1U);
  EXPECT_EQ(Ran(Queries::kNameTaken)[0].Values, (std::vector<Variant>{String(u"Team")}));
  EXPECT_TRUE(Ran(u"INSERT").empty());
}

TEST_F(GroupDialogTest, NameOfAnotherGroupIsRefusedWhenModifying) {
  driver.Answer(Queries::kNameTakenByAnother, {{u"1"}}, {{u"1"}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_EQ(screen.Messages.size(), 1U);
  ASSERT_EQ(Ran(Queries::kNameTakenByAnother).size(), 1U);
  EXPECT_EQ(Ran(Queries::kNameTakenByAnother)[0].Values,
            (std::vector<Variant>{String(u"Team"), std::int64_t{5}}));
}

TEST_F(GroupDialogTest, NameOfALocalGroupIsNotLookedUp) {
  WorkOn(TypeOfGroup::LocalGroup);
  OpenToAdd();
  TypeName(u"Mine");
  EXPECT_TRUE(form->Validate_Data());
  EXPECT_TRUE(driver.Executed().empty());
}

TEST_F(GroupDialogTest, PickerIsNotValidated) {
  OpenPicker();
  EXPECT_TRUE(form->Validate_Data());
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(GroupDialogTest, FailedNameCheckIsLoggedAndCountsAsInvalid) {
  driver.Fail(Queries::kNameTaken, Error(ErrorNumber::DriverFailure, u"gone"));
  OpenToAdd();
  TypeName(u"Team");
  EXPECT_FALSE(form->Validate_Data());
  EXPECT_EQ(ErrorsLogged(kValidate), 1);
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(GroupDialogTest, NameTakesNoMoreThan100Units) {
  OpenToAdd();
  TypeName(String(120, u'x'));
  EXPECT_EQ(form->txtGroupName.Text().size(), 100U);
}

// Cancelling.

TEST_F(GroupDialogTest, CancelWritesNothingAndClearsTheGroup) {
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Left().GroupId, u"");
  EXPECT_EQ(Left().GroupName, u"");
  EXPECT_TRUE(Ran(u"INSERT").empty() && Ran(u"DELETE").empty() && Ran(u"UPDATE").empty());
}

TEST_F(GroupDialogTest, CancelOfThePickerPicksNobody) {
  OpenPicker();
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_FALSE(form->Picked());
}

TEST_F(GroupDialogTest, ClosingTheWindowIsACancel) {
  OpenToModify(u"5", u"Team");
  form->UserCloses();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Left().GroupId, u"");
}

TEST_F(GroupDialogTest, CancelDuringAFetchWaitsForNothing) {
  HoldFetches();
  OpenToModify(u"5", u"Team");
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  form.reset();
  driver.OpenGate.Open();
  EXPECT_TRUE(tests::WaitForFetches());
  screen.Pump();
  EXPECT_EQ(ErrorsLogged(), 0);
}

// Contacts opened over the dialog.

TEST_F(GroupDialogTest, NewContactOfTheChosenFolderIsAppendedToTheSource) {
  Folders({{u"8", u"Friends", u"S", u""}});
  driver.Answer(Queries::kContact, {{u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                {{u"Nora", u"98009", u"91"}});
  OpenToAdd();
  driver.Answer(Queries::kFolder, {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                {{u"8", u"Friends", u"S", u""}});
  ASSERT_TRUE(Choose(u"Friends"));
  AnswerContacts([](const ContactRequest& request) {
    EXPECT_EQ(request.Mode, ModeOfOperation::Add);
    EXPECT_EQ(request.FolderId, 8);
    EXPECT_EQ(request.EditContactId, u"");
    EXPECT_EQ(request.SharedMode, TypeOfContact::SharedContact);
    return String(u"42");
  });
  form->cmdNew.UserClicks();
  const auto& grid = form->vsfFolderContacts;
  EXPECT_EQ(Column(grid, u"ID"), (std::vector<String>{u"42"}));
  EXPECT_EQ(Column(grid, u"NAME"), (std::vector<String>{u"Nora"}));
  EXPECT_EQ(Column(grid, u"MOBILENO"), (std::vector<String>{u"98009"}));
  EXPECT_EQ(Column(grid, u"COUNTRYCODE"), (std::vector<String>{u"91"}));
  EXPECT_EQ(Column(grid, u"MOBILE_DISPLAY"), (std::vector<String>{u"91 98009"}));
  EXPECT_EQ(Column(grid, u"CONTACTTYPE"), (std::vector<String>{u"1"}));
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{1}));
}

TEST_F(GroupDialogTest, NewContactStaysInAListThatWasStillLoading) {
  Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"}});
  driver.Answer(Queries::kContact, {{u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                {{u"Nora", u"98009", u"91"}});
  HoldFetches();
  OpenToAdd();
  AnswerContacts([](const ContactRequest&) { return String(u"42"); });
  form->cmdNew.UserClicks();
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"), (std::vector<String>{u"Nora", u"Anna"}));
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(GroupDialogTest, NoRowComesWhenNoContactWasMade) {
  OpenToAdd();
  ASSERT_TRUE(Complete());
  AnswerContacts([](const ContactRequest&) { return String(); });
  form->cmdNew.UserClicks();
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 1);
  EXPECT_TRUE(Ran(Queries::kContact).empty());
}

TEST_F(GroupDialogTest, NewLocalContactIsNotMarkedSharedAndNotListed) {
  WorkOn(TypeOfGroup::LocalGroup);
  OpenToAdd();
  AnswerContacts([](const ContactRequest& request) {
    EXPECT_EQ(request.FolderId, 0);
    EXPECT_EQ(request.SharedMode, TypeOfContact::LocalContact);
    return String(u"42");
  });
  form->cmdNew.UserClicks();
  EXPECT_EQ(form->vsfFolderContacts.Rows(), 1);
}

TEST_F(GroupDialogTest, FolderIdOfMoreThan16BitsFailsTheNewContact) {
  Folders({{u"40000", u"Far", u"S", u""}});
  driver.Answer(Queries::kFolder, {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                {{u"40000", u"Far", u"S", u""}});
  OpenToAdd();
  AnswerContacts([](const ContactRequest&) {
    ADD_FAILURE();
    return String();
  });
  form->cboContactType.UserChooses(1);
  form->cmdNew.UserClicks();
  EXPECT_EQ(ErrorsLogged(kNew), 1);
}

TEST_F(GroupDialogTest, NoContactIsMadeInARemoteFolder) {
  constexpr StringView kRefusal =
      u"Cannot create Shared Remote Contact here. Such contacts can be created from TALVERO only.";
  Folders({{u"8", u"Dealers", u"R", u"D"}});
  driver.Answer(Queries::kFolder, {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                {{u"8", u"Dealers", u"R", u"D"}});
  OpenToAdd();
  ASSERT_TRUE(Choose(u"Dealers"));
  AnswerContacts([](const ContactRequest&) {
    ADD_FAILURE();
    return String();
  });
  form->cmdNew.UserClicks();
  EXPECT_EQ(screen.LastMessage().Text, kRefusal);
  EXPECT_EQ(screen.LastMessage().Style, MessageStyle::Exclamation);
  // Nor where its list could not be loaded.
  driver.Fail(Queries::kCountRemoteContacts, Error(ErrorNumber::TableNotFound, u"no view"));
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  ASSERT_TRUE(Choose(u"Dealers"));
  form->cmdNew.UserClicks();
  EXPECT_EQ(screen.Messages.size(), 2U);
  EXPECT_EQ(screen.LastMessage().Text, kRefusal);
  EXPECT_EQ(ErrorsLogged(kNew), 0);
}

TEST_F(GroupDialogTest, NoContactIsMadeInARemoteFolderWhoseTypeIsPadded) {
  Folders({{u"8", u"Dealers", u"R   ", u"D"}});
  driver.Answer(Queries::kFolder, {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                {{u"8", u"Dealers", u"R   ", u"D"}});
  OpenToAdd();
  ASSERT_TRUE(Choose(u"Dealers"));
  AnswerContacts([](const ContactRequest&) {
    ADD_FAILURE();
    return String();
  });
  form->cmdNew.UserClicks();
  EXPECT_EQ(screen.Messages.size(), 1U);
}

TEST_F(GroupDialogTest, NoContactIsMadeInAVanishedFolder) {
  Folders({{u"8", u"Friends", u"S", u""}});
  OpenToAdd();
  driver.Answer(Queries::kFolder, {{u"ID"}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                {});
  ASSERT_TRUE(Choose(u"Friends"));
  AnswerContacts([](const ContactRequest&) {
    ADD_FAILURE();
    return String();
  });
  form->cmdNew.UserClicks();
  EXPECT_EQ(screen.LastMessage().Text,
            u"The selected folder or group does not exist any more. Please select another one.");
}

TEST_F(GroupDialogTest, FailureOfANewContactIsLoggedWithTwoBlanks) {
  OpenToAdd();
  AnswerContacts(
      [](const ContactRequest&) -> String { throw Error(ErrorNumber::DriverFailure, u"gone"); });
  form->cmdNew.UserClicks();
  EXPECT_EQ(ErrorsLogged(kNew), 1);
  EXPECT_EQ(ErrorsLogged(kProperty), 0);
}

TEST_F(GroupDialogTest, PropertiesOfARemoteContactAreRefused) {
  Candidates({{u"R1", u"Rita", u"97001", u"", u"3", u"97001"}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  AnswerContacts([](const ContactRequest&) {
    ADD_FAILURE();
    return String();
  });
  form->vsfFolderContacts.SetRow(1);
  form->cmdProperty.UserClicks();
  EXPECT_EQ(screen.LastMessage().Text,
            u"Cannot show properties of Shared Remote Contacts from here.");
}

TEST_F(GroupDialogTest, PropertiesOfAContactAreEditedAndReadAgain) {
  Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
              {u"2", u"Bert", u"98002", u"", u"1", u"98002"}});
  driver.Answer(Queries::kContact, {{u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                {{u"Berta", u"98022", u"44"}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  AnswerContacts([](const ContactRequest& request) {
    EXPECT_EQ(request.Mode, ModeOfOperation::Modify);
    EXPECT_EQ(request.EditContactId, u"2");
    return request.EditContactId;
  });
  form->vsfFolderContacts.SetRow(2);
  form->cmdProperty.UserClicks();
  EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"), (std::vector<String>{u"Anna", u"Berta"}));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"MOBILENO"),
            (std::vector<String>{u"98001", u"98022"}));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"COUNTRYCODE"), (std::vector<String>{u"91", u"44"}));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"MOBILE_DISPLAY"),
            (std::vector<String>{u"91 98001", u"44 98022"}));
}

/// A contact that was added while its list was loading may come with it once more.
TEST_F(GroupDialogTest, AnEditedContactIsWrittenToAllItsRows) {
  Candidates({{u"2", u"Bert", u"98002", u"", u"1", u"98002"},
              {u"2", u"Bert", u"98002", u"", u"2", u"98002"},
              {u"2", u"Bert", u"98002", u"", u"1", u"98002"}});
  driver.Answer(Queries::kContact, {{u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                {{u"Bert", u"98022", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  AnswerContacts([](const ContactRequest& request) { return request.EditContactId; });
  form->vsfFolderContacts.SetRow(1);
  form->cmdProperty.UserClicks();
  EXPECT_EQ(Column(form->vsfFolderContacts, u"MOBILENO"),
            (std::vector<String>{u"98022", u"98002", u"98022"}));
}

TEST_F(GroupDialogTest, PropertiesAreThoseOfTheSelectedRowNotOfTheOneWithTheFocus) {
  Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
              {u"2", u"Bert", u"98002", u"", u"1", u"98002"}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  std::vector<String> ids;
  AnswerContacts([&](const ContactRequest& request) {
    ids.push_back(request.EditContactId);
    return request.EditContactId;
  });
  form->vsfFolderContacts.SetRow(1);
  form->vsfFolderContacts.UserSelectsRange(2, 2, true, 2);
  form->vsfFolderContacts.UserSelectsRange(2, 2, false, 2);
  form->cmdProperty.UserClicks();
  EXPECT_EQ(ids, (std::vector<String>{u"1"}));
  form->vsfFolderContacts.UserSelectsRange(1, 1, false, 2);
  form->cmdProperty.UserClicks();
  EXPECT_EQ(ids.size(), 1U);
}

TEST_F(GroupDialogTest, PropertiesOfAContactLeaveAGroupsRowAlone) {
  Candidates(
      {{u"2", u"Anglers", u"", u"", u"2", u""}, {u"2", u"Bert", u"98002", u"", u"1", u"98002"}});
  driver.Answer(Queries::kContact, {{u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                {{u"Berta", u"98022", u"44"}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  AnswerContacts([](const ContactRequest&) { return String(); });
  form->vsfFolderContacts.SetRow(2);
  form->cmdProperty.UserClicks();
  EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"), (std::vector<String>{u"Anglers", u"Berta"}));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"MOBILENO"), (std::vector<String>{u"", u"98022"}));
  EXPECT_EQ(Column(form->vsfFolderContacts, u"MOBILE_DISPLAY"),
            (std::vector<String>{u"", u"44 98022"}));
}

TEST_F(GroupDialogTest, PropertiesLogUnderTheNewContactsNameWithOneBlank) {
  Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  AnswerContacts(
      [](const ContactRequest&) -> String { throw Error(ErrorNumber::DriverFailure, u"gone"); });
  form->vsfFolderContacts.SetRow(1);
  form->cmdProperty.UserClicks();
  EXPECT_EQ(ErrorsLogged(kProperty), 1);
  EXPECT_EQ(ErrorsLogged(kNew), 0);
}

TEST_F(GroupDialogTest, PropertiesWithoutASelectedRowDoNothing) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  AnswerContacts([](const ContactRequest&) {
    ADD_FAILURE();
    return String();
  });
  form->cmdProperty.UserClicks();
  EXPECT_EQ(ErrorsLogged(), 0);
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(GroupDialogTest, PropertiesOfAListedGroupOpenItsOwnDialog) {
  Candidates({{u"9", u"Team", u"", u"", u"2", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  session.OpenForProperties = false;
  screen.PlayModal([&](controls::Form& shown) {
    EXPECT_TRUE(session.OpenForProperties);
    EXPECT_EQ(session.GroupId, u"9");
    EXPECT_EQ(shown.Caption(), u"Modify Group");
    EXPECT_EQ(static_cast<frmGroupsNew&>(shown).txtGroupName.Text(), u"Team");
    shown.Unload();
  });
  form->vsfFolderContacts.SetRow(1);
  form->cmdProperty.UserClicks();
  EXPECT_FALSE(session.OpenForProperties);
  EXPECT_TRUE(form->IsLoaded());
}

TEST_F(GroupDialogTest, ClosedDialogLoadsNoListAfterPropertiesOfAGroup) {
  Candidates({{u"9", u"Team", u"", u"", u"2", u""}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  form->OpenProperties = [&](const Workplace&, const GroupRequest&) {
    form->Unload();
    GroupResult result;
    result.HasOpenedContacts = true;
    return result;
  };
  form->vsfFolderContacts.SetRow(1);
  form->cmdProperty.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_FALSE(form->Sources().IsLoading());
}

}  // namespace
}  // namespace ktrv::forms
