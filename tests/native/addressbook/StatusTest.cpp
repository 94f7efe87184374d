#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

using controls::Image;
namespace KeyCode = controls::KeyCode;

/// What the window says about its list, the selection, and commands without effect.
struct StatusTest : AddressBookTest {
  StatusTest() {
    RunAt(RunApplicationAt::RuntAtServer);
    SharedFolders({{u"7", u"Staff"}});
    RemoteFolders({{u"3", u"Dealers"}});
    Counts(Queries::kCountFolderContacts, 3);
    Counts(Queries::kCountRemoteContacts, 3);
    Lists({Item(u"1", u"Anna"), Item(u"2", u"Bert"), Item(u"3", u"Carl")});
  }
  void Show() {
    Open();
    ASSERT_TRUE(Complete());
    form->vsfContacts.SetFocus();
  }
};

TEST_F(StatusTest, TheMiddlePanelCountsTheSelectedRows) {
  Show();
  EXPECT_EQ(Panel(2), u"");
  form->vsfContacts.UserSelects({1, 3}, 3);
  EXPECT_EQ(Panel(2), u"2 selected");
  form->vsfContacts.UserSelectsRange(2, 2, true, 2);
  EXPECT_EQ(Panel(2), u"3 selected");
  form->vsfContacts.SelectAll();
  EXPECT_EQ(Panel(2), u"3 selected");
  form->vsfContacts.SetRow(1);
  EXPECT_EQ(Panel(2), u"1 selected");
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(Panel(2), u"");
}

TEST_F(StatusTest, ACommandWithoutATargetSaysSo) {
  Show();
  form->ContactProperties();
  EXPECT_EQ(Panel(2), u"No item is selected.");
  form->vsfContacts.SetRow(1);
  EXPECT_EQ(Panel(2), u"1 selected");
  form->vsfContacts.UserSelects({}, 0);
  form->Copy();
  EXPECT_EQ(Panel(2), u"No item is selected.");
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(StatusTest, TheRootSaysThatItHasNoProperties) {
  Show();
  form->tvwContacts.SetFocus();
  form->ContactProperties();
  EXPECT_EQ(Panel(2), u"This item has no properties.");
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(StatusTest, ADeletionInARemoteFolderSaysWhyItHasNoEffect) {
  Show();
  ClickAndWait(u"RFLD3");
  form->vsfContacts.SetFocus();
  form->vsfContacts.SetRow(1);
  form->ContactDelete();
  EXPECT_EQ(Panel(2), u"Remote contacts can be deleted from TALVERO only.");
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(StatusTest, AGeneralUserAtTheRootIsStoppedSilently) {
  session.IsAdmin = UserType::GeneralUser;
  Show();
  form->vsfContacts.SetRow(1);
  form->ContactDelete();
  EXPECT_EQ(Panel(2), u"1 selected");
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(StatusTest, AListThatCannotBeChangedSaysSo) {
  Show();
  ClickAndWait(u"RFLD3");
  EXPECT_EQ(form->lblContacts.Caption(), u"&Contacts from TALVERO (read-only)");
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(form->lblContacts.Caption(), u"&Contacts");
}

TEST_F(StatusTest, TheBarMovesUntilTheFirstRowsCome) {
  Show();
  driver.OpenGate.Close();
  Click(u"SFLD7");
  EXPECT_TRUE(form->ProgressBar1.Marquee());
  EXPECT_EQ(form->ProgressBar1.Value(), 0);
  driver.OpenGate.Open();
  ASSERT_TRUE(screen.WaitUntil([this] { return form->vsfContacts.Rows() > 2; }));
  EXPECT_FALSE(form->ProgressBar1.Marquee());
  ASSERT_TRUE(Complete());
}

TEST_F(StatusTest, ABarOfAFailedLoadDoesNotMove) {
  Show();
  driver.Fail(u"AS CONTACTTYPE", Error(ErrorNumber::SyntaxOrPermission, u"refused"));
  ClickAndWait(u"SFLD7");
  EXPECT_FALSE(form->ProgressBar1.Marquee());
}

TEST_F(StatusTest, TheFirstHeadingsAreThoseOfTheList) {
  Show();
  const auto& grid = form->vsfContacts;
  std::vector<String> first;
  for (const auto& column : grid.FirstColumns) first.push_back(column.Heading);
  std::vector<String> shown;
  for (int column = 0; column < grid.Cols(); ++column) {
    if (!grid.ColumnAt(column).Hidden) shown.push_back(grid.ColumnAt(column).Heading);
  }
  EXPECT_EQ(first, shown);
}

TEST_F(StatusTest, TheFirstClickOnTheHeadingWithTheArrowReversesTheOrder) {
  Show();
  auto& grid = form->vsfContacts;
  const int name = grid.ColIndex(u"NAME");
  ASSERT_EQ(grid.ColumnAt(name).HeadingPicture, Image::SortAscending);
  grid.UserClicksHeading(name);
  EXPECT_EQ(grid.ColumnAt(name).HeadingPicture, Image::SortDescending);
  EXPECT_EQ(grid.Text(1, name), u"Carl");
  grid.UserClicksHeading(name);
  EXPECT_EQ(grid.Text(1, name), u"Anna");
}

TEST_F(StatusTest, TheKindOfARowIsShownBeforeItsName) {
  Show();
  const auto& grid = form->vsfContacts;
  EXPECT_EQ(grid.ColumnAt(grid.ColIndex(u"NAME")).PictureOf, u"CONTACTTYPE");
}

TEST_F(StatusTest, TheWindowCannotBecomeNarrowerThanItsBarAndList) {
  Show();
  EXPECT_EQ(form->Layout().MinimumWidth, 6000);
  form->picSlider.MouseDown(controls::MouseButton::Left, 0, 0, 0);
  form->picSlider.MouseMove(controls::MouseButton::Left, 0, 5000, 0);
  form->picSlider.MouseUp(controls::MouseButton::Left, 0, 0, 0);
  EXPECT_EQ(form->Layout().MinimumWidth, form->picSlider.Left() + 1000);
}

}  // namespace
}  // namespace ktrv::tests
