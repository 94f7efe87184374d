#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using controls::Image;
using controls::SortOrder;
namespace KeyCode = controls::KeyCode;

/// The place of the user in list and tree is kept when they are loaded again.
struct PlaceTest : AddressBookTest {
  PlaceTest() {
    SharedFolders({{u"7", u"Staff"}, {u"8", u"Old"}});
    Groups({{u"6", u"Drivers", u"7"}, {u"9", u"Cooks", u"8"}});
    for (int i = 1; i <= 40; ++i) rows.push_back(Item(ToDecimal(i), u"Name " + ToDecimal(i)));
  }
  void Show() {
    Counts(Queries::kCountFolderContacts, static_cast<std::int64_t>(rows.size()));
    Lists(rows);
    Open();
    ClickAndWait(u"SHARED");
  }
  /// The list is loaded again, as by the button.
  void Refresh() {
    Lists(rows);
    form->UserPresses(KeyCode::F5, controls::ShiftMask::None);
    ASSERT_TRUE(Complete());
  }
  /// Removes the rows with these numbers (1-based) from the database.
  void Remove(int first, int last) { rows.erase(rows.begin() + first - 1, rows.begin() + last); }
  String Chosen() const {
    const auto& grid = form->vsfContacts;
    const int row = grid.ChosenRow();
    return row == 0 ? String() : grid.Text(row, grid.ColIndex(u"NAME"));
  }
  controls::GridColumn& Column(StringView key) {
    return form->vsfContacts.ColumnAt(form->vsfContacts.ColIndex(key));
  }

  std::vector<Row> rows;
};

TEST_F(PlaceTest, TheSameRowIsChosenWhereverItIs) {
  Show();
  form->vsfContacts.SetRow(20);
  Remove(1, 5);
  Refresh();
  EXPECT_EQ(Chosen(), u"Name 20");
  EXPECT_EQ(form->vsfContacts.SelectedRows(), std::vector<int>{15});
}

TEST_F(PlaceTest, ARowOfAnotherKindWithTheSameIdIsAnother) {
  rows.insert(rows.begin(), Item(u"20", u"Group 20", u"2"));
  Show();
  form->vsfContacts.SetRow(21);
  Refresh();
  EXPECT_EQ(Chosen(), u"Name 20");
}

TEST_F(PlaceTest, TheNextRowIsChosenWhenItIsGone) {
  Show();
  form->vsfContacts.SetRow(20);
  Remove(20, 21);
  Refresh();
  EXPECT_EQ(Chosen(), u"Name 22");
}

TEST_F(PlaceTest, ThePreviousRowIsChosenWhenThereIsNoNext) {
  Show();
  form->vsfContacts.SetRow(39);
  Remove(39, 40);
  Refresh();
  EXPECT_EQ(Chosen(), u"Name 38");
}

TEST_F(PlaceTest, NothingIsChosenWhenNothingWas) {
  Show();
  Refresh();
  EXPECT_EQ(form->vsfContacts.Row(), 0);
  EXPECT_EQ(form->vsfContacts.Selection().Count(), 0);
}

TEST_F(PlaceTest, AfterADeletionTheRowBehindTheDeletedOnesIsChosen) {
  Show();
  form->vsfContacts.SelectRows(3, 5);
  screen.Answer(MessageAnswer::Yes);
  const auto all = rows;
  Remove(3, 5);
  Lists(rows);
  form->ContactDelete();
  ASSERT_TRUE(screen.WaitUntil([this] { return !form->IsDeleting(); }));
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Chosen(), u"Name 6");
}

TEST_F(PlaceTest, AfterAnEditorIsCancelledTheRowIsStillChosen) {
  Show();
  form->vsfContacts.SetRow(20);
  screen.PlayModal([](controls::Form& editor) { editor.UserCloses(); });
  form->ContactProperties();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Chosen(), u"Name 20");
}

TEST_F(PlaceTest, TheListIsScrolledAsBefore) {
  Show();
  form->vsfContacts.SetRow(20);
  form->vsfContacts.SetTopRow(12);
  Remove(1, 5);
  Refresh();
  EXPECT_EQ(form->vsfContacts.TopRow(), 7);
}

TEST_F(PlaceTest, TheListIsScrolledAsBeforeWhenNothingIsChosen) {
  Show();
  form->vsfContacts.SetTopRow(12);
  Refresh();
  EXPECT_EQ(form->vsfContacts.TopRow(), 12);
  EXPECT_EQ(form->vsfContacts.Row(), 0);
}

TEST_F(PlaceTest, AnotherNodesListStartsAtItsTop) {
  Show();
  form->vsfContacts.SetRow(20);
  form->vsfContacts.SetTopRow(12);
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(form->vsfContacts.Row(), 0);
  EXPECT_EQ(form->vsfContacts.TopRow(), 0);
}

TEST_F(PlaceTest, TheRowOfASortedListIsChosenInTheOrderOfTheResult) {
  Show();
  form->vsfContacts.UserClicksHeading(form->vsfContacts.ColIndex(u"NAME"));
  form->vsfContacts.SetRow(3);
  EXPECT_EQ(Chosen(), u"Name 7");
  Refresh();
  EXPECT_EQ(form->vsfContacts.Text(1, form->vsfContacts.ColIndex(u"NAME")), u"Name 1");
  EXPECT_EQ(Column(u"NAME").HeadingPicture, Image::SortAscending);
  EXPECT_EQ(Chosen(), u"Name 7");
}

TEST_F(PlaceTest, WhereTheUserScrollsWhileTheListLoadsItStays) {
  Show();
  form->vsfContacts.SetRow(20);
  form->vsfContacts.SetTopRow(12);
  driver.OpenGate.Close();
  form->LoadContacts();
  driver.OpenGate.Open();
  ASSERT_TRUE(screen.WaitUntil([this] { return form->vsfContacts.Rows() > 2; }));
  form->vsfContacts.SetTopRow(30);
  ASSERT_TRUE(Complete());
  EXPECT_EQ(form->vsfContacts.TopRow(), 30);
  EXPECT_EQ(Chosen(), u"Name 20");
}

TEST_F(PlaceTest, AWidthThatTheUserSetIsKept) {
  Show();
  form->vsfContacts.UserSizesColumn(form->vsfContacts.ColIndex(u"EMAIL"), 1234);
  Refresh();
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(Column(u"EMAIL").Width, 1234);
  EXPECT_EQ(Column(u"ADDRESS").Width, 3000);
}

TEST_F(PlaceTest, ARowSelectedWhileTheListLoadsStaysSelected) {
  Show();
  form->vsfContacts.SetRow(20);
  driver.OpenGate.Close();
  form->LoadContacts();
  driver.OpenGate.Open();
  const auto came = form->vsfContacts.AfterDataRefresh;
  form->vsfContacts.AfterDataRefresh = [&] {
    came();
    if (form->vsfContacts.Row() == 0 && form->vsfContacts.Rows() > 30) {
      form->vsfContacts.UserSelects({30}, 30);
    }
  };
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Chosen(), u"Name 30");
}

TEST_F(PlaceTest, TwoRefreshesAtOnceKeepThePlaceToo) {
  Show();
  form->vsfContacts.SetRow(20);
  driver.OpenGate.Close();
  form->LoadContacts();
  form->LoadContacts();
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Chosen(), u"Name 20");
}

TEST_F(PlaceTest, APlaceThatWasReachedDoesNotReplaceALaterOne) {
  Show();
  form->vsfContacts.SetRow(20);
  Refresh();
  form->vsfContacts.SetRow(0);
  form->vsfContacts.SetTopRow(12);
  Refresh();
  EXPECT_EQ(Chosen(), u"");
  EXPECT_EQ(form->vsfContacts.TopRow(), 12);
}

TEST_F(PlaceTest, AListThatBreaksOffDoesNotChooseANeighbour) {
  Show();
  form->vsfContacts.SetRow(20);
  driver.FailAtEnd(u"AS CONTACTTYPE", Error(ErrorNumber::DriverFailure, u"link lost"));
  Remove(20, 20);
  Lists(rows);
  driver.FailAtEnd(u"AS CONTACTTYPE", Error(ErrorNumber::DriverFailure, u"link lost"));
  form->LoadContacts();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Panel(1), u"Not all contacts could be loaded.");
  EXPECT_EQ(Chosen(), u"");
}

// Tree.

TEST_F(PlaceTest, OpenFoldersAreOpenAfterARebuild) {
  RunAt(RunApplicationAt::RuntAtServer);
  Show();
  form->tvwContacts.UserExpands(Node(u"SFLD8"), true);
  form->LoadTreeView();
  EXPECT_TRUE(Node(u"SFLD8").Expanded);
  EXPECT_FALSE(Node(u"SFLD7").Expanded);
  form->tvwContacts.UserExpands(Node(u"SFLD8"), false);
  form->LoadTreeView();
  EXPECT_FALSE(Node(u"SFLD8").Expanded);
}

TEST_F(PlaceTest, AFailedRebuildForgetsNoOpenFolder) {
  RunAt(RunApplicationAt::RuntAtServer);
  Show();
  form->tvwContacts.UserExpands(Node(u"SFLD8"), true);
  driver.Fail(Queries::kSharedFolders, Error(ErrorNumber::DriverFailure, u"gone away"));
  form->LoadTreeView();
  SharedFolders({{u"7", u"Staff"}, {u"8", u"Old"}});
  form->LoadTreeView();
  EXPECT_TRUE(Node(u"SFLD8").Expanded);
}

}  // namespace
}  // namespace ktrv::tests
