#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// What the lists show once something of theirs was opened and changed.
struct PropertiesAfterwards : tests::GroupsOnDatabase {
  void Open() {
    OpenPicker();
    ASSERT_TRUE(Complete());
  }
  /// The row of the source, by its name.
  int Row(StringView name) {
    return form->vsfFolderContacts.FindRow(name, 1, form->vsfFolderContacts.ColIndex(u"NAME"));
  }
  void Properties(StringView name) {
    form->vsfFolderContacts.SetRow(Row(name));
    form->cmdProperty.UserClicks();
  }
  /// What the user does in the group's own dialog.
  void InGroup(std::function<void(frmGroupsNew&)> play) {
    screen.PlayModal([this, play = std::move(play)](controls::Form& shown) {
      auto& properties = static_cast<frmGroupsNew&>(shown);
      ASSERT_TRUE(screen.WaitUntil([&] { return properties.Members().IsComplete(); }));
      play(properties);
      properties.cmdOK.UserClicks();
      EXPECT_FALSE(properties.IsLoaded());
    });
  }
  String NameOf(StringView group) {
    return Query(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = " + String(group));
  }
  void Correct(StringView number) {
    AnswerContacts([this, number = String(number)](const ContactRequest& request) {
      Run(u"UPDATE SMS_ABCONTACTS SET MOBILENO = '" + number + u"' WHERE ID = " +
          request.EditContactId);
      return request.EditContactId;
    });
  }
};

TEST_F(PropertiesAfterwards, SecondOnesOfAGroupDoNotUndoItsRename) {
  Open();
  Take({Row(u"Team")});
  InGroup([](frmGroupsNew& properties) { properties.txtGroupName.SetText(u"Crew"); });
  Properties(u"Team");
  ASSERT_GT(Row(u"Crew"), 0);
  EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), (std::vector<String>{u"Crew"}));
  InGroup([](frmGroupsNew& properties) { EXPECT_EQ(properties.txtGroupName.Text(), u"Crew"); });
  Properties(u"Crew");
  EXPECT_EQ(NameOf(u"11"), u"Crew");
  form->cmdOK.UserClicks();
  EXPECT_EQ(Texts(*Left().SelectedRecipients), (std::vector<String>{u"SG|11|Crew|"}));
}

TEST_F(PropertiesAfterwards, OldRowOfAGroupDoesNotUndoAnothersRename) {
  Open();
  Run(u"UPDATE SMS_ABGROUPS SET NAME = 'Crew' WHERE ID = 11");
  InGroup([](frmGroupsNew& properties) { EXPECT_EQ(properties.txtGroupName.Text(), u"Crew"); });
  Properties(u"Team");
  EXPECT_EQ(NameOf(u"11"), u"Crew");
  EXPECT_GT(Row(u"Crew"), 0);
}

TEST_F(PropertiesAfterwards, FormerNumberIsNotSentToOncePicked) {
  Open();
  Take({Row(u"Anna"), Row(u"Team")});
  Correct(u"98111");
  Properties(u"Anna");
  form->cmdOK.UserClicks();
  EXPECT_EQ(Texts(*Left().SelectedRecipients),
            (std::vector<String>{u"SC|1|Anna|98111", u"SG|11|Team|"}));
}

TEST_F(PropertiesAfterwards, PickedGroupOfTheContactsNumberIsLeftAlone) {
  Run(u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (2, 'Two', 0)");
  Open();
  Take({Row(u"Two")});
  Correct(u"98222");
  Properties(u"Bert");
  EXPECT_EQ(Column(form->vsfGroupContacts, u"NAME"), (std::vector<String>{u"Two"}));
  EXPECT_EQ(Column(form->vsfGroupContacts, u"MOBILENO"), (std::vector<String>{u""}));
}

TEST_F(PropertiesAfterwards, MemberOfAGroupShowsItsNewNumber) {
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  Correct(u"98111");
  Properties(u"Anna");
  EXPECT_EQ(Column(form->vsfGroupContacts, u"MOBILE_DISPLAY"),
            (std::vector<String>{u"91 98111", u"98002"}));
}

// Lists that are not whole.

TEST_F(PropertiesAfterwards, OkAfterAFailedLoadIsNotRefusedForEver) {
  FailOnce(u"SELECT COUNT(1) AS TOTALRECORDS FROM SMS_ABGROUPMAPS");
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_TRUE(form->IsLoaded());
  ASSERT_TRUE(Complete());
  form->cmdOK.UserClicks();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(MembershipsOf(u"11"), u"1:S,2:S");
}

TEST_F(PropertiesAfterwards, RemoteMemberIsNotListedTwiceNorWithoutAFolder) {
  session.DbType = u"ORACLE";
  Run(u"INSERT INTO ZUL$CONTACTS (CODE, NAME, MOBILENO, CATEGORY) VALUES ('R9', 'Nina', '9', 'N')");
  Run(u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, 'R9', 'R')");
  Run(u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, REMOTE_CONTACTS_CATEGORY) VALUES "
      u"(3, 'R', 'Dealers too', 'D')");
  OpenToModify(u"11", u"Team");
  ASSERT_TRUE(Complete());
  // Two folders map the category of R1, none that of R9.
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (std::vector<String>{u"1", u"2", u"R1"}));
  EXPECT_EQ(MemberCount(), u"4 Member(s)");
}

}  // namespace
}  // namespace ktrv::forms
