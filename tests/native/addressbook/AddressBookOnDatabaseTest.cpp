#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

#include "data/GroupQueries.h"
#include "forms/addressbook/ItemStatements.h"
#include "forms/addressbook/frmAddressBook.h"
#include "tests/native/support/DialogFixture.h"
#include "tests/native/support/OtherUser.h"

namespace ktrv::tests {
namespace {

using Lines = std::vector<String>;

/// The window on a real database, once for each family of query texts.
struct AddressBookOnDatabase : DialogFixture, testing::WithParamInterface<const char16_t*> {
  AddressBookOnDatabase() {
    session.DbType = GetParam();
    database.Run({
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, REMOTE_CONTACTS_CATEGORY)"
        u" VALUES (1, 'S', 'Staff', 0, ''), (2, 'R', 'Dealers', 1, 'D'), (3, 'L', 'Mine', 0, '')",
        u"INSERT INTO ZUL$CONTACTS (CODE, NAME, MOBILENO, EMAIL, CATEGORY) VALUES"
        u" ('D2', 'Zenith', '222', 'z@d.x', 'D'), ('D1', 'Acme', '111', NULL, 'D'),"
        u" ('S1', 'Other', '333', NULL, 'S')",
    });
  }
  /// The rows listed for the node, each its id, name, number, folder and type.
  Lines List(StringView key) {
    if (!form) form = std::make_unique<forms::frmAddressBook>(session.Place(), editors);
    form->Show();
    controls::TreeNode* node = form->tvwContacts.Find(key);
    if (!node) return {u"no such node"};
    form->tvwContacts.UserClicks(*node);
    if (!screen.WaitUntil([this] { return form->StatusBar1.PanelCount() == 2; })) return {u"late"};
    Lines lines;
    const controls::FlexGrid& grid = form->vsfContacts;
    for (int row = 1; row < grid.Rows(); ++row) {
      String line;
      for (const StringView column : {u"ID", u"NAME", u"MOBILENO", u"FOLDERID", u"CONTACTTYPE"}) {
        line += grid.Text(row, grid.ColIndex(column)) + u"|";
      }
      lines.push_back(std::move(line));
    }
    return lines;
  }
  String Count() const { return form->StatusBar1.PanelAt(1).Text; }

  forms::Editors editors{session};
  std::unique_ptr<forms::frmAddressBook> form;
};

TEST_P(AddressBookOnDatabase, TheTreeHoldsSharedAndRemoteFoldersAndNoLocalOne) {
  List(u"SHARED");
  EXPECT_EQ(form->tvwContacts.Count(), 3);
  EXPECT_NE(form->tvwContacts.Find(u"SFLD1"), nullptr);
  EXPECT_NE(form->tvwContacts.Find(u"RFLD2"), nullptr);
  EXPECT_EQ(Log(), u"");
}

TEST_P(AddressBookOnDatabase, TheRootListsContactsAndGroupsOutsideFoldersByName) {
  database.Run({
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO)"
      u" VALUES (1, 0, 'Zoe', 'M', 'Ek', '91', '98200'), (2, 0, 'Anna', NULL, 'Berg', NULL, '70'),"
      u" (3, 0, 'Carl', '', 'Dahl', '', '71'), (4, 1, 'Else', '', 'Where', '1', '2')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 0), (6, 'Staff', 1)",
  });
  EXPECT_EQ(List(u"SHARED"), (Lines{u"2|Anna  Berg|70|0|1|", u"5|Boat||0|2|",
                                    u"3|Carl  Dahl|71|0|1|", u"1|Zoe M Ek|91 98200|0|1|"}));
  EXPECT_EQ(Count(), u"4 item(s)");
  EXPECT_EQ(Log(), u"");
}

TEST_P(AddressBookOnDatabase, ASharedFolderListsItsContactsAndGroupsByName) {
  database.Run({
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO)"
      u" VALUES (1, 1, 'Zoe', '', 'Ek', '91', '98200'), (2, 0, 'Not', '', 'Here', '', '')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 1), (6, 'Root', 0)",
  });
  EXPECT_EQ(List(u"SFLD1"), (Lines{u"5|Boat||1|2|", u"1|Zoe  Ek|91 98200|1|1|"}));
  EXPECT_EQ(Count(), u"2 item(s)");
}

TEST_P(AddressBookOnDatabase, ARemoteFolderListsItsCategoryInTheViewsOrder) {
  Lines view;
  for (const String& row : database.Rows(
           u"SELECT CODE, NAME, MOBILENO FROM V_ZUL$REMOTE_CONTACTS WHERE CATEGORY = 'D'")) {
    view.push_back(row + u"|2|3|");
  }
  EXPECT_EQ(view.size(), 2u);
  EXPECT_EQ(List(u"RFLD2"), view);
  EXPECT_EQ(Count(), u"2 item(s)");
}

TEST_P(AddressBookOnDatabase, AnEmptyFolderListsNothing) {
  EXPECT_EQ(List(u"SFLD1"), Lines{});
  EXPECT_EQ(Count(), u"0 item(s)");
  EXPECT_GE(form->vsfContacts.ColIndex(u"NAME"), 0);
}

TEST_P(AddressBookOnDatabase, AGroupListsItsContactsAndRemoteContacts) {
  database.Run({
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO)"
      u" VALUES (1, 1, 'Zoe', NULL, 'Ek', NULL, '98200'), (2, 0, 'Not', '', 'Member', '', '')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 0)",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (5, '1', 'S'), (5, 'D1', 'R'), (6, '2', 'S')",
  });
  EXPECT_EQ(List(u"SHGR5"), (Lines{u"D1|Acme|111|2|3|", u"1|Zoe  Ek|98200|1|1|"}));
  EXPECT_EQ(Count(), u"2 item(s)");
}

TEST_P(AddressBookOnDatabase, ARemoteMemberIsListedOncePerFolderOfItsCategory) {
  database.Run({
      u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, REMOTE_CONTACTS_CATEGORY)"
      u" VALUES (4, 'R', 'Dealers too', 0, 'D')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 0)",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (5, 'D1', 'R')",
  });
  Lines lines = List(u"SHGR5");
  std::sort(lines.begin(), lines.end());
  EXPECT_EQ(lines, (Lines{u"D1|Acme|111|2|3|", u"D1|Acme|111|4|3|"}));
  EXPECT_EQ(Count(), u"1 item(s)");
}

TEST_P(AddressBookOnDatabase, AMembershipOfAnotherTypeListsTheContactInTheSqlFamilyOnly) {
  database.Run({
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO)"
      u" VALUES (1, 1, 'Zoe', '', 'Ek', '', '98200')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 0)",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (5, '1', 'R')",
  });
  const bool sql = session.DbType == u"SQL";
  EXPECT_EQ(List(u"SHGR5"), sql ? Lines{u"1|Zoe  Ek|98200|1|1|"} : Lines{});
}

TEST_P(AddressBookOnDatabase, AContactThatAnotherUserIsAddingIsNotAddedTwice) {
  database.Run({
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME) VALUES (1, 0, 'Zoe')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 0)",
  });
  OtherUser other(database, {data::GroupQueries::LockGroup(u"5"),
                             u"INSERT INTO SMS_ABGROUPMAPS VALUES (5, '1', 'S')"});
  forms::ItemStatements statements(session.Database);
  EXPECT_EQ(statements.AddMember(u"5", u"1"), forms::ItemStatements::Membership::Present);
  EXPECT_EQ(database.Rows(u"SELECT CONTACT_ID FROM SMS_ABGROUPMAPS"), Lines{u"1"});
}

TEST_P(AddressBookOnDatabase, AGroupThatAnotherUserIsDeletingGetsNoMember) {
  database.Run({
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME) VALUES (1, 0, 'Zoe')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (5, 'Boat', 0)",
  });
  OtherUser other(database, {u"DELETE FROM SMS_ABGROUPS WHERE ID = 5",
                             u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 5"});
  forms::ItemStatements statements(session.Database);
  EXPECT_EQ(statements.AddMember(u"5", u"1"), forms::ItemStatements::Membership::GroupIsGone);
  EXPECT_EQ(database.Rows(u"SELECT CONTACT_ID FROM SMS_ABGROUPMAPS"), Lines{});
}

INSTANTIATE_TEST_SUITE_P(Dialects, AddressBookOnDatabase, testing::Values(u"SQL", u"ORACLE"),
                         [](const auto& word) { return ToUtf8(word.param); });

struct SqlFamilyOnDatabase : AddressBookOnDatabase {};

TEST_P(SqlFamilyOnDatabase, AFolderListsAContactWithoutAMiddleNameWithoutAName) {
  database.Run({
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO)"
      u" VALUES (1, 1, 'Zoe', NULL, 'Ek', '91', '98200'), (2, 1, 'Al', '', 'Bo', NULL, '70')",
  });
  Lines lines = List(u"SFLD1");
  std::sort(lines.begin(), lines.end());  // engines differ in where they put no name
  EXPECT_EQ(lines, (Lines{u"1||91 98200|1|1|", u"2|Al  Bo||1|1|"}));
}

INSTANTIATE_TEST_SUITE_P(Dialect, SqlFamilyOnDatabase, testing::Values(u"SQL"));

}  // namespace
}  // namespace ktrv::tests
