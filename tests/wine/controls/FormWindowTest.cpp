#include "windows/controls/FormWindow.h"

#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <thread>

#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"

namespace ktrv::windows {
namespace {

class AFormWindow : public testing::Test {
 protected:
  AFormWindow() {
    form_.Show();
    Pump();
  }
  void Type(wchar_t letter, bool repeated = false) {
    PostMessageW(GetFocus(), WM_SYSCHAR, letter, repeated ? 0x60000001 : 0x20000001);
    Pump();
  }

  Win32Screen screen_;
  PlayForm form_{screen_};
};

TEST_F(AFormWindow, HasTheFormsInnerSize) {
  RECT inner{};
  GetClientRect(WindowOf(form_), &inner);
  const Scale scale = Scale::Of(WindowOf(form_));
  EXPECT_EQ(inner.right, scale.ToPixels(9000));
  EXPECT_EQ(inner.bottom, scale.ToPixels(6000));
}

TEST_F(AFormWindow, TellsTheFormItsNewSize) {
  RECT outer{};
  GetWindowRect(WindowOf(form_), &outer);
  const Scale scale = Scale::Of(WindowOf(form_));
  SetWindowPos(WindowOf(form_), nullptr, 0, 0, outer.right - outer.left + scale.ToPixels(1440),
               outer.bottom - outer.top, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_EQ(form_.ScaleWidth(), 9000 + 1440);
}

TEST_F(AFormWindow, CannotBecomeSmallerThanItsMinimum) {
  MINMAXINFO limits{};
  SendMessageW(WindowOf(form_), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_GE(limits.ptMinTrackSize.x, Scale::Of(WindowOf(form_)).ToPixels(3000));
}

TEST_F(AFormWindow, PressesNoButtonByALetterWithoutAlt) {
  bool pressed = false;
  form_.Ok.Click = [&] { pressed = true; };
  SetFocus(WindowOf(form_.Date));
  PostMessageW(GetFocus(), WM_CHAR, L's', 1);
  Pump();
  EXPECT_FALSE(pressed);
  Type(L's');  // with Alt
  EXPECT_TRUE(pressed);
}

TEST_F(AFormWindow, MovesTheFocusWithTabInTheOrderOfTheControls) {
  PressKey(VK_TAB);
  EXPECT_EQ(GetFocus(), WindowOf(form_.Grid));
  EXPECT_TRUE(form_.Grid.HasFocus());
  EXPECT_FALSE(form_.Tree.HasFocus());
  PressKey(VK_TAB);
  EXPECT_EQ(GetFocus(), WindowOf(form_.Number));
}

TEST_F(AFormWindow, GoesToTheControlBehindALabelByItsLetter) {
  Type(L'n');
  EXPECT_EQ(GetFocus(), WindowOf(form_.Number));
}

TEST_F(AFormWindow, PressesAButtonByItsLetter) {
  bool saved = false;
  form_.Ok.Click = [&] { saved = true; };
  Type(L's');
  EXPECT_TRUE(PumpUntil([&] { return saved; }));
}

TEST_F(AFormWindow, PressesAButtonOnceWhileItsLetterIsHeldDown) {
  int pressed = 0;
  form_.Ok.Click = [&] { ++pressed; };
  Type(L's');
  for (int repeat = 0; repeat < 5; ++repeat) Type(L's', true);
  EXPECT_TRUE(PumpUntil([&] { return pressed > 0; }));
  Pump();
  EXPECT_EQ(pressed, 1);
}

TEST_F(AFormWindow, PressesItsButtonsWithEnterAndEscape) {
  String pressed;
  form_.Ok.Click = [&] { pressed += u'o'; };
  form_.Cancel.Click = [&] { pressed += u'c'; };
  form_.Number.SetFocus();
  PressKey(VK_RETURN);
  PressKey(VK_ESCAPE);
  EXPECT_TRUE(PumpUntil([&] { return pressed == u"oc"; }));
}

TEST_F(AFormWindow, StaysOpenOnEscapeWithoutAButtonForIt) {
  PressKey(VK_ESCAPE);
  EXPECT_TRUE(form_.IsVisible());
}

TEST_F(AFormWindow, UnloadsTheFormWhenItsUserClosesIt) {
  PostMessageW(WindowOf(form_), WM_CLOSE, 0, 0);
  EXPECT_TRUE(PumpUntil([&] { return !form_.IsLoaded(); }));
  EXPECT_TRUE(PumpUntil([&] { return FormWindow::Of(form_) == nullptr; }));
}

TEST_F(AFormWindow, UnloadsTheFormWhenTheHostDestroysIt) {
  DestroyWindow(WindowOf(form_));
  EXPECT_FALSE(form_.IsLoaded());
}

TEST_F(AFormWindow, SurvivesAHandlerThatThrows) {
  form_.Ok.Click = [] { throw std::runtime_error("a handler's failure"); };
  SendMessageW(WindowOf(form_.Ok), BM_CLICK, 0, 0);
  EXPECT_TRUE(form_.IsVisible());
}

TEST_F(AFormWindow, KeepsTheFocusOfAControlWhileAnotherProgramHasIt) {
  SendMessageW(WindowOf(form_.Tree), WM_KILLFOCUS, 0, 0);
  EXPECT_TRUE(form_.Tree.HasFocus());
}

TEST_F(AFormWindow, GrowsWithTheResolutionOfItsMonitor) {
  HWND window = WindowOf(form_);
  RECT place{0, 0, 1300, 900};
  SendMessageW(window, 0x02E0, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&place));
  RECT tree{};
  GetWindowRect(WindowOf(form_.Tree), &tree);
  EXPECT_EQ(tree.right - tree.left, 3000 * 192 / 1440);
  LOGFONTW font{};
  GetObjectW(reinterpret_cast<HFONT>(SendMessageW(WindowOf(form_.Tree), WM_GETFONT, 0, 0)),
             sizeof font, &font);
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  EXPECT_GT(std::abs(font.lfHeight), std::abs(metrics.lfMessageFont.lfHeight));
}

TEST_F(AFormWindow, ShowsTheHourglassOverAllItsControlsWhileItWorks) {
  const auto shape = [](HWND window) {
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    return GetCursor();
  };
  form_.SetPointer(controls::MousePointer::Hourglass);
  for (HWND window : {WindowOf(form_), WindowOf(form_.Grid), WindowOf(form_.Number)}) {
    EXPECT_EQ(shape(window), LoadCursorW(nullptr, IDC_WAIT));
  }
  form_.SetPointer(controls::MousePointer::Default);
  EXPECT_EQ(shape(WindowOf(form_)), LoadCursorW(nullptr, IDC_ARROW));
}

/// What a form takes of the keyboard and the mouse themselves while it works.
class AWorkingForm : public AFormWindow {
 protected:
  AWorkingForm() {
    form_.Ok.Click = [this] { pressed_ += u'o'; };
    form_.Cancel.Click = [this] { pressed_ += u'c'; };
    form_.Number.SetFocus();
    Pump();
    work_.emplace(form_, form_.Cancel);
  }
  static void Send(INPUT input) { SendInput(1, &input, sizeof input); }
  static void Key(WORD key) {
    for (const DWORD flags : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
      INPUT input{};
      input.type = INPUT_KEYBOARD;
      input.ki = {key, 0, flags, 0, 0};
      Send(input);
    }
  }
  static void ClickOn(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    ClickAt({(place.left + place.right) / 2, (place.top + place.bottom) / 2});
  }
  static void ClickAt(POINT place) {
    SetCursorPos(place.x, place.y);
    for (const DWORD flags : {DWORD{MOUSEEVENTF_LEFTDOWN}, DWORD{MOUSEEVENTF_LEFTUP}}) {
      INPUT input{};
      input.type = INPUT_MOUSE;
      input.mi = {0, 0, 0, flags, 0, 0};
      Send(input);
    }
  }
  /// A place in the caption that the window reports as this part, seen from the right.
  std::optional<POINT> PlaceOf(LRESULT part) const {
    HWND window = WindowOf(form_);
    RECT outer{};
    GetWindowRect(window, &outer);
    POINT inner{};
    ClientToScreen(window, &inner);
    const LONG y = inner.y - GetSystemMetrics(SM_CYCAPTION) / 2;
    for (LONG x = outer.right; x > outer.left; --x) {
      if (SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)) == part) return POINT{x - 4, y};
    }
    return std::nullopt;
  }
  /// Whether the work is stopped within so many milliseconds.
  bool IsStoppedWithin(ULONGLONG patience) {
    for (const ULONGLONG end = GetTickCount64() + patience; GetTickCount64() < end; Sleep(10)) {
      if (work_->IsToStop()) return true;
    }
    return false;
  }

  String pressed_;
  std::optional<controls::Form::Work> work_;
};

TEST_F(AWorkingForm, IsStoppedByEscape) {
  Key(VK_ESCAPE);
  EXPECT_TRUE(IsStoppedWithin(5000));
  work_.reset();
  Pump();
  EXPECT_EQ(pressed_, u"");
}

TEST_F(AWorkingForm, IsStoppedByItsButton) {
  ClickOn(WindowOf(form_.Cancel));
  EXPECT_TRUE(IsStoppedWithin(5000));
  work_.reset();
  Pump();
  EXPECT_EQ(pressed_, u"");
}

TEST_F(AWorkingForm, IsStoppedByAClickOnItsCloseButton) {
  const auto place = PlaceOf(HTCLOSE);
  ASSERT_TRUE(place);
  ClickAt(*place);
  EXPECT_TRUE(IsStoppedWithin(5000));
  work_.reset();
  Pump();
  EXPECT_TRUE(form_.IsLoaded());
  // The same click closes it now, if it is not the second one of a double click.
  ClickOn(WindowOf(form_.Check));
  ClickAt(*place);
  EXPECT_TRUE(PumpUntil([&] { return !form_.IsLoaded(); }));
}

TEST_F(AWorkingForm, IsStoppedByTheCloseCommandOfTheTaskbar) {
  for (int times = 0; times < 2; ++times) {
    PostMessageW(WindowOf(form_), WM_SYSCOMMAND, SC_CLOSE, 0);
  }
  EXPECT_TRUE(IsStoppedWithin(5000));
  work_.reset();
  Pump();
  EXPECT_TRUE(form_.IsLoaded());
}

/// The work may take a while to stop, or the user clicks twice.
TEST_F(AWorkingForm, StaysOpenIfItIsStoppedAgainBeforeItHasStopped) {
  ClickOn(WindowOf(form_.Cancel));
  EXPECT_TRUE(IsStoppedWithin(5000));
  Key(VK_ESCAPE);
  PostMessageW(WindowOf(form_), WM_SYSCOMMAND, SC_CLOSE, 0);
  ClickOn(WindowOf(form_.Cancel));
  Sleep(200);  // until the input has come
  work_.reset();
  Pump();
  EXPECT_TRUE(form_.IsLoaded());
  EXPECT_EQ(pressed_, u"");
}

TEST_F(AWorkingForm, IsNotCancelledByTheReleaseOfItsStopButton) {
  ClickOn(WindowOf(form_.Cancel));
  EXPECT_TRUE(IsStoppedWithin(5000));
  HWND button = WindowOf(form_.Cancel);
  SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  work_.reset();
  SendMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  Pump();
  EXPECT_EQ(pressed_, u"");
}

TEST_F(AWorkingForm, IsNotCancelledByADoubleClickOnItsStopButton) {
  ClickOn(WindowOf(form_.Cancel));
  EXPECT_TRUE(IsStoppedWithin(5000));
  work_.reset();
  HWND button = WindowOf(form_.Cancel);
  PostMessageW(button, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
  PostMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  Pump();
  EXPECT_EQ(pressed_, u"");
  for (const UINT message : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONUP}}) {
    PostMessageW(button, message, 0, MAKELPARAM(5, 5));
  }
  EXPECT_TRUE(PumpUntil([&] { return pressed_ == u"c"; }));
}

TEST_F(AWorkingForm, IsNotStoppedByTheRestOfItsCaption) {
  HWND window = WindowOf(form_);
  PlayForm other(screen_);
  other.Show();
  PostMessageW(WindowOf(other), WM_SYSCOMMAND, SC_CLOSE, 0);
  form_.Show();
  for (const LRESULT part : {LRESULT{HTMINBUTTON}, LRESULT{HTMAXBUTTON}, LRESULT{HTCAPTION}}) {
    const auto place = PlaceOf(part);
    ASSERT_TRUE(place);
    ClickAt(*place);
  }
  EXPECT_FALSE(IsStoppedWithin(500));
  work_.reset();
  EXPECT_TRUE(other.IsLoaded());
  Pump();
  EXPECT_FALSE(other.IsLoaded());
  EXPECT_TRUE(form_.IsLoaded());
  EXPECT_FALSE(IsIconic(window));
  EXPECT_FALSE(IsZoomed(window));
}

TEST_F(AWorkingForm, DropsAllOtherInput) {
  Key('7');
  Key(VK_RETURN);
  ClickOn(WindowOf(form_.Ok));
  ClickOn(WindowOf(form_.Check));
  SendMessageW(WindowOf(form_.Ok), BM_CLICK, 0, 0);
  EXPECT_FALSE(IsStoppedWithin(500));
  EXPECT_TRUE(form_.Number.HasFocus());
  work_.reset();
  Pump();
  EXPECT_EQ(pressed_, u"");
  EXPECT_EQ(form_.Number.Text(), u"");
  EXPECT_FALSE(form_.Check.Checked());
  // The same input does work now.
  Key('7');
  EXPECT_TRUE(PumpUntil([&] { return form_.Number.Text() == u"7"; }));
  ClickOn(WindowOf(form_.Ok));
  EXPECT_TRUE(PumpUntil([&] { return pressed_ == u"o"; }));
}

TEST_F(AWorkingForm, IsPaintedAndRunsNobodysCode) {
  bool ran = false;
  screen_.Post([&] { ran = true; });
  InvalidateRect(WindowOf(form_), nullptr, TRUE);
  EXPECT_FALSE(IsStoppedWithin(100));
  EXPECT_FALSE(GetUpdateRect(WindowOf(form_), nullptr, FALSE));
  EXPECT_FALSE(ran);
  work_.reset();
  EXPECT_TRUE(PumpUntil([&] { return ran; }));
}

TEST_F(AWorkingForm, IsNotClosed) {
  SendMessageW(WindowOf(form_), WM_CLOSE, 0, 0);
  EXPECT_TRUE(form_.IsLoaded());
  EXPECT_TRUE(IsStoppedWithin(100));
}

class AModalForm : public testing::Test {
 protected:
  Win32Screen screen_;
  PlayForm opener_{screen_};
  PlayForm modal_{screen_};
};

TEST_F(AModalForm, DisablesTheOtherWindowsUntilItCloses) {
  opener_.Show();
  HWND behind = WindowOf(opener_);
  BOOL wasEnabled = TRUE;
  screen_.Post([&] {
    wasEnabled = IsWindowEnabled(behind);
    modal_.Unload();
  });
  modal_.ShowModal();
  EXPECT_FALSE(wasEnabled);
  EXPECT_TRUE(IsWindowEnabled(behind));
  EXPECT_EQ(GetActiveWindow(), behind);
}

TEST_F(AModalForm, HasNoOwnerOfTheHosts) {
  HWND owner = reinterpret_cast<HWND>(1);
  screen_.Post([&] {
    owner = GetWindow(WindowOf(modal_), GW_OWNER);
    modal_.Unload();
  });
  modal_.ShowModal();
  EXPECT_EQ(owner, nullptr);
}

TEST_F(AModalForm, StaysOpenWithItsInputWhenTheFormBehindIsUnloaded) {
  opener_.Show();
  Pump();
  String typed;
  bool stayed = false;
  screen_.Post([&] {
    SetWindowTextW(WindowOf(modal_.Number), L"123");
    opener_.Unload();
    EXPECT_TRUE(PumpUntil([&] { return FormWindow::Of(opener_) == nullptr; }));
    stayed = modal_.IsLoaded() && FormWindow::Of(modal_) && IsWindowVisible(WindowOf(modal_)) &&
             IsWindowEnabled(WindowOf(modal_));
    typed = modal_.Number.Text();
    modal_.Unload();
  });
  modal_.ShowModal();
  EXPECT_TRUE(stayed);
  EXPECT_EQ(typed, u"123");
}

TEST_F(AFormWindow, LeavesADialogOfTheHostThatItOwns) {
  HWND dialog = CreateWindowExW(0, WC_STATICW, L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                WindowOf(form_), nullptr, nullptr, nullptr);
  form_.Unload();
  EXPECT_TRUE(PumpUntil([&] { return FormWindow::Of(form_) == nullptr; }));
  EXPECT_TRUE(IsWindow(dialog));
  DestroyWindow(dialog);
}

void CALLBACK Quit(HWND, UINT, UINT_PTR, DWORD) {
  PostQuitMessage(0);
}

/// A host that is told that its window is disabled may release the last object.
LRESULT CALLBACK UnloadsWhenDisabled(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_ENABLE && !wParam) {
    auto* form = reinterpret_cast<controls::Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (form) form->Unload();
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(AModalForm, EndsIfItIsUnloadedWhileTheHostIsDisabled) {
  HWND host = CreateWindowExW(0, WC_STATICW, L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                              nullptr, nullptr, nullptr);
  SetWindowLongPtrW(host, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&modal_));
  SetWindowLongPtrW(host, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&UnloadsWhenDisabled));
  const UINT_PTR patience = SetTimer(nullptr, 0, 3000, &Quit);
  modal_.ShowModal();
  KillTimer(nullptr, patience);
  MSG message{};
  const bool hung =
      PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) && message.message == WM_QUIT;
  EXPECT_FALSE(hung);
  EXPECT_FALSE(modal_.IsLoaded());
  EXPECT_TRUE(IsWindowEnabled(host));
  DestroyWindow(host);
}

TEST_F(AModalForm, EndsWhenTheHostIsToQuitAndPassesThatOn) {
  screen_.Post([] { PostQuitMessage(7); });
  modal_.ShowModal();
  EXPECT_FALSE(modal_.IsLoaded());
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

/// Whether the first window lies above the second.
bool LiesAbove(HWND first, HWND second) {
  for (HWND next = second; next; next = GetWindow(next, GW_HWNDPREV)) {
    if (next == first) return true;
  }
  return false;
}

TEST_F(AModalForm, LetsNoKeyReachTheDisabledFormBehind) {
  String pressed;
  opener_.Ok.Click = [&] { pressed += u'o'; };
  opener_.Cancel.Click = [&] { pressed += u'c'; };
  opener_.Show();
  bool keysArrived = false;
  screen_.Post([&] {
    HWND box = WindowOf(opener_.Number);
    for (const auto key : {WPARAM{VK_RETURN}, WPARAM{VK_ESCAPE}})
      PostMessageW(box, WM_KEYDOWN, key, 1);
    PostMessageW(box, WM_SYSCHAR, L's', 0x20000001);
    PostMessageW(box, WM_CHAR, L'7', 1);
    Pump();
    MSG left;
    keysArrived = !PeekMessageW(&left, box, WM_KEYFIRST, WM_KEYLAST, PM_NOREMOVE);
    modal_.Unload();
  });
  modal_.ShowModal();
  Pump();
  EXPECT_TRUE(keysArrived);
  EXPECT_EQ(pressed, u"");
  EXPECT_EQ(opener_.Number.Text(), u"");
  // The same keys do work when it is enabled again.
  PostMessageW(WindowOf(opener_.Number), WM_KEYDOWN, VK_RETURN, 1);
  PostMessageW(WindowOf(opener_.Number), WM_CHAR, L'7', 1);
  EXPECT_TRUE(PumpUntil([&] { return pressed == u"o" && opener_.Number.Text() == u"7"; }));
}

TEST_F(AModalForm, LetsNoCommandThatWaitedReachTheFormBehind) {
  int pressed = 0;
  opener_.Ok.Click = [&] { ++pressed; };
  opener_.Show();
  screen_.Post([&] {
    SendMessageW(WindowOf(opener_), WM_COMMAND, IDOK, 0);
    SendMessageW(WindowOf(opener_.Ok), BM_CLICK, 0, 0);
    modal_.Unload();
  });
  modal_.ShowModal();
  EXPECT_EQ(pressed, 0);
  SendMessageW(WindowOf(opener_.Ok), BM_CLICK, 0, 0);
  EXPECT_EQ(pressed, 1);
}

TEST_F(AModalForm, LetsNoCloseMessageReachTheDisabledFormBehind) {
  opener_.Show();
  bool stayed = false;
  screen_.Post([&] {
    SendMessageW(WindowOf(opener_), WM_CLOSE, 0, 0);
    SendMessageW(WindowOf(opener_), WM_SYSCOMMAND, SC_CLOSE, 0);
    stayed = opener_.IsLoaded();
    modal_.Unload();
  });
  modal_.ShowModal();
  ASSERT_TRUE(stayed);
  SendMessageW(WindowOf(opener_), WM_CLOSE, 0, 0);
  EXPECT_FALSE(opener_.IsLoaded());
}

TEST_F(AModalForm, KeepsWindowsDisabledThatAFormBelowItDisabled) {
  PlayForm inner(screen_);
  opener_.Show();
  HWND behind = WindowOf(opener_);
  bool wasEnabled = true;
  screen_.Post([&] {
    screen_.Post([&] {
      modal_.Unload();
      wasEnabled = IsWindowEnabled(behind) != FALSE;
      inner.Unload();
    });
    inner.ShowModal();
  });
  modal_.ShowModal();
  EXPECT_FALSE(wasEnabled);
  EXPECT_TRUE(IsWindowEnabled(behind));
}

TEST_F(AModalForm, LosesNeitherFrontNorKeyboardToOneShownMeanwhile) {
  PlayForm late(screen_);
  opener_.Show();
  const auto focusIsIn = [](HWND form) { return IsChild(form, GetFocus()) != FALSE; };
  screen_.Post([&] {
    HWND modal = WindowOf(modal_);
    for (PlayForm* shown : {&opener_, &late}) {
      shown->Show();
      Pump();
      EXPECT_TRUE(IsWindowVisible(WindowOf(*shown)));
      EXPECT_FALSE(IsWindowEnabled(WindowOf(*shown)));
      EXPECT_TRUE(LiesAbove(modal, WindowOf(*shown)));
      EXPECT_EQ(GetActiveWindow(), modal);
      EXPECT_TRUE(focusIsIn(modal));
      EXPECT_FALSE(focusIsIn(WindowOf(*shown)));
    }
    modal_.Unload();
  });
  modal_.ShowModal();
  EXPECT_TRUE(IsWindowEnabled(WindowOf(opener_)));
  EXPECT_TRUE(IsWindowEnabled(WindowOf(late)));
}

TEST_F(AModalForm, CanOpenAnother) {
  PlayForm second(screen_);
  bool outerWasDisabled = false;
  screen_.Post([&] {
    screen_.Post([&] {
      outerWasDisabled = !IsWindowEnabled(WindowOf(modal_));
      second.Unload();
    });
    second.ShowModal();
    EXPECT_TRUE(IsWindowEnabled(WindowOf(modal_)));
    modal_.Unload();
  });
  modal_.ShowModal();
  EXPECT_TRUE(outerWasDisabled);
}

}  // namespace
}  // namespace ktrv::windows
