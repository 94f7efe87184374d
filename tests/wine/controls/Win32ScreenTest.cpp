#include "windows/controls/Win32Screen.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"

// This program's entries in its import table.
#ifdef _WIN64
extern "C" decltype(&PostMessageW) importedPostMessage __asm__("__imp_PostMessageW");
extern "C" decltype(&SetTimer) importedSetTimer __asm__("__imp_SetTimer");
#else
extern "C" decltype(&PostMessageW) importedPostMessage __asm__("__imp__PostMessageW@16");
extern "C" decltype(&SetTimer) importedSetTimer __asm__("__imp__SetTimer@16");
#endif

namespace ktrv::windows {
namespace {

/// Makes a function of the system fail for this program, in all threads.
template <class Function>
class Failing {
 public:
  Failing(Function& imported, Function failing) : imported_(imported), former_(imported) {
    Set(failing);
  }
  ~Failing() { Set(former_); }
  Failing(const Failing&) = delete;
  Failing& operator=(const Failing&) = delete;

 private:
  void Set(Function function) {
    DWORD access = 0;
    VirtualProtect(&imported_, sizeof imported_, PAGE_READWRITE, &access);
    imported_ = function;
    VirtualProtect(&imported_, sizeof imported_, access, &access);
  }
  Function& imported_;
  Function former_;
};

/// As when the thread's queue has its most messages: 10,000, unless the machine is set otherwise.
struct FullQueue : Failing<decltype(&PostMessageW)> {
  FullQueue() : Failing(importedPostMessage, &Refuse) {}
  static BOOL WINAPI Refuse(HWND, UINT, WPARAM, LPARAM) {
    SetLastError(ERROR_NOT_ENOUGH_QUOTA);
    return FALSE;
  }
};

/// As when the system has no more timers.
struct NoTimers : Failing<decltype(&SetTimer)> {
  NoTimers() : Failing(importedSetTimer, &Refuse) {}
  static UINT_PTR WINAPI Refuse(HWND, UINT_PTR, UINT, TIMERPROC) { return 0; }
};

TEST(AScreen, RunsWhatAnotherThreadPostsOnItsOwn) {
  Win32Screen screen;
  std::thread::id ran;
  std::thread([&] { screen.Post([&] { ran = std::this_thread::get_id(); }); }).join();
  EXPECT_TRUE(PumpUntil([&] { return ran == std::this_thread::get_id(); }));
}

TEST(AScreen, KeepsTheOrderOfWhatIsPosted) {
  Win32Screen screen;
  std::string order;
  for (const char name : {'a', 'b', 'c'}) screen.Post([&order, name] { order += name; });
  EXPECT_TRUE(PumpUntil([&] { return order.size() == 3; }));
  EXPECT_EQ(order, "abc");
}

TEST(AScreen, DropsWhatIsPostedWhenItIsGone) {
  bool ran = false;
  std::function<void(std::function<void()>)> post;
  {
    Win32Screen screen;
    post = screen.Poster();
    screen.Post([&] { ran = true; });
  }
  post([&] { ran = true; });
  Pump();
  EXPECT_FALSE(ran);
}

TEST(AScreen, LetsAClosureThrow) {
  Win32Screen screen;
  bool ran = false;
  screen.Post([] { throw 1; });
  screen.Post([&] { ran = true; });
  EXPECT_TRUE(PumpUntil([&] { return ran; }));
}

TEST(AScreen, LetsInputPassBetweenManyClosures) {
  Win32Screen screen;
  int ran = 0;
  for (int i = 0; i < 200; ++i) {
    screen.Post([&] {
      ++ran;
      const ULONGLONG until = GetTickCount64() + 2;
      while (GetTickCount64() < until) {
      }
    });
  }
  // A timer stands for the user: it comes after everything that is posted.
  int ranBefore = 200;
  SetTimer(nullptr, 0, USER_TIMER_MINIMUM, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message == WM_TIMER && !message.hwnd) {
      ranBefore = ran;
      KillTimer(nullptr, message.wParam);
      break;
    }
    DispatchMessageW(&message);
  }
  EXPECT_LT(ranBefore, 200);
  EXPECT_TRUE(PumpUntil([&] { return ran == 200; }));
}

TEST(AScreen, RunsWhatIsPostedWhileTheQueueOfItsThreadIsFull) {
  Win32Screen screen;
  std::string order;
  {
    const FullQueue full;
    for (const char name : {'a', 'b'}) screen.Post([&order, name] { order += name; });
    EXPECT_EQ(order, "");  // not within Post
  }
  EXPECT_TRUE(PumpUntil([&] { return order.size() == 2; }));
  EXPECT_EQ(order, "ab");
}

TEST(AScreen, RunsWhatAnotherThreadPostsWhileTheQueueIsFull) {
  Win32Screen screen;
  std::thread::id ran;
  {
    const FullQueue full;
    std::thread([&] { screen.Post([&] { ran = std::this_thread::get_id(); }); }).join();
  }
  // Nothing runs while only input is taken.
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT | PM_QS_PAINT);
  EXPECT_EQ(ran, std::thread::id());
  EXPECT_TRUE(PumpUntil([&] { return ran == std::this_thread::get_id(); }));
}

TEST(AScreen, TriesAgainAtTheNextPostIfItCouldNotSchedule) {
  Win32Screen screen;
  int ran = 0;
  {
    const FullQueue full;
    const NoTimers none;
    screen.Post([&] { ++ran; });
  }
  screen.Post([&] { ++ran; });
  EXPECT_TRUE(PumpUntil([&] { return ran == 2; }));
}

TEST(AScreen, GoesOnAfterAPauseWithoutATimer) {
  Win32Screen screen;
  int ran = 0;
  const UINT_PTR waiting = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, nullptr);
  for (int i = 0; i < 2; ++i) {
    screen.Post([&] {
      ++ran;
      Sleep(50);
    });
  }
  {
    const NoTimers none;
    EXPECT_TRUE(PumpUntil([&] { return ran == 2; }));
  }
  KillTimer(nullptr, waiting);
}

TEST(AScreen, ReadsFromTheClipboardWhatItWrote) {
  Win32Screen screen;
  screen.SetClipboardText(u"नमस्ते \xD83D\xDE00");
  EXPECT_EQ(screen.ClipboardText(), u"नमस्ते \xD83D\xDE00");
}

TEST(AScreen, AnswersAMessageWithTheButtonPressed) {
  Win32Screen screen;
  constexpr std::int32_t kYesNo = 4;
  constexpr std::int16_t kNo = 7;
  screen.Post([] {
    HWND box = FindWindowW(L"#32770", L"A question");
    PostMessageW(box, WM_COMMAND, kNo, 0);
  });
  EXPECT_EQ(screen.ShowMessage(u"Really?", u"A question", kYesNo), kNo);
}

/// A real message box over a form, among the windows of a host.
class AMessageBox : public testing::Test {
 protected:
  ~AMessageBox() override {
    for (HWND window : {host_, closed_}) DestroyWindow(window);
  }
  static HWND HostWindow() {
    return CreateWindowExW(0, WC_STATICW, L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                           nullptr, nullptr, nullptr, nullptr);
  }
  static HWND Box() { return FindWindowW(L"#32770", L"A question"); }
  /// Shows the box, looks around while it is open, and presses OK.
  void Ask(const std::function<void()>& look, std::int32_t style = 0) {
    bool looked = false;
    screen_.Post([&] {
      look();
      looked = true;
      PostMessageW(Box(), WM_COMMAND, IDOK, 0);
    });
    screen_.ShowMessage(u"Really?", u"A question", style);
    EXPECT_TRUE(looked);
  }

  Win32Screen screen_;
  PlayForm form_{screen_};
  HWND host_ = HostWindow();
  HWND closed_ = HostWindow();  ///< one that the host itself has disabled
};

TEST_F(AMessageBox, LeavesNoOtherWindowOfTheThreadEnabled) {
  EnableWindow(closed_, FALSE);
  form_.Show();
  Ask([&] {
    EXPECT_FALSE(IsWindowEnabled(WindowOf(form_)));
    EXPECT_FALSE(IsWindowEnabled(host_));
    EXPECT_TRUE(IsWindowEnabled(Box()));
  });
  EXPECT_TRUE(IsWindowEnabled(WindowOf(form_)));
  EXPECT_TRUE(IsWindowEnabled(host_));
  EXPECT_FALSE(IsWindowEnabled(closed_));
  EXPECT_EQ(GetActiveWindow(), WindowOf(form_));
}

TEST_F(AMessageBox, LeavesNoWindowEnabledWhenNoneIsActive) {
  form_.Show();
  form_.Unload();
  SetActiveWindow(host_);
  ShowWindow(closed_, SW_HIDE);
  ShowWindow(host_, SW_HIDE);
  ShowWindow(host_, SW_SHOWNA);
  ASSERT_EQ(GetActiveWindow(), nullptr);
  Ask([&] { EXPECT_FALSE(IsWindowEnabled(host_)); });
  EXPECT_TRUE(IsWindowEnabled(host_));
}

TEST_F(AMessageBox, LetsNoKeyReachTheFormBelow) {
  int pressed = 0;
  form_.Cancel.Click = [&] { ++pressed; };
  form_.Show();
  Ask([&] {
    PostMessageW(WindowOf(form_.Number), WM_KEYDOWN, VK_ESCAPE, 1);
    SendMessageW(WindowOf(form_), WM_CLOSE, 0, 0);
    Pump();
  });
  Pump();
  EXPECT_EQ(pressed, 0);
  EXPECT_TRUE(form_.IsLoaded());
}

TEST_F(AMessageBox, LosesNeitherFrontNorKeyboardToAFormShownMeanwhile) {
  PlayForm late(screen_);
  form_.Show();
  Ask([&] {
    late.Show();
    form_.Show();
    Pump();
    EXPECT_EQ(GetActiveWindow(), Box());
    EXPECT_FALSE(IsWindowEnabled(WindowOf(late)));
    EXPECT_FALSE(IsWindowEnabled(WindowOf(form_)));
  });
  EXPECT_TRUE(IsWindowEnabled(WindowOf(late)));
  EXPECT_TRUE(IsWindowEnabled(WindowOf(form_)));
}

TEST_F(AMessageBox, ShowsTheIconOfItsStyleAndNoOther) {
  struct {
    std::int32_t Style;
    LPWSTR Icon;
  } const kCases[] = {{16, IDI_HAND}, {32, IDI_QUESTION}, {48, IDI_EXCLAMATION}};
  form_.Show();
  for (const auto& [style, icon] : kCases) {
    HICON shown = nullptr;
    Ask(
        [&] {
          for (HWND part = nullptr; (part = FindWindowExW(Box(), part, WC_STATICW, nullptr));) {
            if (GetWindowLongPtrW(part, GWL_STYLE) & SS_ICON) {
              shown = reinterpret_cast<HICON>(SendMessageW(part, STM_GETICON, 0, 0));
            }
          }
        },
        style);
    EXPECT_EQ(shown, LoadIconW(nullptr, icon)) << style;
  }
}

TEST(TheUsersLanguage, CapitalisesUnitForUnit) {
  String text = u"stra\u00DFe \u00E9\u0439";
  Win32Language().ToUpper(text);
  EXPECT_EQ(text, u"STRA\u00DFE \u00C9\u0419");
}

TEST(TheUsersLanguage, PutsAccentedLettersBesideTheirBaseLetters) {
  const Win32Language language;
  const auto key = [&](StringView text) {
    std::string result;
    language.AppendSortKey(text, result);
    return result;
  };
  EXPECT_LT(key(u"Eric"), key(u"\u00C9ric"));
  EXPECT_LT(key(u"\u00C9ric"), key(u"Erik"));
  EXPECT_LT(key(u"anna"), key(u"Bert"));
}

}  // namespace
}  // namespace ktrv::windows
