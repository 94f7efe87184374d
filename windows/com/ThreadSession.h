#pragma once

#include <windows.h>

#include <memory>
#include <objidl.h>

#include "component/Dialogs.h"
#include "windows/base/ComPtr.h"
#include "windows/base/Win32OperatingSystem.h"
#include "windows/controls/Win32Screen.h"

namespace ktrv::windows {

/// Everything that the clsMain objects of one host thread share: screen, session and windows.
/// Created with the thread's first object. Ends on the same thread, when COM is uninitialised there
/// or the DLL may be unloaded. If a thread ends without uninitialising COM, its session leaks:
/// windows and connections cannot be closed safely under the loader lock.
class ThreadSession {
 public:
  /// The calling thread's session, created on first use. \throws Error
  static std::shared_ptr<ThreadSession> Current();
  /// Closes the windows of the calling thread's session, if there is one, and releases it. It is
  /// destroyed with the last object that still refers to it, or at the end of the call in progress.
  static void EndCurrent() noexcept;
  /// The number of threads with a session.
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
  ULARGE_INTEGER watch_{};  ///< cookie of the ApartmentWatch
};

}  // namespace ktrv::windows
