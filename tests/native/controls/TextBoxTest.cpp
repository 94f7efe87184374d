#include "controls/TextBox.h"

#include <gtest/gtest.h>

#include "controls/Form.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

struct TextBoxTest : testing::Test {
  tests::ScriptedScreen screen;
  Form form{screen, {}};
  TextBox box{form, {}, 5};
};

TEST_F(TextBoxTest, TypedTextReplacesTheSelection) {
  box.SetText(u"abc");
  box.Select(1, 1);
  box.UserTypes(u"xy");
  EXPECT_EQ(box.Text(), u"axyc");
  EXPECT_EQ(box.SelectionStart(), 3);
  EXPECT_EQ(box.SelectionLength(), 0);
}

TEST_F(TextBoxTest, AnEmptySelectionReplacesNothing) {
  box.SetText(u"abc");
  box.Select(1, 0);
  EXPECT_EQ(box.SelectionLength(), 0);
  box.UserTypes(u"x");
  EXPECT_EQ(box.Text(), u"axbc");
}

TEST_F(TextBoxTest, TypingStopsAtTheLimit) {
  box.UserTypes(u"abcdefgh");
  EXPECT_EQ(box.Text(), u"abcde");
}

TEST_F(TextBoxTest, TheLimitDoesNotSplitASurrogatePair) {
  box.UserTypes(u"abcd\U0001F600");
  EXPECT_EQ(box.Text(), u"abcd");
}

TEST_F(TextBoxTest, TheProgramMayExceedTheLimit) {
  box.SetText(u"abcdefgh");
  EXPECT_EQ(box.Text(), u"abcdefgh");
}

TEST_F(TextBoxTest, ATextBeyondTheLimitTakesNoMoreCharacters) {
  box.SetText(u"abcdefgh");
  box.UserTypes(u"x");
  EXPECT_EQ(box.Text(), u"abcdefgh");
}

TEST_F(TextBoxTest, ChangeIsReportedOncePerChange) {
  int changes = 0;
  box.Change = [&] { ++changes; };
  box.SetText(u"a");
  box.SetText(u"a");
  box.UserTypes(u"b");
  box.UserChanges(u"c");
  box.UserChanges(u"c");
  EXPECT_EQ(changes, 3);
}

TEST_F(TextBoxTest, HalfACharacterThatTheLimitCutOffGoes) {
  const auto limit = static_cast<std::size_t>(box.MaxLength());
  String pasted(limit - 1, u'x');
  box.UserChanges(pasted + char16_t{0xD83D});
  EXPECT_EQ(box.Text(), pasted);
  EXPECT_EQ(box.SelectionStart(), static_cast<int>(limit - 1));
}

TEST_F(TextBoxTest, HalfACharacterMayWaitForItsOtherHalfWhileThereIsRoom) {
  box.UserChanges(u"x\xD83D");
  box.UserChanges(u"x\xD83D\xDE00");
  EXPECT_EQ(box.Text(), u"x\xD83D\xDE00");
}

TEST_F(TextBoxTest, AKeyPressSetToZeroIsDiscarded) {
  box.KeyPress = [](std::int16_t& code) {
    if (code == u'x') code = 0;
  };
  box.UserTypes(u"x");
  box.UserTypes(u"y");
  EXPECT_EQ(box.Text(), u"y");
}

TEST_F(TextBoxTest, AKeyPressMayChangeTheCharacter) {
  box.KeyPress = [](std::int16_t& code) { code = u'Z'; };
  box.UserTypes(u"a");
  EXPECT_EQ(box.Text(), u"Z");
}

TEST_F(TextBoxTest, ControlCodesAreNotText) {
  std::int16_t seen = 0;
  box.KeyPress = [&](std::int16_t& code) { seen = code; };
  box.UserTypes(u"\x16");
  EXPECT_EQ(seen, 22);
  EXPECT_EQ(box.Text(), u"");
}

TEST_F(TextBoxTest, NoTextComesInPastTheFilter) {
  box.Insertion = [](String& text) {
    if (text.find(u'-') != String::npos) text.clear();
  };
  box.SetText(u"1");
  box.Select(0, 1);
  box.UserTypes(u"-2");
  EXPECT_EQ(box.Text(), u"1");
  EXPECT_EQ(box.SelectionLength(), 1);
  box.UserTypes(u"34");
  EXPECT_EQ(box.Text(), u"34");
}

TEST_F(TextBoxTest, TheFilterMayChangeTheText) {
  box.Insertion = [](String& text) { text = u"Z"; };
  box.UserTypes(u"ab");
  EXPECT_EQ(box.Text(), u"Z");
}

TEST_F(TextBoxTest, ATextOfOneCharacterIsAKey) {
  int filtered = 0;
  box.Insertion = [&](String&) { ++filtered; };
  box.KeyPress = [](std::int16_t& code) { code = 0; };
  EXPECT_EQ(box.Admitted(u"x"), u"");
  EXPECT_EQ(box.Admitted(u"xy"), u"xy");
  EXPECT_EQ(filtered, 1);
}

TEST_F(TextBoxTest, WhatTheUserMarksOnTheDisplayIsReplaced) {
  box.SetText(u"abc");
  box.UserSelects(1, 2);
  box.UserTypes(u"xy");
  EXPECT_EQ(box.Text(), u"axy");
}

TEST_F(TextBoxTest, TheSelectionStaysInsideTheText) {
  box.SetText(u"abc");
  box.Select(2, 9);
  EXPECT_EQ(box.SelectionLength(), 1);
  box.Select(-1, 1);
  EXPECT_EQ(box.SelectionStart(), 0);
}

struct CompletionTest : testing::Test {
  CompletionTest() {
    box.Completion = [this](StringView typed) {
      asked.push_back(String(typed));
      return known;
    };
  }
  void Type(StringView text) {
    for (const char16_t unit : text) box.UserTypes(String(1, unit));
  }
  String Selected() const {
    return box.Text().substr(static_cast<std::size_t>(box.SelectionStart()),
                             static_cast<std::size_t>(box.SelectionLength()));
  }

  tests::ScriptedScreen screen;
  Form form{screen, {}};
  TextBox box{form, {}, 8};
  String known = u"Berlin";
  std::vector<String> asked;
};

TEST_F(CompletionTest, WhatIsAddedIsSelectedAndTypingGoesOnOverIt) {
  Type(u"Be");
  EXPECT_EQ(box.Text(), u"Berlin");
  EXPECT_EQ(Selected(), u"rlin");
  Type(u"r");
  EXPECT_EQ(Selected(), u"lin");
  Type(u"n");
  EXPECT_EQ(box.Text(), u"Bern");
  EXPECT_EQ(Selected(), u"");
  EXPECT_EQ(asked, (std::vector<String>{u"B", u"Be", u"Ber", u"Bern"}));
}

TEST_F(CompletionTest, OnlyWhatStartsWithWhatWasTypedAndFitsIsAdded) {
  for (const StringView other : {u"", u"B", u"berlin", u"Paris", u"Berlin-Mitte"}) {
    known = other;
    box.SetText({});
    Type(u"Be");
    EXPECT_EQ(box.Text(), u"Be") << ToUtf8(other);
  }
}

TEST_F(CompletionTest, NothingIsAddedInTheMiddleToPastedTextOrByTheProgram) {
  box.SetText(u"Br");
  box.Select(1, 0);
  Type(u"e");
  EXPECT_EQ(box.Text(), u"Ber");
  box.SetText({});
  box.UserTypes(u"Ber");
  EXPECT_EQ(box.Text(), u"Ber");
  box.SetText(u"Be");
  EXPECT_EQ(box.Text(), u"Be");
  EXPECT_TRUE(asked.empty());
}

TEST_F(CompletionTest, ACharacterOutsideTheBasicPlaneIsCompletedWhole) {
  known = u"\U0001F600\U0001F601ab";
  box.UserTypes(u"\U0001F600");
  EXPECT_EQ(box.Text(), known);
  EXPECT_EQ(box.SelectionStart(), 2);
  box.SetText({});
  box.UserChanges(u"\xD83D");  // a display gives the halves one by one
  box.CompleteTyped();
  EXPECT_EQ(box.Text(), u"\xD83D");
}

TEST_F(CompletionTest, ChangeTellsOfTheWholeText) {
  std::vector<String> told;
  box.Change = [&] { told.push_back(box.Text()); };
  Type(u"B");
  EXPECT_EQ(told.back(), u"Berlin");
}

}  // namespace
}  // namespace ktrv::controls
