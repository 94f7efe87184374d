#pragma once

#include <windows.h>

#include <future>
#include <string>

namespace ktrv::tests {

/// Presses OK in the next message box of this process, after so many milliseconds, and gives its
/// text.
std::future<std::wstring> AnswerBoxAfter(DWORD pause);

}  // namespace ktrv::tests
