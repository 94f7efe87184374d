#pragma once

namespace ktrv::windows {

namespace Server {

/// Whether nothing is left that runs this code: no object, no lock of a host, no window, no
/// fetch. Ends the calling thread's session when that is all that is left.
bool MayUnload() noexcept;

}  // namespace Server

/// Keeps the DLL loaded while it lives: each object has one, and each lock of a host is one.
class ServerLock {
 public:
  ServerLock();
  ~ServerLock();
  ServerLock(const ServerLock&) = delete;
  ServerLock& operator=(const ServerLock&) = delete;

  /// For IClassFactory::LockServer, whose calls are not tied to an object.
  static void Add();
  static void Remove();
  static long Count();
};

}  // namespace ktrv::windows
