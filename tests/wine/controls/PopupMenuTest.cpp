#include "windows/controls/PopupMenu.h"

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "controls/Menu.h"
#include "tests/scripthost/UiInput.h"
#include "tests/wine/controls/Play.h"
#include "tests/wine/controls/PlayForm.h"

namespace ktrv::windows {
namespace {

namespace UiInput = scripthost::UiInput;

class APopupMenu : public testing::Test {
 protected:
  APopupMenu() {
    menu_.Items = {{.Caption = u"-"},
                   {.Caption = u"&Folder", .Click = [this] { chosen_ = u"Folder"; }},
                   {.Caption = u"&Hidden", .Visible = false},
                   {.Caption = u"-"},
                   {.Caption = u"&Group", .Click = [this] { chosen_ = u"Group"; }},
                   {.Caption = u"-"},
                   {.Caption = u"-"},
                   {.Caption = u"&Copy", .Enabled = false, .Click = [this] { chosen_ = u"Copy"; }},
                   {.Caption = u"-"}};
    form_.Show();
    Pump();
  }

  static HWND MenuWindow() { return FindWindowW(L"#32768", nullptr); }
  static bool IsShown() { return MenuWindow() && IsWindowVisible(MenuWindow()); }

  /// Shows the menu while another thread plays its user; the user has five seconds to find it.
  template <class User>
  void ShowAndPlay(User play) {
    std::thread user([&] {
      for (int i = 0; i < 500 && !IsShown(); ++i) Sleep(10);
      found_ = IsShown();
      if (found_) play();
    });
    screen_.ShowMenu(form_, menu_, controls::Screen::Point{600, 600});
    user.join();
    EXPECT_TRUE(found_) << "no menu was shown";
  }

  Win32Screen screen_;
  PlayForm form_{screen_};
  controls::Menu menu_;
  String chosen_;
  std::atomic<bool> found_ = false;
};

TEST_F(APopupMenu, RunsWhatTheMouseChose) {
  ShowAndPlay([] {
    RECT item{};
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(MenuWindow(), MN_GETHMENU, 0, 0));
    GetMenuItemRect(nullptr, menu, 2, &item);
    POINT middle{(item.left + item.right) / 2, (item.top + item.bottom) / 2};
    ScreenToClient(MenuWindow(), &middle);
    UiInput::Click(MenuWindow(), middle, 0);
  });
  EXPECT_EQ(chosen_, u"Group");
}

TEST_F(APopupMenu, RunsWhatTheArrowsAndEnterChose) {
  ShowAndPlay([this] {
    for (const WORD key : std::array<WORD, 3>{VK_DOWN, VK_DOWN, VK_RETURN}) {
      UiInput::Press(WindowOf(form_.Tree), key, 0);
    }
  });
  EXPECT_EQ(chosen_, u"Group");
}

TEST_F(APopupMenu, RunsWhatItsLetterNames) {
  ShowAndPlay([this] { UiInput::Press(WindowOf(form_.Tree), 'F', 0); });
  EXPECT_EQ(chosen_, u"Folder");
}

TEST_F(APopupMenu, RunsNothingAfterEscape) {
  ShowAndPlay([this] { UiInput::Press(WindowOf(form_.Tree), VK_ESCAPE, 0); });
  EXPECT_EQ(chosen_, u"");
  EXPECT_FALSE(IsShown());
}

TEST_F(APopupMenu, SeparatesOnlyVisibleItems) {
  int items = 0;
  ShowAndPlay([&] {
    items =
        GetMenuItemCount(reinterpret_cast<HMENU>(SendMessageW(MenuWindow(), MN_GETHMENU, 0, 0)));
    UiInput::Press(WindowOf(form_.Tree), VK_ESCAPE, 0);
  });
  EXPECT_EQ(items, 5);  // Folder, a line, Group, a line, Copy
}

TEST_F(APopupMenu, ShowsNothingWhenAllItemsAreHidden) {
  for (auto& item : menu_.Items) item.Visible = false;
  screen_.ShowMenu(form_, menu_, {});
  EXPECT_EQ(chosen_, u"");
}

}  // namespace
}  // namespace ktrv::windows
