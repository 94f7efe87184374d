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

/// Drivers and message queue are shared with fetches, which may outlive the session.
database::Environment MakeEnvironment(const Win32Screen& screen) {
  const auto drivers = std::make_shared<Drivers>();
  return {[drivers](StringView connectionString) -> database::Driver& {
            return drivers->For(connectionString);
          },
          screen.Poster(), [drivers] { drivers->CloseKept(); }};
}

using Owner = std::shared_ptr<ThreadSession>;

Owner*& OfThisThread() {
  // A raw pointer: a thread_local object would be destroyed under the loader lock.
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
  // If this fails, only DllCanUnloadNow ends the session.
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
  // During a call the session is in use, so it is released afterwards. If another one is already
  // queued, this one leaks.
  if (Entry::IsInside()) Entry::WhenLeft(&Drop, owner.release());
  owner.reset();
  // COM unloads the DLL with its last apartment and does not call DllCanUnloadNow first. The code
  // must stay for objects that the host releases late, for the call in progress, and for a fetch
  // that still waits for its database.
  if (!session.expired() || database::BackgroundFetch::Running() != 0) KeepModuleLoaded();
}

long ThreadSession::Count() {
  return sessions;
}

}  // namespace ktrv::windows
