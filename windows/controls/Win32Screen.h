#pragma once

#include <memory>

#include "controls/Screen.h"
#include "windows/controls/MessageHook.h"
#include "windows/controls/PostQueue.h"
#include "windows/controls/Win32Language.h"

namespace ktrv::windows {

/// The display of the thread that creates it. That thread must pump messages while forms are open.
class Win32Screen final : public controls::Screen {
 public:
  Win32Screen();
  ~Win32Screen() override;

  std::unique_ptr<controls::FormPeer> Realise(controls::Form& form) override;
  std::int16_t ShowMessage(StringView text, StringView title, std::int32_t style) override;
  void ShowMenu(controls::Form& form, controls::Menu& menu, std::optional<Point> at) override;
  std::optional<String> ClipboardText() override;
  void SetClipboardText(StringView text) override;
  void Post(std::function<void()> closure) override { queue_->Post(std::move(closure)); }
  const controls::Language& UserLanguage() const override { return language_; }

  /// A Post function for threads that may outlive the screen; then it does nothing.
  std::function<void(std::function<void()>)> Poster() const;

 private:
  std::shared_ptr<PostQueue> queue_;
  MessageHook hook_;
  Win32Language language_;
};

}  // namespace ktrv::windows
