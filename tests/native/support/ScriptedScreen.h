#pragma once

#include <deque>
#include <optional>
#include <vector>

#include "common/Error.h"
#include "controls/Input.h"
#include "controls/Menu.h"
#include "controls/Screen.h"
#include "tests/native/support/TestDispatcher.h"
#include "tests/native/support/UserLanguage.h"

namespace ktrv::tests {

/// A screen without windows: the test plays the user and looks at what was shown.
///
///   ScriptedScreen screen;                     // behind the driver, before the session
///   screen.Answer(MessageAnswer::Yes);
///   form.cmdDelete.Click();
///   EXPECT_EQ(screen.LastMessage().Text, u"...");
class ScriptedScreen : public controls::Screen {
 public:
  struct Message {
    String Text;
    String Title;
    std::int32_t Style = 0;
  };
  struct ShownMenu {
    std::vector<String> Names;  ///< of the visible items
    std::optional<Point> At;
  };

  ScriptedScreen();
  ~ScriptedScreen() override;

  // The script.
  /// The button that the next box without an answer gets; without any it is OK.
  void Answer(std::int16_t button) { answers_.push_back(button); }
  /// Runs while the next box is open; the next of several for each box.
  void WhileAsked(std::function<void()> happens) { happenings_.push_back(std::move(happens)); }
  /// What the user does with the next form that is shown modally. It must unload it.
  void PlayModal(std::function<void(controls::Form&)> play) { plays_.push_back(std::move(play)); }
  /// The host quits, which ends modal loops whether or not their forms are still open.
  bool HostQuits = false;
  /// The item that the user chooses from the next menu; empty for none.
  void Choose(String itemName) { choices_.push_back(std::move(itemName)); }
  /// Runs while the next menu is open.
  void WhileMenuIsOpen(std::function<void()> happens) {
    menuHappenings_.push_back(std::move(happens));
  }
  /// Each time that a form which works takes input: the user may press its button.
  std::function<void(controls::Form&)> WhileWorking;
  /// While the window of a form is shown, not modally, or hidden: the host may be told by the
  /// system.
  std::function<void(controls::Form&)> WhileShown;
  std::function<void(controls::Form&)> WhileHidden;
  std::optional<String> Clipboard;
  /// When it is set, no form gets a window any more.
  std::optional<Error> RealiseFailure;

  // What was shown.
  std::vector<Message> Messages;
  /// \throws when no box was shown.
  const Message& LastMessage() const { return Messages.at(Messages.size() - 1); }
  std::vector<ShownMenu> Menus;
  /// What happened to forms' windows, in order: "realise", "show", "modal", "hide", "hourglass",
  /// "default", "caption", "size", "gone".
  std::vector<std::string> Log;

  /// Runs what was posted until the condition holds. \return false when it does not in time.
  bool WaitUntil(const std::function<bool()>& condition) { return Dispatcher.RunUntil(condition); }
  void Pump() { Dispatcher.RunWaiting(); }
  TestDispatcher Dispatcher;

  std::unique_ptr<controls::FormPeer> Realise(controls::Form& form) override;
  std::int16_t ShowMessage(StringView text, StringView title, std::int32_t style) override;
  void ShowMenu(controls::Form& form, controls::Menu& menu, std::optional<Point> at) override;
  std::optional<String> ClipboardText() override { return Clipboard; }
  void SetClipboardText(StringView text) override { Clipboard = String(text); }
  void Post(std::function<void()> closure) override { post_(std::move(closure)); }
  const controls::Language& UserLanguage() const override { return *language_; }

 private:
  class ScriptedWindow;

  std::function<void(std::function<void()>)> post_ = Dispatcher.Post();
  std::unique_ptr<controls::Language> language_ = MakeUserLanguage();
  std::deque<std::int16_t> answers_;
  std::deque<std::function<void()>> happenings_;
  std::deque<std::function<void()>> menuHappenings_;
  std::deque<std::function<void(controls::Form&)>> plays_;
  std::deque<String> choices_;
};

}  // namespace ktrv::tests
