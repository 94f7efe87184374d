#pragma once

namespace ktrv::windows {

namespace Server {

/// Whether nothing uses the DLL any more: no call, object, server lock, window or fetch. If only
/// the calling thread's session is left, ends it first.
bool MayUnload() noexcept;

}  // namespace Server

/// Keeps the DLL loaded. Each object holds one; each lock of a host counts as one.
class ServerLock {
 public:
  ServerLock();
  ~ServerLock();
  ServerLock(const ServerLock&) = delete;
  ServerLock& operator=(const ServerLock&) = delete;

  /// For IClassFactory::LockServer, which is not bound to an object.
  static void Add();
  static void Remove();
  static long Count();
};

}  // namespace ktrv::windows
