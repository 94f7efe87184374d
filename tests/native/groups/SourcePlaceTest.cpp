#include "controls/Image.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// The place of the user in each source of the left list.
struct SourcePlaceTest : tests::GroupsTest {
  SourcePlaceTest() {
    Folders({{u"3", u"Friends", u"S", u""}});
    Candidates(Contacts(100));
    driver.Answer(
        data::GroupQueries::kFolder,
        {{u"ID", database::DataType::Integer}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
        {{u"3", u"Friends", u"S", u""}});
  }
  void Open() {
    OpenPicker();
    ASSERT_TRUE(Complete());
  }
  controls::FlexGrid& List() const { return form->vsfFolderContacts; }
  String Current() const {
    return List().ChosenRow() > 0 ? List().Text(List().ChosenRow(), List().ColIndex(u"ID")) : u"";
  }
  void GoAndReturn() {
    ASSERT_TRUE(Choose(u"Friends"));
    EXPECT_EQ(Current(), u"");
    ASSERT_TRUE(Choose(u"Shared Contacts"));
  }
};

TEST_F(SourcePlaceTest, RowAndScrollAreAsTheyWereLeft) {
  Open();
  List().SetRow(50);
  List().SetTopRow(45);
  GoAndReturn();
  EXPECT_EQ(Current(), u"50");
  EXPECT_EQ(List().TopRow(), 45);
}

TEST_F(SourcePlaceTest, OrderIsAsItWasLeft) {
  Open();
  const int name = List().ColIndex(u"NAME");
  List().UserClicksHeading(name);
  List().UserClicksHeading(name);
  List().SetRow(3);
  const String current = Current();
  const auto order = Column(List(), u"ID");
  GoAndReturn();
  EXPECT_EQ(Column(List(), u"ID"), order);
  EXPECT_EQ(Current(), current);
  EXPECT_EQ(List().ColumnAt(name).HeadingPicture, controls::Image::SortDescending);
}

TEST_F(SourcePlaceTest, EachSourceHasItsOwn) {
  Open();
  List().SetRow(50);
  ASSERT_TRUE(Choose(u"Friends"));
  List().SetRow(7);
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  EXPECT_EQ(Current(), u"50");
  ASSERT_TRUE(Choose(u"Friends"));
  EXPECT_EQ(Current(), u"7");
}

TEST_F(SourcePlaceTest, NextRowTakesThePlaceOfOneThatIsGone) {
  Open();
  List().SetRow(50);
  ASSERT_TRUE(Choose(u"Friends"));
  auto rows = Contacts(100);
  rows.erase(rows.begin() + 49);
  rows.insert(rows.begin(), {u"50", u"Team", u"", u"", u"2", u""});  // a group of this id
  Candidates(rows);
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  EXPECT_EQ(Current(), u"51");
}

TEST_F(SourcePlaceTest, SourceThatWasOnlyPassedKeepsThePlace) {
  Open();
  List().SetRow(50);
  ASSERT_TRUE(Choose(u"Friends"));
  HoldFetches();
  form->cboContactType.UserChooses(form->cboContactType.IndexOf(u"Shared Contacts"));
  form->cboContactType.UserChooses(form->cboContactType.IndexOf(u"Friends"));
  driver.OpenGate.Open();
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  EXPECT_EQ(Current(), u"50");
}

TEST_F(SourcePlaceTest, SourceThatFailedKeepsThePlace) {
  Open();
  List().SetRow(50);
  ASSERT_TRUE(Choose(u"Friends"));
  driver.FailAtEnd(u"AS MOBILE_DISPLAY FROM", Error(ErrorNumber::DriverFailure, u"line lost"));
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  EXPECT_EQ(Current(), u"");
  Candidates(Contacts(100));
  ASSERT_TRUE(Choose(u"Friends"));
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  EXPECT_EQ(Current(), u"50");
}

TEST_F(SourcePlaceTest, ManyRowsAreSortedAndThenShownAsTheyWereLeft) {
  Candidates(Contacts(12000));
  Open();
  const auto isSorted = [this] { return !List().IsSorting(); };
  List().UserClicksHeading(List().ColIndex(u"NAME"));
  ASSERT_TRUE(screen.WaitUntil(isSorted));
  List().SetRow(6000);
  List().SetTopRow(5990);
  const String current = Current();
  ASSERT_TRUE(Choose(u"Friends"));
  ASSERT_TRUE(Choose(u"Shared Contacts"));
  ASSERT_TRUE(screen.WaitUntil(isSorted));
  EXPECT_EQ(Current(), current);
  EXPECT_EQ(List().Row(), 6000);
  EXPECT_EQ(List().TopRow(), 5990);
}

}  // namespace
}  // namespace ktrv::forms
