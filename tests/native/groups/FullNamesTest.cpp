#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// Tips of both lists. 1 Anna, 2 Bert, 3 Cora and 5 Anna are outside folders, and the groups.
struct FullNamesTest : tests::GroupsOnDatabase {
  FullNamesTest() {
    Run(u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, ORGANISATION) VALUES "
        u"(5, 0, 'Anna ', 'B.', 'Ek', 'Acme Ltd')");
    Run(u"UPDATE SMS_ABCONTACTS SET LNAME = 'Meyer' WHERE ID IN (1, 2)");
  }
  void Open() {
    OpenPicker();
    ASSERT_TRUE(Complete());
  }
  static String TipOf(const controls::FlexGrid& grid, StringView id, StringView column = u"NAME") {
    for (int row = 1; row < grid.Rows(); ++row) {
      if (grid.Text(row, grid.ColIndex(u"ID")) == id) return grid.Tip(row, grid.ColIndex(column));
    }
    return u"no such row";
  }
};

TEST_F(FullNamesTest, EqualFirstNamesAreToldApart) {
  Open();
  form->cmdSelectAll.UserClicks();
  for (const auto* grid : {&form->vsfFolderContacts, &form->vsfGroupContacts}) {
    EXPECT_EQ(TipOf(*grid, u"1"), u"Anna Meyer");
    EXPECT_EQ(TipOf(*grid, u"5"), u"Anna B. Ek, Acme Ltd");
    EXPECT_EQ(TipOf(*grid, u"2"), u"");
    EXPECT_EQ(TipOf(*grid, u"1", u"MOBILE_DISPLAY"), u"");
  }
}

TEST_F(FullNamesTest, CaseMakesNoOtherName) {
  Run(u"UPDATE SMS_ABCONTACTS SET FNAME = 'BERT' WHERE ID = 3");
  Run(u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME) VALUES (6, 0, 'Berta')");
  Open();
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"2"), u"Bert Meyer");
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"6"), u"");
}

TEST_F(FullNamesTest, GroupsHaveNone) {
  Run(u"UPDATE SMS_ABGROUPS SET NAME = 'Bert' WHERE ID = 12");
  Open();
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"12"), u"");
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"2"), u"Bert Meyer");
}

TEST_F(FullNamesTest, NamesAreReadOnceAndAgainAfterAnEdit) {
  Open();
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"1"), u"Anna Meyer");
  Run(u"UPDATE SMS_ABCONTACTS SET LNAME = 'Ost' WHERE ID = 1");
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"1"), u"Anna Meyer");
  AnswerContacts([](const ContactRequest& request) { return request.EditContactId; });
  form->vsfFolderContacts.SetRow(1);
  form->cmdProperty.UserClicks();
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"1"), u"Anna Ost");
}

TEST_F(FullNamesTest, AfterAFailureNoneIsReadUntilTheListIsLoaded) {
  Open();
  FailOnce(u"SELECT FNAME, MNAME, LNAME, ORGANISATION");
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"1"), u"");
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"1"), u"");
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"5"), u"");
  EXPECT_EQ(ErrorsLogged(), 1);
  form->vsfFolderContacts.DataRefresh();
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"5"), u"Anna B. Ek, Acme Ltd");
}

TEST_F(FullNamesTest, NoneIsReadDuringAJob) {
  Open();
  const controls::Form::Work work(*form, form->cmdCancel);
  EXPECT_EQ(TipOf(form->vsfFolderContacts, u"1"), u"");
}

}  // namespace
}  // namespace ktrv::forms
