#pragma once

namespace ktrv::database::ado {

/// Initialises COM on the calling thread for the object's lifetime. If the thread already uses COM,
/// nothing changes, not even COM's initialisation count, because the owner of the thread relies on
/// it.
class Apartment {
 public:
  /// \throws Error
  Apartment();
  ~Apartment();
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;

  /// Whether this object created the apartment. Then messages may be dispatched while waiting.
  bool IsOwn() const { return own_; }

  /// Waits up to 5 milliseconds for ADO's asynchronous work and dispatches messages, which it may
  /// need. \pre IsOwn()
  void Wait() const;

 private:
  bool own_ = false;
};

}  // namespace ktrv::database::ado
