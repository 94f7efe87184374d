#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "tests/scripthost/ScriptObject.h"
#include "tests/scripthost/UiObject.h"
#include "tests/scripthost/WScriptObject.h"

namespace ktrv::scripthost {

/// Plays the user while the script itself waits in a modal dialog; scripts find it as Player.
///   Play(text)   runs the JScript text on another thread, with WScript and Ui of its own; one
///                that fails is told on the error stream and ends the host with code 99
///   Wait()       waits until the text that was played last has ended, messages handled
class PlayerObject final : public ScriptObject {
 public:
  explicit PlayerObject(const std::wstring& script);
  ~PlayerObject() override;

 private:
  void Play(std::wstring text);
  void Run(const std::wstring& text);
  void Wait();

  UiObject ui_;
  WScriptObject wscript_;
  std::atomic<bool> ended_ = true;
  std::thread thread_;
};

}  // namespace ktrv::scripthost
