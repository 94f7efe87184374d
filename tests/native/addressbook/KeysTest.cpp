#include <algorithm>

#include "tests/native/addressbook/AddressBookFixture.h"

namespace ktrv::tests {
namespace {

namespace KeyCode = controls::KeyCode;
namespace ShiftMask = controls::ShiftMask;

/// Keys of the window, whichever pane has the focus.
struct KeysTest : AddressBookTest {
  KeysTest() {
    RunAt(RunApplicationAt::RuntAtServer);
    SharedFolders({{u"7", u"Staff"}});
    Groups({{u"6", u"Drivers", u"0"}});
    Counts(Queries::kCountFolderContacts, 2);
    Lists({Item(u"1", u"Anna"), Item(u"D1", u"Acme", u"3")});
    Open();
    Complete();
  }
  /// Presses the key. \return the caption of the editor that it opens
  String OpenedBy(std::int16_t keyCode, std::int16_t shift) {
    String caption;
    screen.PlayModal([&](controls::Form& editor) {
      caption = editor.Caption();
      editor.UserCloses();
    });
    form->UserPresses(keyCode, shift);
    Complete();
    return caption;
  }
  std::ptrdiff_t Loads() const {
    return std::count(screen.Log.begin(), screen.Log.end(), "hourglass");
  }
};

TEST_F(KeysTest, ControlNCreatesAContactAndWithShiftAGroup) {
  EXPECT_EQ(OpenedBy(u'N', ShiftMask::Ctrl), u"Add Shared Contact");
  EXPECT_EQ(OpenedBy(u'N', ShiftMask::Ctrl | ShiftMask::Shift), u"New Group");
}

TEST_F(KeysTest, AltEnterAndF2OpenWhatIsSelectedInThePane) {
  form->vsfContacts.SetFocus();
  form->vsfContacts.SetRow(1);
  EXPECT_EQ(OpenedBy(KeyCode::Enter, ShiftMask::Alt), u"Edit Shared Contact");
  EXPECT_EQ(OpenedBy(KeyCode::F2, ShiftMask::None), u"Edit Shared Contact");
  form->tvwContacts.SetFocus();
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(OpenedBy(KeyCode::Enter, ShiftMask::Alt), u"Edit Folder");
  ClickAndWait(u"SFLD7");  // at the server a tree built anew selects the root
  EXPECT_EQ(OpenedBy(KeyCode::F2, ShiftMask::None), u"Edit Folder");
}

TEST_F(KeysTest, EnterInTheTreeOpensTheNode) {
  form->tvwContacts.SetFocus();
  ClickAndWait(u"SFLD7");
  EXPECT_EQ(OpenedBy(KeyCode::Enter, ShiftMask::None), u"Edit Folder");
}

TEST_F(KeysTest, TheTreesOwnKeysDoNothingButDelete) {
  form->tvwContacts.SetFocus();
  for (const std::int16_t key : {KeyCode::Enter, KeyCode::F2, KeyCode::F5}) {
    form->tvwContacts.UserPresses(key, 0);
  }
  EXPECT_TRUE(screen.Messages.empty());
  EXPECT_EQ(Loads(), 1);
}

TEST_F(KeysTest, F5LoadsTheListAgain) {
  const auto before = Loads();
  form->UserPresses(KeyCode::F5, ShiftMask::None);
  EXPECT_EQ(Loads(), before + 1);
  ASSERT_TRUE(Complete());
}

TEST_F(KeysTest, EscapeAndEnterHaveNoEffectOutsideTheFindBox) {
  form->txtFind.SetText(u"anna");
  form->vsfContacts.SetFocus();
  EXPECT_EQ(form->ShortcutOf(KeyCode::Escape, ShiftMask::None), nullptr);
  EXPECT_EQ(form->ShortcutOf(KeyCode::Enter, ShiftMask::None), nullptr);
  EXPECT_EQ(form->ShortcutOf(KeyCode::Down, ShiftMask::None), nullptr);
}

TEST_F(KeysTest, OtherModifierKeysMakeAnotherKey) {
  EXPECT_EQ(form->ShortcutOf(KeyCode::F5, ShiftMask::Ctrl), nullptr);
  EXPECT_EQ(form->ShortcutOf(KeyCode::F3, ShiftMask::Alt), nullptr);
}

TEST_F(KeysTest, OnlyKeysThatGoOnRepeatWhileTheyAreHeld) {
  form->txtFind.SetFocus();
  for (const std::int16_t key : {KeyCode::F3, KeyCode::Enter}) {
    EXPECT_TRUE(form->ShortcutOf(key, ShiftMask::None)->Repeats) << key;
    EXPECT_TRUE(form->ShortcutOf(key, ShiftMask::Shift)->Repeats) << key;
  }
  for (const std::int16_t key : {KeyCode::Down, KeyCode::Escape}) {
    EXPECT_FALSE(form->ShortcutOf(key, ShiftMask::None)->Repeats) << key;
  }
  EXPECT_FALSE(form->ShortcutOf(KeyCode::F5, ShiftMask::None)->Repeats);
  EXPECT_FALSE(form->ShortcutOf(u'N', ShiftMask::Ctrl)->Repeats);
}

TEST_F(KeysTest, AKeyOfAClosedWindowHasNoEffect) {
  form->Unload();
  const auto before = Loads();
  form->UserPresses(KeyCode::F5, ShiftMask::None);
  EXPECT_EQ(Loads(), before);
}

TEST_F(KeysTest, EachButtonNamesItsKeyAndHasAnAccessKey) {
  for (const auto& button : form->tlbMain.Buttons()) {
    EXPECT_EQ(button.ToolTip.back(), u')') << ToUtf8(button.Key);
    EXPECT_EQ(button.Caption.front(), u'&') << ToUtf8(button.Key);
  }
}

}  // namespace
}  // namespace ktrv::tests
