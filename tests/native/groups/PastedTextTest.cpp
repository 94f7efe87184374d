#include "forms/groups/PastedText.h"

#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// Lists that are pasted into the group dialog.
struct PastedTextTest : tests::GroupsTest {
  PastedTextTest() {
    Candidates({{u"1", u"Anna Ek", u"30 1234", u"49", u"1", u"49 30 1234"},
                {u"2", u"Bert", u"98002", u"", u"1", u"98002"},
                {u"3", u"Cora", u"", u"", u"1", u""},
                {u"4", u"Bert", u"98004", u"", u"1", u"98004"},
                {u"5", u"Dora", u"98002", u"46", u"1", u"46 98002"},
                {u"6", u"Team", u"", u"", u"2", u""}});
  }
  void Open() {
    OpenPicker();
    ASSERT_TRUE(Complete());
  }
  /// Pastes into an empty list. \return the ids in the list
  std::vector<String> Paste(StringView text) {
    form->cmdRemoveAll.UserClicks();
    screen.Clipboard = String(text);
    form->cmdPaste.UserClicks();
    return Column(form->vsfGroupContacts, u"ID");
  }
  const String& Told() const { return screen.LastMessage().Text; }
};

using Ids = std::vector<String>;

TEST_F(PastedTextTest, NumbersAreFoundHoweverTheyAreWritten) {
  Open();
  for (const StringView number : {u"49301234", u"+49 (0)30-1234", u"0049 30/1234", u"030 1234",
                                  u"30.1234", u"  (030) 1234 "}) {
    EXPECT_EQ(Paste(number), Ids{u"1"}) << ToUtf8(number);
  }
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(PastedTextTest, PartOfANumberIsNotFound) {
  Open();
  EXPECT_EQ(Paste(u"1234"), Ids{});
  EXPECT_EQ(Told(), u"Not found in the list on the left: 1234.");
}

TEST_F(PastedTextTest, WholeNamesAreFoundWithoutCaseAndBlanks) {
  Open();
  EXPECT_EQ(Paste(u"  anna   EK "), Ids{u"1"});
  EXPECT_EQ(Paste(u"Anna\u00A0Ek"), Ids{u"1"});
  EXPECT_EQ(Paste(u"team"), Ids{u"6"});
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Paste(u"Anna"), Ids{});
  EXPECT_EQ(Told(), u"Not found in the list on the left: Anna.");
}

TEST_F(PastedTextTest, LinesSemicolonsAndTabsSeparate) {
  Open();
  EXPECT_EQ(Paste(u"cora\r\n98004;Anna Ek\tTeam\n\n;;\t"), (Ids{u"3", u"4", u"1", u"6"}));
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(form->lblOutcome.Caption(), u"4 added, 1 has no number");
}

TEST_F(PastedTextTest, WhoIsMeantTwiceIsAddedOnce) {
  Open();
  EXPECT_EQ(Paste(u"Cora\ncora\nCora"), Ids{u"3"});
  EXPECT_EQ(Paste(u"Anna Ek\n49301234\n030 1234"), Ids{u"1"});
  EXPECT_EQ(form->lblOutcome.Caption(), u"1 added");
}

TEST_F(PastedTextTest, NobodyIsChosenAmongSeveral) {
  Open();
  EXPECT_EQ(Paste(u"Bert\n98002\nCora\nZoe"), Ids{u"3"});
  EXPECT_EQ(Told(),
            u"Not found in the list on the left: Zoe. There are several of these: Bert, 98002.");
}

TEST_F(PastedTextTest, NameAndNumberWithATabBetweenMeanOnePerson) {
  Open();
  EXPECT_EQ(Paste(u"Bert\t98004"), Ids{u"4"});
  EXPECT_EQ(Paste(u"Bert\t98002\r\nDora\t98002"), (Ids{u"2", u"5"}));
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Paste(u"98004\nBert"), Ids{u"4"});
  EXPECT_EQ(Told(), u"There are several of these: Bert.");
}

TEST_F(PastedTextTest, NobodyIsAddedWhoseNameAndNumberContradict) {
  Open();
  EXPECT_EQ(Paste(u"Dora\t98004"), Ids{});
  EXPECT_EQ(Told(), u"Name and number belong to different people: Dora, 98004.");
  EXPECT_EQ(Paste(u"98004\tAnna Ek\nCora\t12345\nDora\nBert\t98004"), (Ids{u"3", u"5", u"4"}));
  EXPECT_EQ(Told(),
            u"Not found in the list on the left: 12345. "
            u"Name and number belong to different people: 98004, Anna Ek.");
}

TEST_F(PastedTextTest, NameWithANumberThatNobodyHasAddsOnlyWhoHasNone) {
  Open();
  EXPECT_EQ(Paste(u"Anna Ek\t98555"), Ids{});
  EXPECT_EQ(Told(),
            u"Not found in the list on the left: 98555. "
            u"Name and number belong to different people: Anna Ek.");
  EXPECT_EQ(Paste(u"98555\tTeam\nCora\t98555"), Ids{u"3"});
  EXPECT_EQ(Told(),
            u"Not found in the list on the left: 98555. "
            u"Name and number belong to different people: Team.");
  EXPECT_EQ(Paste(u"Anna Ek\t98555\t030 1234\tCora"), Ids{u"1"});
  EXPECT_EQ(Told(),
            u"Not found in the list on the left: 98555. "
            u"Name and number belong to different people: Cora.");
}

TEST_F(PastedTextTest, NumberThatNobodyHasDoesNotChooseAmongSeveral) {
  Candidates({{u"1", u"Ann", u"", u"", u"1", u""},
              {u"2", u"Ann", u"98002", u"", u"1", u"98002"},
              {u"3", u"Eve", u"", u"", u"1", u""},
              {u"4", u"Eve", u"", u"", u"1", u""}});
  Open();
  EXPECT_EQ(Paste(u"Ann\t98555\nEve\t98555"), Ids{});
  EXPECT_EQ(Told(),
            u"Not found in the list on the left: 98555. There are several of these: Ann, Eve.");
}

TEST_F(PastedTextTest, NumberWithANameThatNobodyHasAddsNobody) {
  Open();
  EXPECT_EQ(Paste(u"Zoe\t98004"), Ids{});
  EXPECT_EQ(Told(),
            u"Not found in the list on the left: Zoe. "
            u"Name and number belong to different people: 98004.");
  EXPECT_EQ(Paste(u"Zoe\t98004\tBert"), Ids{u"4"});
  EXPECT_EQ(Told(), u"Not found in the list on the left: Zoe.");
}

TEST_F(PastedTextTest, NameAndNumberBelongTogetherHoweverFarTheirColumnsAre) {
  Open();
  for (const int between : {0, 3, 4, 5, 6, 100000}) {
    String columns;
    for (int column = 0; column < between; ++column) columns += u"\t" + ToDecimal(column) + u".x";
    EXPECT_EQ(Paste(u"Anna Ek" + columns + u"\t98004"), Ids{}) << between;
    EXPECT_TRUE(Told().ends_with(u"belong to different people: Anna Ek, 98004.")) << between;
    EXPECT_EQ(Paste(u"98004" + columns + u"\tAnna Ek"), Ids{}) << between;
    EXPECT_TRUE(Told().ends_with(u"belong to different people: 98004, Anna Ek.")) << between;
    EXPECT_EQ(Paste(u"Bert" + columns + u"\t98004"), Ids{u"4"}) << between;
  }
}

TEST_F(PastedTextTest, NameOfDigitsIsANumberWhereTheLineHasAText) {
  Candidates(
      {{u"1", u"Ann", u"98001", u"", u"1", u"98001"}, {u"2", u"7", u"98002", u"", u"1", u"98002"}});
  Open();
  EXPECT_EQ(Paste(u"7"), Ids{u"2"});
  EXPECT_EQ(Paste(u"7\t98002"), Ids{u"2"});
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Paste(u"7\tAnn\t98001"), Ids{u"1"});
  EXPECT_EQ(Told(), u"Not found in the list on the left: 7.");
  EXPECT_EQ(Paste(u"7\tAnn"), Ids{});
  EXPECT_EQ(Told(),
            u"Not found in the list on the left: 7. "
            u"Name and number belong to different people: Ann.");
  EXPECT_EQ(Paste(u"7\t98001"), Ids{});
  EXPECT_EQ(Told(), u"Name and number belong to different people: 7, 98001.");
}

TEST_F(PastedTextTest, NumberOfOneCountryFindsNobodyOfAnother) {
  Candidates({{u"1", u"Ravi", u"491234", u"91", u"1", u"91 491234"},
              {u"2", u"Ute", u"+49 5678", u"", u"1", u"+49 5678"}});
  Open();
  for (const StringView number : {u"+49 1234", u"0049 1234", u"(+49) 1234"}) {
    EXPECT_EQ(Paste(number), Ids{}) << ToUtf8(number);
  }
  EXPECT_EQ(Paste(u"491234"), Ids{u"1"});
  EXPECT_EQ(Paste(u"+91 491234"), Ids{u"1"});
  EXPECT_EQ(Paste(u"+49 5678"), Ids{u"2"});
}

TEST_F(PastedTextTest, WhoIsInTheListAlreadyStaysOnce) {
  Open();
  Take({1});
  screen.Clipboard = u"Anna Ek\nCora";
  form->cmdPaste.UserClicks();
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (Ids{u"1", u"3"}));
  EXPECT_EQ(form->lblOutcome.Caption(), u"1 added, 1 was in the list already, 1 has no number");
  form->cmdUndo.UserClicks();
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), Ids{u"1"});
}

TEST_F(PastedTextTest, OfManyNamesThatAreNotFoundTheFirstAreNamed) {
  Open();
  String text;
  for (int name = 1; name <= 40; ++name) text += u"X" + ToDecimal(name) + u"\n";
  Paste(text);
  EXPECT_TRUE(Told().ends_with(u"X19, X20 and 20 more.")) << ToUtf8(Told());
}

TEST_F(PastedTextTest, EmptyClipboardIsTold) {
  Open();
  for (const std::optional<String>& text :
       {std::optional<String>(), std::optional<String>(u" \r\n;\t")}) {
    screen.Clipboard = text;
    form->cmdPaste.UserClicks();
    EXPECT_EQ(Told(), u"The clipboard contains no names or numbers.");
  }
  EXPECT_EQ(form->Members().Count(), 0);
  EXPECT_FALSE(form->cmdUndo.Enabled());
}

TEST_F(PastedTextTest, NothingIsPastedWhileAListIsLoading) {
  MembersAre({{u"1", u"Anna Ek", u"", u"", u"1", u""}});
  OpenToModify(u"5", u"Team");
  ASSERT_TRUE(Complete());
  EXPECT_TRUE(form->cmdPaste.Enabled());
  screen.Clipboard = u"Cora";
  HoldFetches();
  form->LoadGroupContacts();
  EXPECT_FALSE(form->cmdPaste.Enabled());
  form->cmdPaste.UserClicks();
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  HoldFetches();
  form->LoadFolderContacts(u"0");
  EXPECT_FALSE(form->cmdPaste.Enabled());
  form->cmdPaste.UserClicks();
  driver.OpenGate.Open();
  ASSERT_TRUE(Complete());
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), Ids{u"1"});
  form->cmdPaste.UserClicks();
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (Ids{u"1", u"3"}));
}

TEST_F(PastedTextTest, StoppedPasteAddsNobody) {
  std::vector<Row> rows = Contacts(200000);
  Candidates(std::move(rows));
  Open();
  screen.Clipboard = u"Name 1";
  screen.WhileWorking = [this](controls::Form&) { form->cmdCancel.UserClicks(); };
  form->cmdPaste.UserClicks();
  EXPECT_EQ(form->lblOutcome.Caption(), u"Stopped. Nothing was added.");
  EXPECT_EQ(form->Members().Count(), 0);
  EXPECT_EQ(ErrorsLogged(), 0);
}

TEST_F(PastedTextTest, OneOfManyWithTheSameNameOrNumberIsFound) {
  constexpr int kMany = 3000;
  std::vector<Row> rows;
  for (int id = 1; id <= kMany; ++id) {
    const String own = ToDecimal(50000 + id);
    rows.push_back({ToDecimal(id), u"Ann", own, u"", u"1", own});
    rows.push_back({ToDecimal(kMany + id), u"Name " + own, u"9", u"", u"1", u"9"});
  }
  Candidates(std::move(rows));
  Open();
  EXPECT_EQ(Paste(u"Ann\t53000\n9\tName 53000\nAnn\t50001"), (Ids{u"3000", u"6000", u"1"}));
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Paste(u"Ann\t9"), Ids{});
  EXPECT_EQ(Told(), u"Name and number belong to different people: Ann, 9.");
}

TEST_F(PastedTextTest, PasteOfManyEqualLinesCanBeStopped) {
  std::vector<Row> rows = Contacts(3000);
  for (Row& row : rows) row[1] = u"Ann";
  Candidates(std::move(rows));
  Open();
  screen.Clipboard = String();
  for (int line = 0; line < 3000; ++line) *screen.Clipboard += u"Ann\t9\n";
  int looks = 0;
  screen.WhileWorking = [&](controls::Form&) {
    const bool isRead = form->pbrSave.Value() == form->pbrSave.Max();
    if (isRead && ++looks == 1) form->cmdCancel.UserClicks();
  };
  form->cmdPaste.UserClicks();
  EXPECT_EQ(looks, 2) << "one that stops it, and one at its end";
  EXPECT_EQ(form->lblOutcome.Caption(), u"Stopped. Nothing was added.");
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(PastedTextTest, CopiedListCanBePasted) {
  Open();
  EXPECT_FALSE(form->cmdCopy.Enabled());
  Take({1, 2, 3, 4});
  form->cmdCopy.UserClicks();
  EXPECT_EQ(screen.Clipboard, u"Anna Ek\t49 30 1234\r\nBert\t98002\r\nCora\t\r\nBert\t98004\r\n");
  EXPECT_EQ(form->lblOutcome.Caption(), u"4 copied");
  form->cmdRemoveAll.UserClicks();
  form->cmdPaste.UserClicks();
  // There are two Berts, and two have the number of the first one.
  EXPECT_EQ(Column(form->vsfGroupContacts, u"ID"), (Ids{u"1", u"2", u"3", u"4"}));
  EXPECT_TRUE(screen.Messages.empty());
}

/// The list of the address book has the whole name in one column, this one the first name.
TEST_F(PastedTextTest, RowsCopiedFromTheAddressBookCanBePasted) {
  Candidates({{u"1", u"Anna", u"98001", u"91", u"1", u"91 98001"},
              {u"2", u"Anna", u"98002", u"91", u"1", u"91 98002"},
              {u"3", u"Annabel", u"98003", u"91", u"1", u"91 98003"},
              {u"4", u"", u"98004", u"91", u"1", u"91 98004"}});
  Open();
  EXPECT_EQ(Paste(u"Anna  Ek\t91 98001\ta@x\tStreet\tAcme"), Ids{u"1"});
  EXPECT_EQ(Told(), u"Not found in the list on the left: a@x, Street, Acme.");
  for (const StringView line : {u"Annabel Ek\t91 98001", u"Annab\t91 98001", u"Ann\t91 98001",
                                u"Ek Anna\t91 98001", u"Zoe Ek\t91 98004"}) {
    EXPECT_EQ(Paste(line), Ids{}) << ToUtf8(line);
  }
  EXPECT_EQ(Paste(u"Anna Ek\t91 98001\t91 98002"), (Ids{u"1", u"2"}));
}

TEST_F(PastedTextTest, OfATableOfTheAddressBookOnlyNamesAndNumbersCount) {
  Candidates({{u"1", u"Ann", u"98001", u"91", u"1", u"91 98001"},
              {u"2", u"Bo", u"", u"", u"1", u""},
              {u"9", u"Acme", u"", u"", u"2", u""}});
  Open();
  const String headings = u"Name\tMobile No\tEmail\tAddress\tOrganisation\r\n";
  EXPECT_EQ(Paste(headings + u"Ann  Ek\t\t\t\tAcme\r\n"), Ids{});
  EXPECT_EQ(Told(), u"Not found in the list on the left: Ann  Ek.");
  EXPECT_EQ(Paste(headings + u"Cy\t\t\tStreet 5; Acme\tAcme\r\n"), Ids{});
  EXPECT_EQ(Paste(headings + u"Ann  Ek\t91 98001\ta@x\tAcme\tAcme\r\nBo\t\t\t\tAcme\r\n"),
            (Ids{u"1", u"2"}));
  EXPECT_EQ(Paste(u"Email\tMobile No\tName\r\nAcme\t91 98001\tAnn\r\n"), Ids{u"1"});
  screen.Messages.clear();
  EXPECT_EQ(Paste(u"Name\tMobile No\tEmail"), Ids{});
  EXPECT_EQ(Told(), u"The clipboard contains no names or numbers.");
}

TEST_F(PastedTextTest, NameThatOthersHaveIsNoLongerNameOfSomebodyElse) {
  Candidates({{u"1", u"Anna", u"98001", u"", u"1", u"98001"},
              {u"5", u"Anna Ek", u"98005", u"", u"1", u"98005"},
              {u"6", u"Bo Ek", u"98006", u"", u"1", u"98006"},
              {u"7", u"Bo Ek", u"98006", u"", u"1", u"98006"},
              {u"8", u"Bo", u"98008", u"", u"1", u"98008"}});
  Open();
  EXPECT_EQ(Paste(u"Anna Ek\t98001"), Ids{});
  EXPECT_EQ(Told(), u"Name and number belong to different people: Anna Ek, 98001.");
  EXPECT_EQ(Paste(u"Bo Ek\t98006\nBo Ek\t98008"), Ids{});
  EXPECT_EQ(Paste(u"Anna Ek\tBo Ek Al\t98008"), Ids{u"8"});
}

TEST_F(PastedTextTest, CountryCodeAloneFindsNobody) {
  Candidates({{u"1", u"Ann", u"98001", u"91", u"1", u"91 98001"},
              {u"2", u"Bo", u"", u"91", u"1", u"91 "},
              {u"3", u"Cy", u" - ", u"91", u"1", u"91  - "}});
  Open();
  EXPECT_EQ(Paste(u"91\t98001"), Ids{u"1"});
  EXPECT_EQ(Told(), u"Not found in the list on the left: 91.");
}

TEST_F(PastedTextTest, CopiedListCanBePastedIfNumbersBeginWithZero) {
  Candidates({{u"1", u"Anna", u"0170123", u"49", u"1", u"49 0170123"},
              {u"2", u"Bert", u"0170124", u"+49", u"1", u"+49 0170124"},
              {u"3", u"Cora", u"0", u"", u"1", u"0"}});
  OpenPicker();
  ASSERT_TRUE(Complete());
  form->cmdSelectAll.UserClicks();
  form->cmdCopy.UserClicks();
  EXPECT_EQ(Paste(String(*screen.Clipboard)), (Ids{u"1", u"2", u"3"}));
  EXPECT_TRUE(screen.Messages.empty());
}

TEST_F(PastedTextTest, KeysInTheListDoTheSame) {
  Open();
  Take({3});
  form->vsfGroupContacts.UserFocuses(true);
  form->UserPresses(u'C', controls::ShiftMask::Ctrl);
  EXPECT_EQ(screen.Clipboard, u"Cora\t\r\n");
  screen.Clipboard = u"Anna Ek";
  form->UserPresses(u'V', controls::ShiftMask::Ctrl);
  EXPECT_EQ(form->Members().Count(), 2);
  form->UserPresses(u'Z', controls::ShiftMask::Ctrl);
  EXPECT_EQ(form->Members().Count(), 1);
  form->txtGroupName.UserFocuses(true);  // a text box has its own keys
  form->UserPresses(u'Z', controls::ShiftMask::Ctrl);
  EXPECT_EQ(form->Members().Count(), 1);
}

TEST_F(PastedTextTest, TextOfManyKindsDoesNoHarm) {
  Open();
  Paste(u"\x1\xD800;\xDC00\t=1+1\r+\n()\n(0)\n-");
  EXPECT_EQ(form->Members().Count(), 0);
  EXPECT_EQ(ErrorsLogged(), 0);
}

}  // namespace
}  // namespace ktrv::forms
