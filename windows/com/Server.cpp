#include "windows/com/Server.h"

#include <atomic>

#include "database/BackgroundFetch.h"
#include "windows/base/Entry.h"
#include "windows/com/ThreadSession.h"

namespace ktrv::windows {
namespace {

std::atomic<long> locks = 0;

}  // namespace

namespace Server {

bool MayUnload() noexcept {
  if (Entry::IsInside() || ServerLock::Count() != 0 || database::BackgroundFetch::Running() != 0) {
    return false;
  }
  ThreadSession::EndCurrent();
  return ThreadSession::Count() == 0;
}

}  // namespace Server

ServerLock::ServerLock() {
  Add();
}
ServerLock::~ServerLock() {
  Remove();
}
void ServerLock::Add() {
  ++locks;
}
void ServerLock::Remove() {
  --locks;
}
long ServerLock::Count() {
  return locks;
}

}  // namespace ktrv::windows
