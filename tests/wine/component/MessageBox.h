#pragma once

#include <windows.h>

#include <functional>
#include <future>
#include <string>

namespace ktrv::tests {

/// Presses OK in the next message box of this process, once the condition holds (asked on another
/// thread) or ten seconds after the box came, and gives its text.
std::future<std::wstring> AnswerBoxWhen(std::function<bool()> condition);

/// Presses OK in the next message box of this process and gives its text.
inline std::future<std::wstring> AnswerBox() {
  return AnswerBoxWhen([] { return true; });
}

}  // namespace ktrv::tests
