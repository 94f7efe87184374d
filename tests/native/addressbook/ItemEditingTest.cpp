#include "forms/addressbook/frmAddressBook.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/addressbook/ToldPeers.h"
#include "tests/native/support/DialogFixture.h"
#include "tests/native/support/OnDemand.h"

namespace ktrv::tests {
namespace {

using Lines = std::vector<String>;

constexpr StringView kNewContext =
    u"KTRVKTRVAddressBook: Error occurred. Sub: ContactNew(), Module: frmAddressBook";
constexpr StringView kPropertiesContext =
    u"KTRVKTRVAddressBook: Error occurred. Sub: ContactProperties, Module: frmAddressBook";

/// The window with its editors on a real database.
struct ItemEditingTest : DialogFixture {
  ItemEditingTest() {
    database.Run({
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, REMOTE_CONTACTS_CATEGORY)"
        u" VALUES (1, 'S', 'Staff', 0, ''), (2, 'R', 'Dealers', 0, 'D')",
        u"INSERT INTO \"ZUL$CONTACTS_CATEGORY\" (CATEGORY) VALUES ('D'), ('E')",
        u"INSERT INTO \"ZUL$CONTACTS\" (CODE, NAME, MOBILENO, EMAIL, CATEGORY) VALUES"
        u" ('D1', 'Acme', '111', NULL, 'D')",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO)"
        u" VALUES (1, 0, 'Zoe', '', 'Ek', '46', '70'), (2, 1, 'Bert', '', 'Al', '', '71')",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 0), (6, 'Crew', 1)",
        u"INSERT INTO SMS_ABGROUPMAPS VALUES (5, '1', 'S'), (5, 'D1', 'R')",
    });
  }
  ~ItemEditingTest() override { form.Reset(); }

  /// The window with this node chosen and listed, the focus in the tree or else in the grid.
  void Choose(StringView key, bool inTree = true) {
    form->Show();
    form->tvwContacts.UserClicks(*form->tvwContacts.Find(key));
    Complete();
    form->tvwContacts.UserFocuses(inTree);
    form->vsfContacts.UserFocuses(!inTree);
  }
  void Complete() {
    ASSERT_TRUE(screen.WaitUntil([this] { return form->StatusBar1.PanelCount() == 2; }));
  }
  /// Makes the row of this name the current one.
  void ChooseRow(StringView name) {
    const controls::FlexGrid& grid = form->vsfContacts;
    const int row = grid.FindRow(name, 1, grid.ColIndex(u"NAME"));
    ASSERT_GT(row, 0);
    form->vsfContacts.SetRow(row);
  }
  Lines Listed(StringView column = u"NAME") const {
    Lines names;
    const controls::FlexGrid& grid = form->vsfContacts;
    for (int row = 1; row < grid.Rows(); ++row) {
      names.push_back(grid.Text(row, grid.ColIndex(column)));
    }
    return names;
  }
  controls::TreeNode* Node(StringView key) const { return form->tvwContacts.Find(key); }
  String Text(StringView key) const { return Node(key) ? Node(key)->Text : u"no node"; }

  /// What the user does in the next editor.
  template <class Editor>
  void InEditor(std::function<void(Editor&)> play) {
    screen.PlayModal([play = std::move(play)](controls::Form& dialog) {
      auto* editor = dynamic_cast<Editor*>(&dialog);
      ASSERT_NE(editor, nullptr);
      play(*editor);
      dialog.Unload();
    });
  }
  void SaveContact(StringView firstName) {
    InEditor<forms::frmNewContact>([name = String(firstName)](forms::frmNewContact& editor) {
      editor.txtFname.UserTypes(name);
      editor.cmdSave.UserClicks();
    });
  }
  void SaveGroup(StringView name) {
    InEditor<forms::frmGroupsNew>([this, text = String(name)](forms::frmGroupsNew& editor) {
      screen.WaitUntil([&] { return !editor.Members().IsLoading(); });
      editor.txtGroupName.SetText(text);
      editor.cmdOK.UserClicks();
    });
  }
  void CloseEditor(String* caption = nullptr) {
    screen.PlayModal([caption](controls::Form& dialog) {
      if (caption) *caption = dialog.Caption();
      dialog.UserCloses();
    });
  }

  forms::Editors editors{session};
  OnDemand<forms::frmAddressBook> form{
      [this] { return std::make_unique<forms::frmAddressBook>(session.Place(), editors); }};
};

// New contacts.

TEST_F(ItemEditingTest, ANewContactsRowDoesNotStayOutOfSight) {
  Choose(u"SHARED");
  Steps steps;
  ToldPeers peers(steps);
  form->vsfContacts.Realise(peers);
  SaveContact(u"Carl");
  form->ContactNew({});
  ASSERT_FALSE(steps.empty());
  EXPECT_EQ(steps.back(), "grid row " + std::to_string(form->vsfContacts.Rows() - 1) + " in sight");
  form->vsfContacts.Unrealise();
}

TEST_F(ItemEditingTest, InTheRootANewContactIsOutsideFoldersAndListedWithoutAnotherQuery) {
  Choose(u"SHARED");
  SaveContact(u"Carl");
  form->tlbMain.UserClicks(u"NEW");
  EXPECT_EQ(database.Rows(u"SELECT FNAME, FOLDER_ID FROM SMS_ABCONTACTS WHERE ID = 3"),
            (Lines{u"Carl|0"}));
  // Behind the others, though not in its place.
  EXPECT_EQ(Listed(), (Lines{u"Boat", u"Zoe  Ek", u"Carl  "}));
  EXPECT_EQ(Listed(u"ID").back(), u"3");
  EXPECT_EQ(Listed(u"MOBILENO").back(), u"91");
  EXPECT_EQ(Listed(u"CONTACTTYPE").back(), u"1");
  EXPECT_EQ(Listed(u"FOLDERID").back(), u"0");
  EXPECT_EQ(form->vsfContacts.Row(), 3);
  EXPECT_EQ(form->StatusBar1.PanelAt(1).Text, u"3 item(s)");
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, ANewContactIsListedWithAllThatWasWritten) {
  Choose(u"SHARED");
  InEditor<forms::frmNewContact>([](forms::frmNewContact& editor) {
    editor.txtFname.UserTypes(u"Carl");
    editor.txtEmail.UserTypes(u"carl@example.com");
    editor.txtAddress.UserTypes(u"Street 7");
    editor.txtOrganisation.UserTypes(u"Acme");
    editor.cmdSave.UserClicks();
  });
  form->ContactNew({});
  EXPECT_EQ(Listed(u"EMAIL").back(), u"carl@example.com");
  EXPECT_EQ(Listed(u"ADDRESS").back(), u"Street 7");
  EXPECT_EQ(Listed(u"ORGANISATION").back(), u"Acme");
}

TEST_F(ItemEditingTest, InAFolderANewContactIsOfTheFolder) {
  Choose(u"SFLD1");
  SaveContact(u"Carl");
  form->ContactNew({});
  EXPECT_EQ(database.Rows(u"SELECT FOLDER_ID FROM SMS_ABCONTACTS WHERE ID = 3"), (Lines{u"1"}));
  EXPECT_EQ(Listed(u"FOLDERID").back(), u"1");
}

TEST_F(ItemEditingTest, InAGroupANewContactIsOfTheGroupsFolderAndAMember) {
  Choose(u"SHGR6");
  SaveContact(u"Carl");
  form->ContactNew({});
  EXPECT_EQ(database.Rows(u"SELECT FOLDER_ID FROM SMS_ABCONTACTS WHERE ID = 3"), (Lines{u"1"}));
  EXPECT_EQ(database.Rows(u"SELECT * FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 6"), (Lines{u"6|3|S"}));
  EXPECT_EQ(Listed(), (Lines{u"Carl  "}));
}

TEST_F(ItemEditingTest, InAGroupOfTheRootANewContactIsOutsideFolders) {
  Choose(u"SHGR5");
  SaveContact(u"Carl");
  form->Menus.Item(u"mnuAddSharedContactGroupContext").Click();
  EXPECT_EQ(database.Rows(u"SELECT FOLDER_ID FROM SMS_ABCONTACTS WHERE ID = 3"), (Lines{u"0"}));
  EXPECT_EQ(database.Rows(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 5"),
            (Lines{u"3"}));
}

TEST_F(ItemEditingTest, NoContactIsAddedToAGroupWhereNoneIsCurrent) {
  for (const StringView key : {u"SHARED", u"SFLD1", u"RFLD2"}) {
    Choose(key);
    form->Menus.Item(u"mnuAddSharedContactGroupContext").Click();
  }
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(ItemEditingTest, BeforeANodeIsChosenANewContactIsOutsideFoldersAndNothingIsListed) {
  form->Show();
  SaveContact(u"Carl");
  form->ContactNew({});
  EXPECT_EQ(database.Rows(u"SELECT FOLDER_ID FROM SMS_ABCONTACTS WHERE ID = 3"), (Lines{u"0"}));
  EXPECT_EQ(form->vsfContacts.Rows(), 2);
}

TEST_F(ItemEditingTest, AContactThatWasNotSavedChangesNothing) {
  Choose(u"SHGR6");
  CloseEditor();
  form->ContactNew({});
  EXPECT_EQ(database.Rows(u"SELECT * FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 6"), Lines{});
  EXPECT_EQ(Listed(), Lines{});
}

TEST_F(ItemEditingTest, TheEditorOfANewContactIsEmptyAndShared) {
  session.PresetContactName = u"Of the host";
  session.PresetMobileNo = u"12345";
  session.EditContactId = u"1";
  session.SharedMode = TypeOfContact::LocalContact;
  Choose(u"SHARED");
  InEditor<forms::frmNewContact>([](forms::frmNewContact& editor) {
    EXPECT_EQ(editor.Caption(), u"Add Shared Contact");
    EXPECT_EQ(editor.txtFname.Text(), u"");
    EXPECT_EQ(editor.txtMobileno.Text(), u"91");
    EXPECT_TRUE(editor.chkContacts.Checked());
  });
  form->ContactNew({});
}

TEST_F(ItemEditingTest, ANewContactInARemoteFolderIsRefused) {
  Choose(u"RFLD2");
  form->Menus.Item(u"mnuSharedContactContext").Click();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"Cannot create Shared Remote Contact here. Such contacts can be created from TALVERO "
            u"only.");
  EXPECT_EQ(screen.LastMessage().Title, u"TALVERO Notification Server");
}

TEST_F(ItemEditingTest, TabsInANewContactDoNotShiftItsColumns) {
  Choose(u"SHARED");
  InEditor<forms::frmNewContact>([](forms::frmNewContact& editor) {
    editor.txtFname.SetText(u"Ca\trl");
    editor.cmdSave.UserClicks();
  });
  form->ContactNew({});
  EXPECT_EQ(Listed().back(), u"Ca rl  ");
  EXPECT_EQ(Listed(u"CONTACTTYPE").back(), u"1");
}

TEST_F(ItemEditingTest, ANewContactThatCouldNotBeLinkedIsNotStoredAlone) {
  Choose(u"SHGR6");
  InEditor<forms::frmNewContact>([this](forms::frmNewContact& editor) {
    editor.txtFname.UserTypes(u"Carl");
    database.Run({u"ALTER TABLE SMS_ABGROUPMAPS RENAME TO AWAY"});
    editor.cmdSave.UserClicks();
    EXPECT_TRUE(editor.IsLoaded());
    EXPECT_EQ(editor.txtFname.Text(), u"Carl");
    EXPECT_EQ(database.Rows(u"SELECT FNAME FROM SMS_ABCONTACTS WHERE ID = 3"), Lines{});
    database.Run({u"ALTER TABLE AWAY RENAME TO SMS_ABGROUPMAPS"});
    editor.cmdSave.UserClicks();
    EXPECT_FALSE(editor.IsLoaded());
  });
  form->ContactNew({});
  EXPECT_EQ(ErrorsLogged(kNewContext), 1);
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Listed(), (Lines{u"Carl  "}));
  EXPECT_EQ(database.Rows(u"SELECT ID FROM SMS_ABCONTACTS WHERE FNAME = 'Carl'"), (Lines{u"3"}));
  EXPECT_EQ(database.Rows(u"SELECT * FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 6"), (Lines{u"6|3|S"}));
}

TEST_F(ItemEditingTest, AContactOfAGroupThatIsGoneIsNotStored) {
  Choose(u"SHGR6");
  InEditor<forms::frmNewContact>([this](forms::frmNewContact& editor) {
    editor.txtFname.UserTypes(u"Carl");
    database.Run({u"DELETE FROM SMS_ABGROUPS WHERE ID = 6"});
    editor.cmdSave.UserClicks();
    EXPECT_TRUE(editor.IsLoaded());
    EXPECT_EQ(editor.txtFname.Text(), u"Carl");
  });
  form->ContactNew({});
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"The selected folder or group does not exist any more. Please select another one.");
  EXPECT_EQ(database.Rows(u"SELECT * FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 6"), Lines{});
  EXPECT_EQ(database.Rows(u"SELECT FNAME FROM SMS_ABCONTACTS WHERE ID = 3"), Lines{});
  EXPECT_EQ(Listed(), Lines{});
}

TEST_F(ItemEditingTest, AFolderThatIsGoneGetsNoContact) {
  Choose(u"SFLD1");
  InEditor<forms::frmNewContact>([this](forms::frmNewContact& editor) {
    editor.txtFname.UserTypes(u"Carl");
    database.Run({u"DELETE FROM SMS_ABFOLDERS WHERE ID = 1"});
    editor.cmdSave.UserClicks();
    EXPECT_EQ(editor.txtFname.Text(), u"Carl");
  });
  form->ContactNew({});
  EXPECT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(database.Rows(u"SELECT FNAME FROM SMS_ABCONTACTS WHERE ID = 3"), Lines{});
}

TEST_F(ItemEditingTest, AFolderBeyondTheEditorsIdsIsLogged) {
  database.Run(
      {u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID) VALUES"
       u" (40000, 'S', 'Far', 0)"});
  Choose(u"SFLD40000");
  form->ContactNew({});
  EXPECT_EQ(ErrorsLogged(kNewContext), 1);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::Overflow));
}

TEST_F(ItemEditingTest, ANodeThatIsGoneTakesNoNewItems) {
  Choose(u"SHGR6");
  database.Run({u"DELETE FROM SMS_ABGROUPS"});
  form->LoadTreeView();
  form->ContactNew({});
  form->ContactNew(u"GR");
  ASSERT_EQ(screen.Messages.size(), 2U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"The selected folder or group does not exist any more. Please select another one.");
}

TEST_F(ItemEditingTest, AWindowUnloadedWhileTheEditorIsOpenIsLeftAlone) {
  Choose(u"SHGR6");
  InEditor<forms::frmNewContact>([this](forms::frmNewContact& editor) {
    form->Unload();
    screen.Pump();
    editor.txtFname.UserTypes(u"Carl");
    editor.cmdSave.UserClicks();
  });
  form->ContactNew({});
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, TheEndOfTheComponentFindsTheOpenEditor) {
  Choose(u"SHARED");
  InEditor<forms::frmNewContact>([this](forms::frmNewContact& editor) {
    EXPECT_EQ(session.Services.Modal.Open(), (std::vector<controls::Form*>{&editor}));
  });
  form->ContactNew({});
  EXPECT_TRUE(session.Services.Modal.Open().empty());
}

// New groups and folders.

TEST_F(ItemEditingTest, ANewGroupIsOfTheCurrentFolderAndItsNodeIsShown) {
  Choose(u"SFLD1");
  SaveGroup(u"Night");
  form->ContactNew(u"GR");
  EXPECT_EQ(database.Rows(u"SELECT NAME, FOLDER_ID FROM SMS_ABGROUPS WHERE ID = 7"),
            (Lines{u"Night|1"}));
  ASSERT_NE(Node(u"SHGR7"), nullptr);
  EXPECT_EQ(Node(u"SHGR7")->Parent, Node(u"SFLD1"));
  EXPECT_EQ(Node(u"SHGR7")->Text, u"Night");
  EXPECT_EQ(Node(u"SHGR7")->ImageIndex, 3);
  EXPECT_TRUE(Node(u"SFLD1")->Expanded);
  Complete();
  EXPECT_EQ(Listed(), (Lines{u"Bert  Al", u"Crew", u"Night"}));
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, ANewGroupOfTheRootIsOutsideFolders) {
  Choose(u"SHARED");
  SaveGroup(u"Night");
  form->Menus.Item(u"mnuSharedGroupContext").Click();
  EXPECT_EQ(database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS WHERE ID = 7"), (Lines{u"0"}));
  ASSERT_NE(Node(u"SHGR7"), nullptr);
  EXPECT_EQ(Node(u"SHGR7")->Parent, Node(u"SHARED"));
}

TEST_F(ItemEditingTest, AGroupMadeAtAGroupIsOfThatOnesFolder) {
  Choose(u"SHGR6");
  SaveGroup(u"Night");
  form->ContactNew(u"GR");
  EXPECT_EQ(database.Rows(u"SELECT FOLDER_ID FROM SMS_ABGROUPS WHERE ID = 7"), (Lines{u"1"}));
  EXPECT_EQ(form->Current().Key, u"SHGR6");
}

TEST_F(ItemEditingTest, AGroupThatWasNotSavedIsNotShown) {
  Choose(u"SFLD1");
  CloseEditor();
  form->ContactNew(u"GR");
  EXPECT_EQ(form->tvwContacts.Count(), 5);
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, AGroupThatCouldNotBeFinishedIsNotHidden) {
  Choose(u"SFLD1");
  InEditor<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    editor.txtGroupName.UserTypes(u"Night");
    database.Run({u"ALTER TABLE SMS_ABGROUPMAPS RENAME TO AWAY"});
    editor.cmdOK.UserClicks();
    EXPECT_TRUE(editor.IsLoaded());
    screen.Answer(MessageAnswer::Yes);
    editor.cmdCancel.UserClicks();
    EXPECT_FALSE(editor.IsLoaded());
    database.Run({u"ALTER TABLE AWAY RENAME TO SMS_ABGROUPMAPS"});
  });
  form->ContactNew(u"GR");
  EXPECT_EQ(Text(u"SHGR7"), u"Night");
  Complete();
  Choose(u"SHGR7");
  InEditor<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    EXPECT_EQ(editor.txtGroupName.Text(), u"Night");
    EXPECT_TRUE(screen.WaitUntil([&] { return editor.Members().IsComplete(); }));
    editor.cmdOK.UserClicks();
    EXPECT_FALSE(editor.IsLoaded());
  });
  form->ContactProperties();
}

TEST_F(ItemEditingTest, ANewGroupInARemoteFolderIsRefused) {
  Choose(u"RFLD2");
  form->Menus.Item(u"mnuSharedGroupContext").Click();
  EXPECT_EQ(screen.LastMessage().Text,
            u"Creating a Group in a Shared Remote Contacts folder is not allowed.");
}

TEST_F(ItemEditingTest, ANewFolderStandsInTheTree) {
  Choose(u"SHARED");
  InEditor<forms::frmSelectFolder>([](forms::frmSelectFolder& editor) {
    EXPECT_EQ(editor.Caption(), u"Add Folder");
    EXPECT_FALSE(editor.chkRemoteFolder.Checked());
    editor.txtFolderName.UserTypes(u"Friends");
    editor.cmdOK.UserClicks();
  });
  form->Menus.Item(u"mnuSharedFolderContext").Click();
  EXPECT_EQ(Text(u"SFLD3"), u"Friends");
}

TEST_F(ItemEditingTest, AFolderThatIsMappedStandsInTheTreeAsARemoteOne) {
  Choose(u"SHARED");
  InEditor<forms::frmSelectFolder>([](forms::frmSelectFolder& editor) {
    editor.txtFolderName.UserTypes(u"Others");
    editor.chkRemoteFolder.UserClicks();
    editor.cboRemoteFolderView.SetListIndex(1);
    editor.cmdOK.UserClicks();
  });
  form->Menus.Item(u"mnuSharedFolderContext").Click();
  EXPECT_EQ(Text(u"RFLD3"), u"Others");
}

TEST_F(ItemEditingTest, AFolderThatWasNotSavedLeavesTheTree) {
  Choose(u"SHARED");
  database.Run({u"DELETE FROM SMS_ABGROUPS"});
  CloseEditor();
  form->Menus.Item(u"mnuSharedFolderContext").Click();
  EXPECT_EQ(form->tvwContacts.Count(), 5);  // not built anew
}

TEST_F(ItemEditingTest, AContactMadeInACancelledGroupIsNotMissing) {
  Choose(u"SHARED");
  InEditor<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    editor.OpenContact = [this](Workplace, const forms::ContactRequest& request) {
      database.Run(
          {u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) VALUES"
           u" (3, 0, 'Carl', '72')"});
      return forms::ContactResult{request.SharedMode, u"3", {}, {}};
    };
    editor.cmdNew.UserClicks();
    editor.cmdCancel.UserClicks();
  });
  form->ContactNew(u"GR");
  Complete();
  EXPECT_EQ(Listed().size(), 3U);
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, AContactEditedInACancelledGroupIsNotListedAsItWas) {
  Choose(u"SHARED");
  InEditor<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    ASSERT_TRUE(screen.WaitUntil([&] { return !editor.Sources().IsLoading(); }));
    editor.OpenContact = [this](Workplace, const forms::ContactRequest& request) {
      database.Run({u"UPDATE SMS_ABCONTACTS SET FNAME = 'Zora' WHERE ID = 1"});
      return forms::ContactResult{request.SharedMode, request.EditContactId, {}, {}};
    };
    editor.vsfFolderContacts.SetRow(1);
    editor.cmdProperty.UserClicks();
    editor.cmdCancel.UserClicks();
  });
  form->ContactNew(u"GR");
  Complete();
  EXPECT_EQ(Listed().back(), u"Zora  Ek");
}

TEST_F(ItemEditingTest, ACancelledGroupAloneMovesNoSelection) {
  Choose(u"SHARED");
  ChooseRow(u"Zoe");
  const int row = form->vsfContacts.Row();
  CloseEditor();
  form->ContactNew(u"GR");
  EXPECT_EQ(form->vsfContacts.Row(), row);
}

// Properties in the tree.

TEST_F(ItemEditingTest, AGroupsNewNameStandsOnItsNodeAndTheListIsLoaded) {
  Choose(u"SHGR5");
  session.GroupType = TypeOfGroup::LocalGroup;
  session.SharedMode = TypeOfContact::LocalContact;
  InEditor<forms::frmGroupsNew>([this](forms::frmGroupsNew& editor) {
    EXPECT_EQ(editor.Caption(), u"Modify Group");
    EXPECT_EQ(editor.txtGroupName.Text(), u"Boat");
    EXPECT_EQ(session.GroupId, u"5");
    EXPECT_EQ(session.GroupType, TypeOfGroup::SharedGroup);
    EXPECT_EQ(session.SharedMode, TypeOfContact::SharedContact);
    ASSERT_TRUE(screen.WaitUntil([&] { return !editor.Members().IsLoading(); }));
    editor.txtGroupName.SetText(u"Ship");
    editor.cmdOK.UserClicks();
  });
  const controls::TreeNode* before = Node(u"SHGR5");
  form->ContactProperties();
  EXPECT_EQ(Text(u"SHGR5"), u"Ship");
  EXPECT_EQ(Node(u"SHGR5"), before);  // the tree was not built anew
  Complete();
  EXPECT_EQ(form->Current().Key, u"SHGR5");
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, AGroupThatAnotherUserRenamedShowsThatNameAfterACancel) {
  Choose(u"SHGR5");
  database.Run({u"UPDATE SMS_ABGROUPS SET NAME = 'Theirs' WHERE ID = 5"});
  CloseEditor();
  form->ContactProperties();
  EXPECT_EQ(Text(u"SHGR5"), u"Theirs");
}

TEST_F(ItemEditingTest, AGroupThatAnotherUserDeletedKeepsItsNodesText) {
  Choose(u"SHGR5");
  database.Run({u"DELETE FROM SMS_ABGROUPS WHERE ID = 5"});
  CloseEditor();
  form->ContactProperties();
  EXPECT_EQ(Text(u"SHGR5"), u"Boat");
  Complete();
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, AFolderIsRenamedAndTheTreeBuiltAnew) {
  Choose(u"SFLD1");
  InEditor<forms::frmSelectFolder>([](forms::frmSelectFolder& editor) {
    EXPECT_EQ(editor.Caption(), u"Edit Folder");
    EXPECT_EQ(editor.txtFolderName.Text(), u"Staff");
    editor.txtFolderName.SetText(u"People");
    editor.cmdOK.UserClicks();
  });
  form->ContactProperties();
  EXPECT_EQ(Text(u"SFLD1"), u"People");
  EXPECT_EQ(form->Current().Key, u"SFLD1");
}

TEST_F(ItemEditingTest, ARemoteFolderOpensAsOne) {
  Choose(u"RFLD2");
  InEditor<forms::frmSelectFolder>([](forms::frmSelectFolder& editor) {
    EXPECT_TRUE(editor.chkRemoteFolder.Checked());
    EXPECT_EQ(editor.cboRemoteFolderView.Text(), u"D");
  });
  form->Menus.Item(u"mnuProperties").Click();
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, AFolderOfAnotherCategoryDoesNotListTheFormer) {
  database.Run(
      {u"INSERT INTO \"ZUL$CONTACTS\" (CODE, NAME, MOBILENO, EMAIL, CATEGORY) VALUES"
       u" ('E1', 'Eastern', '222', NULL, 'E')"});
  Choose(u"RFLD2");
  ASSERT_EQ(Listed(), (Lines{u"Acme"}));
  InEditor<forms::frmSelectFolder>([](forms::frmSelectFolder& editor) {
    editor.cboRemoteFolderView.SetText(u"E");
    editor.cmdOK.UserClicks();
  });
  form->ContactProperties();
  Complete();
  EXPECT_EQ(Listed(), (Lines{u"Eastern"}));
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, TheTreeIsBuiltAnewAfterACancelToo) {
  Choose(u"SFLD1");
  database.Run({u"UPDATE SMS_ABFOLDERS SET NAME = 'Theirs' WHERE ID = 1"});
  CloseEditor();
  form->ContactProperties();
  EXPECT_EQ(Text(u"SFLD1"), u"Theirs");
}

TEST_F(ItemEditingTest, AtTheServerTheRootIsListedWhenItBecomesCurrent) {
  session.RunAt = RunApplicationAt::RuntAtServer;
  Choose(u"SFLD1");
  CloseEditor();
  form->ContactProperties();
  Complete();
  EXPECT_EQ(form->Current().Key, u"SHARED");
  EXPECT_EQ(Listed(), (Lines{u"Boat", u"Zoe  Ek"}));
}

TEST_F(ItemEditingTest, TheRootHasNoProperties) {
  Choose(u"SHARED");
  form->ContactProperties();
  EXPECT_TRUE(screen.Messages.empty());
}

// Properties in the grid.

TEST_F(ItemEditingTest, AContactIsEditedAndTheListLoaded) {
  Choose(u"SFLD1", false);
  ChooseRow(u"Bert");
  InEditor<forms::frmNewContact>([](forms::frmNewContact& editor) {
    EXPECT_EQ(editor.Caption(), u"Edit Shared Contact");
    EXPECT_EQ(editor.txtFname.Text(), u"Bert");
    EXPECT_EQ(editor.FolderId, 1);
    editor.txtFname.SetText(u"Bertil");
    editor.cmdSave.UserClicks();
  });
  form->vsfContacts.UserPresses(controls::KeyCode::Enter, 0);
  Complete();
  EXPECT_EQ(Listed(), (Lines{u"Bertil  Al", u"Crew"}));
}

TEST_F(ItemEditingTest, TheSelectedRowIsOpenedThoughAnotherIsCurrent) {
  Choose(u"SFLD1", false);
  form->vsfContacts.UserSelects({2}, 1);
  String caption;
  CloseEditor(&caption);
  form->ContactProperties();
  EXPECT_EQ(caption, u"Modify Group");
}

TEST_F(ItemEditingTest, OfSeveralSelectedRowsTheCurrentOneIsOpened) {
  Choose(u"SFLD1", false);
  form->vsfContacts.UserSelects({1, 2}, 2);
  String caption;
  CloseEditor(&caption);
  form->ContactProperties();
  EXPECT_EQ(caption, u"Modify Group");
}

TEST_F(ItemEditingTest, ACurrentRowThatIsNotSelectedIsNotOpened) {
  Choose(u"SFLD1", false);
  form->vsfContacts.UserSelects({}, 1);
  form->ContactProperties();
  Choose(u"SHARED", false);
  form->vsfContacts.AddItem(u"\t8\tMore");
  form->vsfContacts.UserSelects({1, 2}, 3);
  form->ContactProperties();
  EXPECT_EQ(std::count(screen.Log.begin(), screen.Log.end(), "modal"), 0);
  EXPECT_EQ(Log(), u"");
}

TEST_F(ItemEditingTest, AContactThatWasJustMadeCanBeOpened) {
  Choose(u"SFLD1", false);
  SaveContact(u"Carl");
  form->ContactNew({});
  InEditor<forms::frmNewContact>(
      [](forms::frmNewContact& editor) { EXPECT_EQ(editor.txtFname.Text(), u"Carl"); });
  form->vsfContacts.UserDoubleClicks();
  Complete();
}

TEST_F(ItemEditingTest, AContactThatAnotherUserDeletedIsGoneFromTheListAfterwards) {
  Choose(u"SFLD1", false);
  ChooseRow(u"Bert");
  database.Run({u"DELETE FROM SMS_ABCONTACTS WHERE ID = 2"});
  CloseEditor();
  form->ContactProperties();
  Complete();
  EXPECT_EQ(Listed(), (Lines{u"Crew"}));
}

TEST_F(ItemEditingTest, AListedGroupIsRenamedInTheTreeToo) {
  Choose(u"SFLD1", false);
  ChooseRow(u"Crew");
  SaveGroup(u"Team");
  form->ContactProperties();
  Complete();
  EXPECT_EQ(Text(u"SHGR6"), u"Team");
  EXPECT_EQ(Listed(), (Lines{u"Bert  Al", u"Team"}));
}

TEST_F(ItemEditingTest, ARemoteContactIsOnlyTalkedOf) {
  Choose(u"RFLD2", false);
  ChooseRow(u"Acme");
  form->ContactProperties();
  ASSERT_EQ(screen.Messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage().Text,
            u"This is a Shared Remote Contact. The detail of this contact can be edited from "
            u"TALVERO only.");
}

TEST_F(ItemEditingTest, WithoutARowNothingOpens) {
  Choose(u"SFLD1", false);
  form->ContactProperties();
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(ItemEditingTest, AnIdThatIsNoNumberOpensNothing) {
  Choose(u"SFLD1", false);
  ChooseRow(u"Crew");
  form->vsfContacts.SetText(form->vsfContacts.Row(), form->vsfContacts.ColIndex(u"ID"), u"6 OR 1");
  CloseEditor();
  form->ContactProperties();
  EXPECT_EQ(database.Rows(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = 6"), (Lines{u"Crew"}));
}

TEST_F(ItemEditingTest, AGroupWhoseNameCannotBeReadIsLogged) {
  Choose(u"SHGR5");
  screen.PlayModal([this](controls::Form& editor) {
    editor.UserCloses();
    database.Run({u"ALTER TABLE SMS_ABGROUPS RENAME TO GONE"});
  });
  form->ContactProperties();
  EXPECT_EQ(ErrorsLogged(kPropertiesContext), 1);
}

TEST_F(ItemEditingTest, TheEnterKeyHeldDownOpensOneEditor) {
  Choose(u"SFLD1", false);
  ChooseRow(u"Bert");
  screen.PlayModal([this](controls::Form& editor) {
    form->vsfContacts.UserPresses(controls::KeyCode::Enter, 0);
    form->vsfContacts.UserDoubleClicks();
    form->tlbMain.UserClicks(u"NEW");
    editor.UserCloses();
  });
  form->vsfContacts.UserPresses(controls::KeyCode::Enter, 0);
  EXPECT_EQ(std::count(screen.Log.begin(), screen.Log.end(), "modal"), 1);
}

TEST_F(ItemEditingTest, ANewContactMadeDuringALoadIsListedOnce) {
  database.Run(
      {u"WITH RECURSIVE N(I) AS (SELECT 100 UNION ALL SELECT I + 1 FROM N WHERE I < 3000)"
       u" INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, MOBILENO)"
       u" SELECT I, 1, 'Anna', '', '', '' FROM N"});
  form->Show();
  form->tvwContacts.UserClicks(*Node(u"SFLD1"));
  SaveContact(u"Carl");
  form->ContactNew({});
  Complete();
  const Lines names = Listed();
  EXPECT_EQ(std::count(names.begin(), names.end(), u"Carl  "), 1);
}

}  // namespace
}  // namespace ktrv::tests
