#pragma once

namespace ktrv::database::ado {

/// COM on the calling thread for as long as this lives. A thread that has COM already keeps it as
/// it is: not even its count of uses may change, because its owner sees by that when COM is to end.
/// On any other thread, such as one that fetches, it begins here and ends with this.
class Apartment {
 public:
  /// \throws Error
  Apartment();
  ~Apartment();
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;

  /// Whether nobody else works in this apartment, so that messages may be handled while waiting.
  bool IsOwn() const { return own_; }

  /// Waits a few milliseconds for ADO's work in the background and handles the messages by which it
  /// may be done. \pre IsOwn()
  void Wait() const;

 private:
  bool own_ = false;
};

}  // namespace ktrv::database::ado
