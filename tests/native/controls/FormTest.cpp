#include "controls/Form.h"

#include <gtest/gtest.h>
#include <stdexcept>

#include "controls/CommandButton.h"
#include "controls/TextBox.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::controls {
namespace {

using Log = std::vector<std::string>;

/// Tells the screen's log what runs in it.
struct LoggedForm : Form {
  explicit LoggedForm(tests::ScriptedScreen& scripted)
      : Form(scripted, {.Caption = u"Form", .Width = 4000, .Height = 3000}), Scripted(scripted) {}
  ~LoggedForm() override { Unload(); }

  void Form_Load() override {
    Scripted.Log.push_back("Load");
    if (WhenLoaded) WhenLoaded();
  }
  void Form_Resize() override { Scripted.Log.push_back("Resize"); }
  void Form_QueryUnload() override {
    Scripted.Log.push_back("QueryUnload");
    if (WhenUnloading) WhenUnloading();
  }

  tests::ScriptedScreen& Scripted;
  std::function<void()> WhenLoaded;
  std::function<void()> WhenUnloading;
  TextBox First{*this, {}};
  TextBox Second{*this, {}};
};

struct FormTest : testing::Test {
  tests::ScriptedScreen screen;
};

TEST_F(FormTest, ShowingMakesTheWindowLoadsAndLaysOutBeforeItAppears) {
  LoggedForm form(screen);
  form.Show();
  EXPECT_EQ(screen.Log, (Log{"realise", "Load", "Resize", "show"}));
  EXPECT_TRUE(form.IsLoaded());
  EXPECT_TRUE(form.IsVisible());
}

TEST_F(FormTest, ShownAgainItOnlyComesToTheFront) {
  LoggedForm form(screen);
  form.Show();
  screen.Log.clear();
  form.Show();
  EXPECT_EQ(screen.Log, (Log{"show"}));
}

TEST_F(FormTest, UnloadingHidesAtOnceAndTakesTheWindowAwayLater) {
  LoggedForm form(screen);
  form.Show();
  screen.Log.clear();
  form.Unload();
  EXPECT_EQ(screen.Log, (Log{"QueryUnload", "hide"}));
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_FALSE(form.IsVisible());
  screen.Pump();
  EXPECT_EQ(screen.Log.back(), "gone");
}

/// The host may run a message loop when its window loses the activation.
TEST_F(FormTest, UnloadedWhileItIsShownItsWindowIsTakenAwayAfterwards) {
  LoggedForm form(screen);
  screen.WhileShown = [this](Form& shown) {
    shown.Unload();
    screen.Pump();
    EXPECT_EQ(screen.Log.back(), "hide");
    EXPECT_FALSE(shown.IsGone());
  };
  form.Show();
  screen.Pump();
  EXPECT_EQ(screen.Log.back(), "gone");
  EXPECT_TRUE(form.IsGone());
}

/// E.g. while it is rolled back.
TEST_F(FormTest, StoppedAgainWhileItStopsItStaysOpen) {
  LoggedForm form(screen);
  CommandButton stop(form, {}, u"Stop");
  form.Show();
  int inputs = 0;
  screen.WhileWorking = [&](Form& working) {
    if (++inputs != 2) working.UserCloses();
  };
  {
    Form::Work work(form, stop);
    EXPECT_TRUE(work.IsToStop());
  }
  EXPECT_EQ(inputs, 2);
  inputs = 1;  // a work that is not stopped takes no more input at its end
  {
    Form::Work work(form, stop);
    EXPECT_FALSE(work.IsToStop());
  }
  EXPECT_EQ(inputs, 2);
  EXPECT_TRUE(form.IsLoaded());
}

TEST_F(FormTest, UnloadingTwiceRunsTheEventOnce) {
  LoggedForm form(screen);
  form.Show();
  screen.Log.clear();
  form.Unload();
  form.Unload();
  EXPECT_EQ(screen.Log, (Log{"QueryUnload", "hide"}));
}

TEST_F(FormTest, UnloadingInsideItsOwnQueryUnloadDoesNotNest) {
  LoggedForm form(screen);
  form.WhenUnloading = [&] { form.Unload(); };
  form.Show();
  screen.Log.clear();
  form.UserCloses();
  EXPECT_EQ(screen.Log, (Log{"QueryUnload", "hide"}));
}

TEST_F(FormTest, AFailedUnloadCanBeTriedAgain) {
  LoggedForm form(screen);
  form.Show();
  form.WhenUnloading = [] { throw std::runtime_error("no"); };
  EXPECT_THROW(form.Unload(), std::runtime_error);
  EXPECT_TRUE(form.IsLoaded());
  form.WhenUnloading = nullptr;
  form.Unload();
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(FormTest, NoDialogStaysLoadedWhenTheHostQuits) {
  LoggedForm form(screen);
  screen.HostQuits = true;
  screen.PlayModal([](Form&) {});
  form.ShowModal();
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(screen.Log, (Log{"realise", "Load", "Resize", "modal", "QueryUnload", "hide", "gone"}));
}

TEST_F(FormTest, UnloadingInsideItsOwnLoadShowsNothing) {
  LoggedForm form(screen);
  form.WhenLoaded = [&] { form.Unload(); };
  form.Show();
  EXPECT_EQ(screen.Log, (Log{"realise", "Load", "QueryUnload", "hide"}));
  EXPECT_FALSE(form.IsVisible());
}

TEST_F(FormTest, UnloadingInsideAControlsEventLeavesTheWindowUntilTheEventIsOver) {
  LoggedForm form(screen);
  form.First.Change = [&] { form.Unload(); };
  form.Show();
  form.First.UserTypes(u"x");
  EXPECT_EQ(screen.Log.back(), "hide");
}

TEST_F(FormTest, LoadedAgainBeforeTheWindowWentItKeepsTheWindow) {
  LoggedForm form(screen);
  form.Show();
  form.Unload();
  screen.Log.clear();
  form.Show();
  screen.Pump();
  EXPECT_EQ(screen.Log, (Log{"Load", "Resize", "show"}));
}

TEST_F(FormTest, LoadedAgainLaterItGetsANewWindow) {
  LoggedForm form(screen);
  form.Show();
  form.Unload();
  screen.Pump();
  screen.Log.clear();
  form.Show();
  EXPECT_EQ(screen.Log, (Log{"realise", "Load", "Resize", "show"}));
}

TEST_F(FormTest, DestroyedWhileLoadedItUnloadsAndItsWindowGoes) {
  {
    LoggedForm form(screen);
    form.Show();
    screen.Log.clear();
  }
  EXPECT_EQ(screen.Log, (Log{"QueryUnload", "hide", "gone"}));
  screen.Pump();
}

TEST_F(FormTest, AFailingLoadLeavesItUnloaded) {
  LoggedForm form(screen);
  form.WhenLoaded = [] { throw std::runtime_error("no"); };
  EXPECT_THROW(form.Show(), std::runtime_error);
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(FormTest, AModalFormReturnsWhenItIsUnloaded) {
  LoggedForm form(screen);
  screen.PlayModal([](Form& shown) { shown.UserCloses(); });
  form.ShowModal();
  EXPECT_EQ(screen.Log, (Log{"realise", "Load", "Resize", "modal", "QueryUnload", "hide", "gone"}));
}

TEST_F(FormTest, ModalFormsNest) {
  LoggedForm outer(screen);
  LoggedForm inner(screen);
  screen.PlayModal([&](Form& shown) {
    inner.ShowModal();
    EXPECT_FALSE(inner.IsLoaded());
    EXPECT_TRUE(outer.IsLoaded());
    shown.Unload();
  });
  screen.PlayModal([](Form& shown) { shown.Unload(); });
  outer.ShowModal();
  EXPECT_FALSE(outer.IsLoaded());
}

TEST_F(FormTest, AModalFormCanBeShownAgain) {
  LoggedForm form(screen);
  for (int round = 0; round < 2; ++round) {
    screen.PlayModal([](Form& shown) { shown.Unload(); });
    form.ShowModal();
  }
  EXPECT_EQ(std::count(screen.Log.begin(), screen.Log.end(), "gone"), 2);
}

TEST_F(FormTest, TheUsersResizeIsLaidOutWhenTheSizeChanged) {
  LoggedForm form(screen);
  form.UserResizes(5000, 3000);
  form.Show();
  screen.Log.clear();
  form.UserResizes(5000, 3000);
  form.UserResizes(6000, 3500);
  EXPECT_EQ(screen.Log, (Log{"Resize"}));
  EXPECT_EQ(form.ScaleWidth(), 6000);
  EXPECT_EQ(form.ScaleHeight(), 3500);
}

TEST_F(FormTest, ResizedByProgramTheWindowIsTold) {
  LoggedForm form(screen);
  form.Show();
  screen.Log.clear();
  form.Resize(6000, 3500);
  EXPECT_EQ(screen.Log, (Log{"size", "Resize"}));
}

TEST_F(FormTest, ControlsAreListedInTheOrderOfTheirMaking) {
  LoggedForm form(screen);
  EXPECT_EQ(form.Controls(), (std::vector<Control*>{&form.First, &form.Second}));
}

TEST_F(FormTest, AControlThatGoesLeavesTheList) {
  LoggedForm form(screen);
  { TextBox third(form, {}); }
  EXPECT_EQ(form.Controls().size(), 2U);
}

TEST_F(FormTest, FocusLeavesOneControlForAnother) {
  LoggedForm form(screen);
  Log events;
  form.First.LostFocus = [&] { events.push_back("lost"); };
  form.Second.GotFocus = [&] { events.push_back("got"); };
  form.First.SetFocus();
  form.Second.SetFocus();
  form.Second.SetFocus();
  EXPECT_EQ(events, (Log{"lost", "got"}));
  EXPECT_FALSE(form.First.HasFocus());
  EXPECT_TRUE(form.Second.HasFocus());
}

TEST_F(FormTest, TwoControlsNeverHaveTheFocus) {
  LoggedForm form(screen);
  Log events;
  form.First.LostFocus = [&] { events.push_back("lost"); };
  form.Second.GotFocus = [&] { events.push_back("got"); };
  form.First.UserFocuses(true);
  form.Second.UserFocuses(true);
  EXPECT_EQ(events, (Log{"lost", "got"}));
  EXPECT_FALSE(form.First.HasFocus());
  EXPECT_TRUE(form.Second.HasFocus());
}

TEST_F(FormTest, AFocusThatIsPassedOnIsNotKept) {
  LoggedForm form(screen);
  TextBox third(form, {});
  form.First.UserFocuses(true);
  form.First.LostFocus = [&] { third.UserFocuses(true); };
  form.Second.UserFocuses(true);
  EXPECT_FALSE(form.First.HasFocus());
  EXPECT_FALSE(form.Second.HasFocus());
  EXPECT_TRUE(third.HasFocus());
}

TEST_F(FormTest, ThePointerIsTheWindowsToo) {
  LoggedForm form(screen);
  form.Load();
  form.SetPointer(MousePointer::Hourglass);
  form.SetPointer(MousePointer::Default);
  EXPECT_EQ(screen.Log, (Log{"realise", "Load", "hourglass", "default"}));
}

TEST_F(FormTest, AShortcutRunsWithItsModifierKeysOnly) {
  LoggedForm form(screen);
  int runs = 0;
  form.Shortcuts.push_back({u'N', ShiftMask::Ctrl, [&] { ++runs; }});
  form.Show();
  form.UserPresses(u'N', ShiftMask::None);
  form.UserPresses(u'N', ShiftMask::Ctrl | ShiftMask::Shift);
  EXPECT_EQ(runs, 0);
  form.UserPresses(u'N', ShiftMask::Ctrl);
  EXPECT_EQ(runs, 1);
}

TEST_F(FormTest, TheFirstShortcutThatWorksNowIsTaken) {
  LoggedForm form(screen);
  std::string ran;
  form.Shortcuts.push_back(
      {KeyCode::F5, ShiftMask::None, [&] { ran += "a"; }, [&] { return form.First.HasFocus(); }});
  form.Shortcuts.push_back({KeyCode::F5, ShiftMask::None, [&] { ran += "b"; }});
  form.Show();
  form.UserPresses(KeyCode::F5, ShiftMask::None);
  form.First.SetFocus();
  form.UserPresses(KeyCode::F5, ShiftMask::None);
  EXPECT_EQ(ran, "ba");
}

TEST_F(FormTest, AShortcutOfAFormThatIsNotLoadedHasNoEffect) {
  LoggedForm form(screen);
  int runs = 0;
  form.Shortcuts.push_back({KeyCode::F5, ShiftMask::None, [&] { ++runs; }});
  form.UserPresses(KeyCode::F5, ShiftMask::None);
  EXPECT_EQ(runs, 0);
}

}  // namespace
}  // namespace ktrv::controls
