#include "windows/com/ThreadSession.h"

#include <atomic>
#include <memory>
#include <utility>

#include "database/BackgroundFetch.h"
#include "windows/base/Entry.h"
#include "windows/base/Module.h"
#include "windows/com/ApartmentWatch.h"
#include "windows/com/Drivers.h"

namespace ktrv::windows {
namespace {

std::atomic<long> sessions = 0;

/// Drivers and queue are shared with fetches, which may outlive the session.
database::Environment MakeEnvironment(const Win32Screen& screen) {
  const auto drivers = std::make_shared<Drivers>();
  return {[drivers](StringView connectionString) -> database::Driver& {
            return drivers->For(connectionString);
          },
          screen.Poster(), [drivers] { drivers->CloseKept(); }};
}

using Owner = std::shared_ptr<ThreadSession>;

Owner*& OfThisThread() {
  // A plain pointer: an object would be destroyed while the loader holds its lock.
  thread_local Owner* session = nullptr;
  return session;
}

void Drop(void* owner) noexcept {
  delete static_cast<Owner*>(owner);
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

std::shared_ptr<ThreadSession> ThreadSession::Current() {
  Owner*& session = OfThisThread();
  if (!session) session = new Owner(new ThreadSession);
  return *session;
}

void ThreadSession::EndCurrent() noexcept {
  std::unique_ptr<Owner> owner(std::exchange(OfThisThread(), nullptr));
  if (!owner) return;
  const std::weak_ptr<ThreadSession> session(*owner);
  (*owner)->dialogs_.UnloadAll();
  // Inside a call the session is still in use; one that cannot wait is left behind.
  if (Entry::IsInside()) Entry::WhenLeft(&Drop, owner.release());
  owner.reset();
  // COM does not ask before it unloads the DLL of the last apartment. The code has to stay for
  // objects that the host releases late, for the call that is under way, and for a fetch that its
  // database holds up.
  if (!session.expired() || database::BackgroundFetch::Running() != 0) KeepModuleLoaded();
}

long ThreadSession::Count() {
  return sessions;
}

}  // namespace ktrv::windows
