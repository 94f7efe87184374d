#include <functional>
#include <gtest/gtest.h>

#include "tests/scripthost/UiInput.h"
#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"
#include "windows/base/WideText.h"

namespace ktrv::windows {
namespace {

namespace UiInput = scripthost::UiInput;

class TheEditorControls : public testing::Test {
 protected:
  TheEditorControls() {
    form_.Combo.AddItem(u"");
    form_.Combo.AddItem(u"Male");
    form_.Combo.AddItem(u"Female");
    form_.Show();
    Pump();
  }

  static String TextOf(HWND window) {
    std::wstring text(100, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), 100)));
    return FromWide(text);
  }
  void Type(HWND window, wchar_t letter) {
    PostMessageW(window, WM_CHAR, letter, 1);
    Pump();
  }

  Win32Screen screen_;
  PlayForm form_{screen_};
};

TEST_F(TheEditorControls, TellWhatIsTyped) {
  Type(WindowOf(form_.Number), L'7');
  EXPECT_EQ(form_.Number.Text(), u"7");
}

TEST_F(TheEditorControls, LetTheFormDiscardACharacter) {
  form_.Number.KeyPress = [](std::int16_t& code) {
    if (code == 'x') code = 0;
  };
  Type(WindowOf(form_.Number), L'x');
  Type(WindowOf(form_.Number), L'5');
  EXPECT_EQ(form_.Number.Text(), u"5");
}

TEST_F(TheEditorControls, StopTypingAtTheLimit) {
  for (int i = 0; i < 8; ++i) Type(WindowOf(form_.Number), L'1');
  EXPECT_EQ(form_.Number.Text(), u"11111");
}

TEST_F(TheEditorControls, ShowTheTextThatTheFormSets) {
  form_.Number.SetText(u"42");
  EXPECT_EQ(TextOf(WindowOf(form_.Number)), u"42");
}

TEST_F(TheEditorControls, CountWithTheArrows) {
  form_.Number.SetText(u"3");
  HWND arrows = WindowOf(form_.Arrows);
  RECT inside{};
  GetClientRect(arrows, &inside);
  LeftClick(arrows, {inside.right / 2, inside.bottom / 4});
  EXPECT_EQ(form_.Number.Text(), u"4");
  LeftClick(arrows, {inside.right / 2, inside.bottom * 3 / 4});
  EXPECT_EQ(form_.Number.Text(), u"3");
}

TEST_F(TheEditorControls, HaveTheItemThatIsShownHoweverADroppedDownListIsLeft) {
  HWND combo = WindowOf(form_.Combo);
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  ASSERT_TRUE(GetComboBoxInfo(combo, &parts));
  const auto press = [&](WORD key) { SendMessageW(combo, WM_KEYDOWN, key, 1); };
  const std::function<void()> leavings[] = {
      [&] { press(VK_RETURN); },
      [&] { press(VK_ESCAPE); },
      [&] { SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0); },
      [&] { SetFocus(WindowOf(form_.Number)); },
  };
  for (const auto& leave : leavings) {
    for (const bool isPointedAt : {false, true}) {
      form_.Combo.SetListIndex(1);
      SetFocus(combo);
      SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
      press(VK_DOWN);
      // The item below the pointer is selected without a notification.
      if (isPointedAt) SendMessageW(parts.hwndList, LB_SETCURSEL, 1, 0);
      leave();
      Pump();
      EXPECT_EQ(TextOf(combo), form_.Combo.Text()) << &leave - leavings << isPointedAt;
    }
  }
}

TEST_F(TheEditorControls, LieAboveTheFrameAroundThem) {
  HWND below = WindowOf(form_.Date);
  while (below && below != WindowOf(form_.Frame)) below = GetWindow(below, GW_HWNDNEXT);
  EXPECT_NE(below, nullptr);
}

TEST_F(TheEditorControls, CheckABoxBothWays) {
  HWND box = WindowOf(form_.Check);
  SendMessageW(box, BM_CLICK, 0, 0);
  EXPECT_TRUE(form_.Check.Checked());
  form_.Check.SetChecked(false);
  EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

TEST_F(TheEditorControls, ChooseFromTheListBothWays) {
  HWND combo = WindowOf(form_.Combo);
  form_.Combo.SetListIndex(1);
  EXPECT_EQ(TextOf(combo), u"Male");
  SendMessageW(combo, WM_KEYDOWN, VK_DOWN, 1);
  EXPECT_EQ(form_.Combo.Text(), u"Female");
}

TEST_F(TheEditorControls, ShowADateOrNone) {
  using namespace std::chrono;
  HWND picker = WindowOf(form_.Date);
  SYSTEMTIME shown{};
  EXPECT_EQ(DateTime_GetSystemtime(picker, &shown), GDT_NONE);
  form_.Date.SetValue(DateTime(local_days(year(1980) / 2 / 29)));
  EXPECT_EQ(DateTime_GetSystemtime(picker, &shown), GDT_VALID);
  EXPECT_EQ(shown.wYear, 1980);
  EXPECT_EQ(shown.wDay, 29);
}

TEST_F(TheEditorControls, LayAProgressBarOverAPanelOfTheStatusBar) {
  form_.Progress.PlaceIn(form_.Status, 2);
  HWND bar = WindowOf(form_.Progress);
  EXPECT_EQ(GetParent(bar), WindowOf(form_.Status));
  RECT panel{};
  SendMessageW(WindowOf(form_.Status), SB_GETRECT, 1, reinterpret_cast<LPARAM>(&panel));
  RECT place{};
  GetWindowRect(bar, &place);
  MapWindowPoints(nullptr, WindowOf(form_.Status), reinterpret_cast<POINT*>(&place), 2);
  EXPECT_TRUE(EqualRect(&place, &panel));
}

TEST_F(TheEditorControls, MoveTheProgressBarWithItsPanel) {
  form_.Progress.PlaceIn(form_.Status, 2);
  form_.Resize(12000, 6000);
  RECT panel{};
  SendMessageW(WindowOf(form_.Status), SB_GETRECT, 1, reinterpret_cast<LPARAM>(&panel));
  RECT place{};
  GetWindowRect(WindowOf(form_.Progress), &place);
  MapWindowPoints(nullptr, WindowOf(form_.Status), reinterpret_cast<POINT*>(&place), 2);
  EXPECT_EQ(place.left, panel.left);
}

TEST_F(TheEditorControls, TakeOnlyWholeCharactersOfAPastedText) {
  screen_.SetClipboardText(u"1234\xD83D\xDE00");
  SendMessageW(WindowOf(form_.Number), WM_PASTE, 0, 0);
  EXPECT_EQ(form_.Number.Text(), u"1234");
  EXPECT_EQ(TextOf(WindowOf(form_.Number)), u"1234");
}

/// A box for whole numbers, as the forms make one.
class ABoxForNumbers : public TheEditorControls {
 protected:
  ABoxForNumbers() {
    form_.Number.KeyPress = [this](std::int16_t& code) {
      constexpr std::int16_t kPaste = 22;
      if (code == kPaste ? !IsNumber(*screen_.ClipboardText()) : code < '0' || code > '9') {
        code = 0;
      }
    };
    form_.Number.Insertion = [](String& text) {
      while (!text.empty() && text.back() < u' ') text.pop_back();
      if (!IsNumber(text)) text.clear();
    };
    form_.Number.SetText(u"7");
    form_.Number.SetFocus();
    Send(EM_SETSEL, 1, 1);
  }
  static bool IsNumber(StringView text) { return IsDecimalDigits(text); }
  void Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    SendMessageW(WindowOf(form_.Number), message, wParam, lParam);
  }
  void ShowsAndHolds(StringView text, const char* how) {
    EXPECT_EQ(form_.Number.Text(), text) << how;
    EXPECT_EQ(TextOf(WindowOf(form_.Number)), text) << how;
  }
  /// In each way in which a text of several characters gets into a box.
  void InEachWay(const std::function<void(const char* how, const std::function<void()>&)>& check,
                 StringView text) {
    const std::wstring wide = ToWide(text);
    screen_.SetClipboardText(text);
    HWND box = WindowOf(form_.Number);
    check("the menu", [&] { Send(WM_PASTE); });
    check("Shift and Insert", [&] {
      UiInput::Press(box, VK_INSERT, MK_SHIFT);
      Pump();
    });
    check("an input method",
          [&] { Send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str())); });
  }
};

TEST_F(ABoxForNumbers, TakesNoTextThatItsFilterRefuses) {
  for (const StringView refused : {u"-5", u"1a", u"12 34"}) {
    InEachWay(
        [&](const char* how, const std::function<void()>& insert) {
          insert();
          ShowsAndHolds(u"7", how);
        },
        refused);
  }
}

TEST_F(ABoxForNumbers, TakesANumberWithTheLineEndOfASpreadsheet) {
  InEachWay(
      [&](const char* how, const std::function<void()>& insert) {
        insert();
        ShowsAndHolds(u"712", how);
        form_.Number.SetText(u"7");
        Send(EM_SETSEL, 1, 1);
      },
      u"12\r\n");
}

TEST_F(ABoxForNumbers, TakesNoPartOfARefusedTextThatIsTooLong) {
  screen_.SetClipboardText(u"12345678-9");
  Send(WM_PASTE);
  ShowsAndHolds(u"7", "the menu");
}

TEST_F(ABoxForNumbers, PutsAPastedNumberInThePlaceOfTheSelection) {
  form_.Number.SetText(u"1234");
  Send(EM_SETSEL, 1, 3);
  screen_.SetClipboardText(u"99");
  Send(WM_PASTE);
  ShowsAndHolds(u"1994", "the menu");
  Type(WindowOf(form_.Number), L'5');
  ShowsAndHolds(u"19954", "typed behind it");
}

TEST_F(TheEditorControls, LoseNoTextBehindWhichTheFormPutTheCaret) {
  form_.Number.SetText(u"91");
  form_.Number.GotFocus = [this] { form_.Number.Select(2, 0); };
  form_.Check.SetFocus();
  Pump();
  form_.Grid.SetFocus();
  PressKey(VK_TAB);
  ASSERT_EQ(GetFocus(), WindowOf(form_.Number));
  Type(WindowOf(form_.Number), L'4');
  EXPECT_EQ(form_.Number.Text(), u"914");
}

TEST_F(TheEditorControls, EnterInAHalfTypedDateDoesNotKeepTheOldOne) {
  using std::chrono::year;
  form_.Date.SetValue(DateTime(std::chrono::local_days(year(1985) / 3 / 14)));
  std::optional<DateTime> saved;
  int saves = 0;
  form_.Ok.Click = [&] {
    ++saves;
    saved = form_.Date.Value();
  };
  HWND picker = WindowOf(form_.Date);
  SetFocus(picker);
  UiInput::Press(picker, VK_HOME, 0);
  UiInput::Press(picker, VK_RIGHT, 0);
  UiInput::Press(picker, '7', 0);
  UiInput::Press(picker, VK_RETURN, 0);
  ASSERT_TRUE(PumpUntil([&] { return saves > 0; }));
  EXPECT_EQ(saves, 1);
  ASSERT_TRUE(saved.has_value());
  EXPECT_NE(*saved, DateTime(std::chrono::local_days(year(1985) / 3 / 14)));
  // What is seen is what was saved.
  SYSTEMTIME shown{};
  EXPECT_EQ(DateTime_GetSystemtime(picker, &shown), GDT_VALID);
  EXPECT_EQ(*saved,
            DateTime(std::chrono::local_days(year(shown.wYear) / std::chrono::month(shown.wMonth) /
                                             std::chrono::day(shown.wDay))));
}

TEST_F(TheEditorControls, LetTheUserPickADateAndTakeItBack) {
  HWND picker = WindowOf(form_.Date);
  RECT inside{};
  GetClientRect(picker, &inside);
  const POINT box{8, inside.bottom / 2};
  UiInput::Click(picker, box, 0);
  ASSERT_TRUE(PumpUntil([this] { return form_.Date.Value().has_value(); }));
  const DateTime day(std::chrono::local_days(std::chrono::year(1980) / 2 / 27));
  form_.Date.SetValue(day);
  UiInput::Click(picker, {box.x + 16, box.y}, 0);
  UiInput::Press(picker, VK_UP, 0);
  EXPECT_TRUE(PumpUntil([&] { return form_.Date.Value() && form_.Date.Value() != day; }));
  UiInput::Click(picker, box, 0);
  EXPECT_TRUE(PumpUntil([this] { return !form_.Date.Value(); }));
}

TEST_F(TheEditorControls, AreNamedByTheLabelInFrontOfThem) {
  HWND before = GetWindow(WindowOf(form_.Number), GW_HWNDPREV);
  EXPECT_EQ(before, WindowOf(form_.Caption));
}

}  // namespace
}  // namespace ktrv::windows
