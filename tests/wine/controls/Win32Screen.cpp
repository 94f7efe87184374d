#include "windows/controls/Win32Screen.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "tests/wine/controls/Play.h"

namespace ktrv::windows {
namespace {

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
