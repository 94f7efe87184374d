#include <algorithm>

#include "data/GroupQueries.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

namespace Queries = data::GroupQueries;

String Padded(String id, StringView name) {
  id.resize(15, u' ');
  return id.append(name);
}

struct RecipientPickTest : tests::GroupsTest {
  void Pick(std::vector<Row> rows) {
    Candidates(std::move(rows));
    OpenPicker();
    ASSERT_TRUE(Complete());
    form->cmdSelectAll.UserClicks();
  }
  void PickAndOk(std::vector<Row> rows) {
    Pick(std::move(rows));
    form->cmdOK.UserClicks();
  }
  void GroupHas(std::vector<Row> members) {
    Counts(Queries::kCountMembers, static_cast<std::int64_t>(members.size()));
    driver.Answer(Queries::kExpandedMembers, {{u"ID"}, {u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                  std::move(members));
  }
  /// Of nobody when there was no pick.
  ktrv::forms::Recipients Picked() const {
    return form->Picked().value_or(ktrv::forms::Recipients());
  }
  std::vector<String> Recipients() const { return Texts(*Picked().Selected); }
  std::vector<String> Numbers() const { return Texts(*Picked().MobileNos); }
  std::vector<String> Names() const { return Texts(*Picked().Names); }
};

TEST_F(RecipientPickTest, EachKindHasItsEntry) {
  PickAndOk({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
             {u"9", u"Team", u"", u"", u"2", u""},
             {u"R1", u"Rita", u"97001", u"", u"3", u"97001"}});
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Recipients(),
            (std::vector<String>{u"SC|1|Anna|98001", u"SG|9|Team|", u"RC|R1|Rita|97001"}));
  EXPECT_EQ(Numbers(), (std::vector<String>{u"98001", u"", u"97001"}));
  EXPECT_EQ(Names(), (std::vector<String>{Padded(u"1", u"Anna"), Padded(u"9", u"Team"),
                                          Padded(u"R1", u"Rita")}));
  EXPECT_EQ(Picked().ContactsName, u"");
}

TEST_F(RecipientPickTest, ItemsHaveKeysOfKindAndRunningNumber) {
  PickAndOk({{u"1", u"Anna", u"98001", u"91", u"1", u""},
             {u"9", u"Team", u"", u"", u"2", u""},
             {u"R1", u"Rita", u"97001", u"", u"3", u""}});
  EXPECT_EQ(Picked().Names->Item(u"C1"), Padded(u"1", u"Anna"));
  EXPECT_EQ(Picked().Names->Item(u"G2"), Padded(u"9", u"Team"));
  EXPECT_EQ(Picked().Names->Item(u"R3"), Padded(u"R1", u"Rita"));
  EXPECT_EQ(Picked().MobileNos->Item(u"M1"), u"98001");
  EXPECT_EQ(Picked().MobileNos->Item(u"M2"), u"");
  EXPECT_EQ(Picked().MobileNos->Item(u"M3"), u"97001");
}

TEST_F(RecipientPickTest, CountryCodeStandsDirectlyBeforeAContactsNumber) {
  Pick({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
        {u"2", u"Bert", u"98002", u"", u"1", u"98002"},
        {u"R1", u"Rita", u"97001", u"", u"3", u"97001"}});
  form->chkIncudeCountryCode.UserClicks();
  form->cmdOK.UserClicks();
  EXPECT_EQ(Numbers(), (std::vector<String>{u"9198001", u"98002", u"97001"}));
  EXPECT_EQ(Recipients()[0], u"SC|1|Anna|98001");
}

TEST_F(RecipientPickTest, NothingPickedIsAnEmptyResult) {
  PickAndOk({});
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(Recipients().empty());
}

TEST_F(RecipientPickTest, UnknownKindGivesNothing) {
  PickAndOk({{u"1", u"Anna", u"98001", u"", u"7", u""}, {u"2", u"Bert", u"98002", u"", u"1", u""}});
  EXPECT_EQ(Recipients(), (std::vector<String>{u"SC|2|Bert|98002"}));
  EXPECT_EQ(Picked().MobileNos->Item(u"M1"), u"98002");
}

TEST_F(RecipientPickTest, SeparatorsInsideTextsStandAsTheyAre) {
  PickAndOk({{u"a|b", u"O'Brien; \"x\"|y", u"9|8", u"", u"3", u""}});
  EXPECT_EQ(Recipients(), (std::vector<String>{u"RC|a|b|O'Brien; \"x\"|y|9|8"}));
}

TEST_F(RecipientPickTest, IdOf15UnitsNeedsNoBlanks) {
  PickAndOk({{String(15, u'7'), u"Anna", u"", u"", u"1", u""}});
  EXPECT_EQ(Names(), (std::vector<String>{String(15, u'7') + u"Anna"}));
}

TEST_F(RecipientPickTest, IdOfMoreThan15UnitsFailsAndLeavesNothingBehind) {
  PickAndOk({{u"1", u"Anna", u"98001", u"", u"1", u""},
             {String(16, u'x'), u"Long", u"", u"", u"3", u""}});
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
  EXPECT_TRUE(Recipients().empty());
  EXPECT_TRUE(Numbers().empty());
  EXPECT_EQ(form->lblSave.Caption(), u"The recipients could not be selected.");
}

TEST_F(RecipientPickTest, OneBadIdRefusesNoPickUnnamed) {
  PickAndOk({{u"1", u"Anna", u"98001", u"", u"1", u""},
             {String(16, u'x'), u"Long", u"", u"", u"3", u""},
             {u"2", u"Bert", u"98002", u"", u"1", u""}});
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"\"Long\" could not be selected as a recipient. Remove it from the list, or try "
            u"again.");
  EXPECT_EQ(screen.LastMessage().Style, MessageStyle::Exclamation);
}

TEST_F(RecipientPickTest, OneBadGroupRefusesNoPickUnnamed) {
  session.ExpandGroups = true;
  PickAndOk(
      {{u"1", u"Anna", u"98001", u"", u"1", u""}, {u"4294967297", u"Far", u"", u"", u"2", u""}});
  EXPECT_TRUE(Recipients().empty());
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_NE(screen.LastMessage().Text.find(u"\"Far\" could not be selected"), String::npos);
}

TEST_F(RecipientPickTest, BadMemberOfAGroupIsNamedWithIt) {
  session.ExpandGroups = true;
  GroupHas({{u"1", u"Anna", u"98001", u"91"}, {String(16, u'x'), u"Long", u"97001", u""}});
  PickAndOk({{u"9", u"Team", u"", u"", u"2", u""}});
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_TRUE(Recipients().empty());
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"\"Team\" (its member \"Long\") could not be selected as a recipient. Remove it from "
            u"the list, or try again.");
}

TEST_F(RecipientPickTest, PickIsCompleteAfterTheLongIdWasRemoved) {
  PickAndOk({{u"1", u"Anna", u"98001", u"", u"1", u""},
             {String(16, u'x'), u"Long", u"", u"", u"3", u""}});
  form->vsfGroupContacts.SetRow(2);
  form->vsfGroupContacts.UserPresses(controls::KeyCode::Delete, 0);
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Recipients(), (std::vector<String>{u"SC|1|Anna|98001"}));
}

// Groups expanded.

TEST_F(RecipientPickTest, ExpandedGroupGivesEachMemberAsAContact) {
  session.ExpandGroups = true;
  GroupHas({{u"1", u"Anna", u"98001", u"91"}, {u"R1", u"Rita", u"97001", u""}});
  PickAndOk({{u"9", u"Team", u"", u"", u"2", u""}, {u"2", u"Bert", u"98002", u"", u"1", u""}});
  EXPECT_EQ(Recipients(),
            (std::vector<String>{u"SC|1|Anna|98001", u"SC|R1|Rita|97001", u"SC|2|Bert|98002"}));
  EXPECT_EQ(Names(), (std::vector<String>{Padded(u"1", u"Anna"), Padded(u"R1", u"Rita"),
                                          Padded(u"2", u"Bert")}));
  EXPECT_EQ(Picked().Names->Item(u"C3"), Padded(u"2", u"Bert"));
  EXPECT_EQ(Picked().ContactsName, u"Anna;Rita;");
  ASSERT_EQ(Ran(Queries::kExpandedMembers).size(), 1U);
  EXPECT_EQ(Ran(Queries::kExpandedMembers)[0].Values,
            (std::vector<Variant>{std::int64_t{9}, std::int64_t{9}}));
}

TEST_F(RecipientPickTest, CountryCodeAppliesToMembersOfExpandedGroups) {
  session.ExpandGroups = true;
  GroupHas({{u"1", u"Anna", u"98001", u"91"}, {u"3", u"Cora", std::nullopt, std::nullopt}});
  Pick({{u"9", u"Team", u"", u"", u"2", u""}});
  form->chkIncudeCountryCode.UserClicks();
  form->cmdOK.UserClicks();
  EXPECT_EQ(Numbers(), (std::vector<String>{u"9198001", u""}));
}

TEST_F(RecipientPickTest, ExpandedGroupWithoutMembersGivesNothing) {
  session.ExpandGroups = true;
  GroupHas({});
  PickAndOk({{u"9", u"Void", u"", u"", u"2", u""}});
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_TRUE(Recipients().empty());
  EXPECT_TRUE(Ran(Queries::kExpandedMembers).empty());
}

TEST_F(RecipientPickTest, BarRunsToTheMembersOfExpandedGroupsToo) {
  session.ExpandGroups = true;
  GroupHas({{u"1", u"Anna", u"", u""}, {u"2", u"Bert", u"", u""}, {u"3", u"Cora", u"", u""}});
  PickAndOk({{u"9", u"Team", u"", u"", u"2", u""}});
  EXPECT_EQ(form->pbrSave.Max(), 4);
  EXPECT_EQ(form->pbrSave.Value(), 4);
  EXPECT_FALSE(form->pbrSave.Visible());
}

TEST_F(RecipientPickTest, LabelNoLongerNamesTheGroupOnceItIsExpanded) {
  session.ExpandGroups = true;
  GroupHas({{u"1", u"Anna", u"", u""}});
  PickAndOk({{u"9", u"Team", u"", u"", u"2", u""}});
  EXPECT_EQ(form->lblSave.Caption(), u"Selecting members..");
  EXPECT_FALSE(form->lblSave.Visible());
}

TEST_F(RecipientPickTest, GroupWhosePropertiesWereSavedKeepsItsIdAndName) {
  session.GroupId = u"5";
  session.GroupName = u"Old";
  Pick({{u"9", u"Team", u"", u"", u"2", u""}});
  screen.PlayModal([&](controls::Form& shown) {
    auto& properties = static_cast<frmGroupsNew&>(shown);
    ASSERT_TRUE(screen.WaitUntil([&] { return properties.Members().IsComplete(); }));
    properties.cmdOK.UserClicks();
  });
  form->vsfFolderContacts.SetRow(1);
  form->cmdProperty.UserClicks();
  form->cmdOK.UserClicks();
  ASSERT_FALSE(form->IsLoaded());
  EXPECT_EQ(session.GroupId + u"|" + session.GroupName, u"9|Team");
}

TEST_F(RecipientPickTest, NamesTextStartsAnewWithEachPick) {
  session.ExpandGroups = true;
  PickAndOk({{u"1", u"Anna", u"98001", u"", u"1", u""}});
  EXPECT_EQ(Picked().ContactsName, u"");
}

TEST_F(RecipientPickTest, GroupThatCannotBeExpandedKeepsTheDialogOpen) {
  session.ExpandGroups = true;
  GroupHas({{u"1", u"Anna", u"98001", u"91"}});
  driver.Fail(Queries::kExpandedMembers,
              Error(ErrorNumber::SyntaxOrPermission, u"'TO_CHAR' is not a function"));
  PickAndOk({{u"9", u"Team", u"", u"", u"2", u""}});
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(ErrorsLogged(kSaveContext), 1);
  EXPECT_TRUE(Recipients().empty());
}

TEST_F(RecipientPickTest, HostKeepsTheCollectionsOfAnEarlierPick) {
  PickAndOk({{u"1", u"Anna", u"98001", u"", u"1", u""}});
  const auto kept = Picked().Selected;
  PickAndOk({{u"2", u"Bert", u"98002", u"", u"1", u""}});
  EXPECT_EQ(Texts(*kept), (std::vector<String>{u"SC|1|Anna|98001"}));
  EXPECT_EQ(Recipients(), (std::vector<String>{u"SC|2|Bert|98002"}));
}

TEST_F(RecipientPickTest, PickWritesNothingToTheDatabase) {
  PickAndOk({{u"1", u"Anna", u"98001", u"", u"1", u""}, {u"9", u"Team", u"", u"", u"2", u""}});
  for (const auto& execution : driver.Executed()) {
    EXPECT_EQ(execution.Text.rfind(u"SELECT", 0), 0U) << ToUtf8(execution.Text);
  }
}

struct PicksOnDatabase : tests::GroupsOnDatabase {};

TEST_F(PicksOnDatabase, ContactsGroupsAndRemoteContactsInBothFamilies) {
  for (const StringView word : {u"SQL", u"ORACLE"}) {
    session.DbType = word;
    OpenPicker();
    ASSERT_TRUE(Complete());
    Take({1, 3, 4});
    ASSERT_TRUE(Choose(u"Dealers"));
    Take({2});
    form->cmdOK.UserClicks();
    ASSERT_FALSE(form->IsLoaded());
    EXPECT_EQ(Texts(*Left().SelectedRecipients),
              (std::vector<String>{u"SC|1|Anna|98001", u"SC|3|Cora|", u"SG|11|Team|",
                                   u"RC|R2|Rolf|97002"}));
  }
}

TEST_F(PicksOnDatabase, ContactMadeInACancelledGroupIsNotMissing) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  screen.PlayModal([&](controls::Form& shown) {
    auto& properties = static_cast<frmGroupsNew&>(shown);
    ASSERT_TRUE(screen.WaitUntil([&] { return properties.Members().IsComplete(); }));
    properties.OpenContact = [&](Workplace, const ContactRequest&) {
      Run(u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) VALUES (7, 0, 'Nora', "
          u"'98007')");
      return ContactResult{TypeOfContact::SharedContact, u"7", {}, {}};
    };
    properties.cmdNew.UserClicks();
    properties.cmdCancel.UserClicks();
  });
  form->vsfFolderContacts.SetRow(4);
  form->cmdProperty.UserClicks();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"),
            (std::vector<String>{u"Anna", u"Bert", u"Cora", u"Nora", u"Team", u"Void"}));
}

TEST_F(PicksOnDatabase, ContactEditedInAGroupGetsTheMessageAtItsNewNumber) {
  OpenPicker();
  ASSERT_TRUE(Complete());
  Take({1});
  screen.PlayModal([&](controls::Form& shown) {
    auto& properties = static_cast<frmGroupsNew&>(shown);
    ASSERT_TRUE(screen.WaitUntil([&] { return properties.Members().IsComplete(); }));
    ASSERT_TRUE(screen.WaitUntil([&] { return !properties.Sources().IsLoading(); }));
    properties.OpenContact = [&](Workplace, const ContactRequest& request) {
      EXPECT_EQ(request.EditContactId, u"1");
      Run(u"UPDATE SMS_ABCONTACTS SET MOBILENO = '98111' WHERE ID = 1");
      return ContactResult{TypeOfContact::SharedContact, u"1", {}, {}};
    };
    properties.vsfFolderContacts.SetRow(1);
    properties.cmdProperty.UserClicks();
    properties.cmdCancel.UserClicks();
  });
  form->vsfFolderContacts.SetRow(4);
  form->cmdProperty.UserClicks();
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_EQ(Texts(*Left().SelectedRecipients), (std::vector<String>{u"SC|1|Anna|98111"}));
}

TEST_F(PicksOnDatabase, GroupIsNotPickedUnderAnEditedContactsName) {
  Run(u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (2, 'Anglers', 0)");
  for (const StringView word : {u"SQL", u"ORACLE"}) {
    session.DbType = word;
    OpenPicker();
    ASSERT_TRUE(Complete());
    AnswerContacts([](const ContactRequest&) { return String(); });
    const auto names = Column(form->vsfFolderContacts, u"NAME");
    const auto row = [&](StringView name) {
      return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin()) + 1;
    };
    form->vsfFolderContacts.SetRow(row(u"Bert"));
    form->cmdProperty.UserClicks();
    EXPECT_EQ(Column(form->vsfFolderContacts, u"NAME"), names);
    Take({row(u"Anglers")});
    form->cmdOK.UserClicks();
    EXPECT_EQ(Texts(*Left().SelectedRecipients), (std::vector<String>{u"SG|2|Anglers|"}));
  }
}

TEST_F(PicksOnDatabase, GroupIsExpandedIntoBothKindsOfMembersInBothFamilies) {
  for (const StringView word : {u"SQL", u"ORACLE"}) {
    session.DbType = word;
    session.ExpandGroups = true;
    OpenPicker();
    ASSERT_TRUE(Complete());
    Take({4, 5});
    form->chkIncudeCountryCode.UserClicks();
    form->cmdOK.UserClicks();
    ASSERT_FALSE(form->IsLoaded()) << ToUtf8(system.TextOf(u"log"));
    EXPECT_EQ(Texts(*Left().SelectedRecipients),
              (std::vector<String>{u"SC|1|Anna|98001", u"SC|2|Bert|98002", u"SC|R1|Rita|97001"}));
    EXPECT_EQ(Texts(*Left().SelectedMobileNos),
              (std::vector<String>{u"9198001", u"98002", u"97001"}));
    EXPECT_EQ(Left().ContactsName, u"Anna;Bert;Rita;");
  }
}

}  // namespace
}  // namespace ktrv::forms
