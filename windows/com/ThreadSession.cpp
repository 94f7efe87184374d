#include "windows/com/ThreadSession.h"

#include <atomic>
#include <memory>

#include "database/BackgroundFetch.h"
#include "windows/com/ApartmentWatch.h"
#include "windows/com/Drivers.h"
#include "windows/system/ModulePath.h"

namespace ktrv::windows {
namespace {

std::atomic<long> sessions = 0;

/// Drivers and queue are shared with fetches, which may outlive the session.
database::Environment MakeEnvironment(const Win32Screen& screen) {
  const auto drivers = std::make_shared<Drivers>();
  return {[drivers](StringView connectionString) -> database::Driver& {
            return drivers->For(connectionString);
          },
          screen.Poster()};
}

ThreadSession*& OfThisThread() {
  // A plain pointer: an object would be destroyed while the loader holds its lock.
  thread_local ThreadSession* session = nullptr;
  return session;
}

}  // namespace

ThreadSession::ThreadSession()
    : session_(screen_, system_, MakeEnvironment(screen_)), dialogs_(session_) {
  const ComPtr<IInitializeSpy> watch(new ApartmentWatch);
  // Without the watch the session only ends with DllCanUnloadNow.
  CoRegisterInitializeSpy(watch.Get(), &watch_);
  ++sessions;
}

ThreadSession::~ThreadSession() {
  if (watch_.QuadPart != 0) CoRevokeInitializeSpy(watch_);
  --sessions;
}

ThreadSession& ThreadSession::Current() {
  ThreadSession*& session = OfThisThread();
  if (!session) session = new ThreadSession;
  return *session;
}

void ThreadSession::EndCurrent() noexcept {
  const std::unique_ptr<ThreadSession, void (*)(ThreadSession*)> ended(
      std::exchange(OfThisThread(), nullptr), [](ThreadSession* session) { delete session; });
  // COM does not ask before it unloads the DLL of the last apartment. A fetch that its database
  // holds up still runs this code, so the code has to stay.
  if (database::BackgroundFetch::Running() != 0) KeepModuleLoaded();
}

long ThreadSession::Count() {
  return sessions;
}

}  // namespace ktrv::windows
