#pragma once

#include <windows.h>

#include <memory>
#include <objidl.h>

#include "component/Dialogs.h"
#include "windows/base/ComPtr.h"
#include "windows/base/Win32OperatingSystem.h"
#include "windows/controls/Win32Screen.h"

namespace ktrv::windows {

/// All that one host thread's clsMain objects work with: its screen, its session and its windows.
/// Begins when the thread makes its first object and ends, on the same thread, when COM is done
/// there or the DLL may be unloaded. A thread that goes without ending COM leaves its session
/// behind: no window or connection can be closed safely while the loader takes a thread down.
class ThreadSession {
 public:
  /// The calling thread's, made when it is first asked for. \throws Error
  static std::shared_ptr<ThreadSession> Current();
  /// Ends the calling thread's, if there is one: its windows close, and it goes with the last
  /// object that a host did not release in time, or with the call during which the host ended COM.
  static void EndCurrent() noexcept;
  /// How many threads have one.
  static long Count();

  ~ThreadSession();
  ThreadSession(const ThreadSession&) = delete;
  ThreadSession& operator=(const ThreadSession&) = delete;

  Session& TheSession() { return session_; }
  Dialogs& TheDialogs() { return dialogs_; }

 private:
  ThreadSession();

  Win32OperatingSystem system_;
  Win32Screen screen_;
  Session session_;
  Dialogs dialogs_;
  ULARGE_INTEGER watch_{};  ///< registration of the watch for the end of COM on this thread
};

}  // namespace ktrv::windows
