#pragma once

#include "common/Error.h"
#include "tests/native/support/WatchedDriver.h"

namespace ktrv::tests {

/// A dialog's fixture whose database the test watches, and whose answers it can lose.
/// \param Dialog a DialogFixture that presses OK
template <class Dialog>
struct WatchedDialog : Dialog {
  WatchedDialog() {
    this->session.Database.Environment.DriverFor = [this](StringView) -> database::Driver& {
      return watched;
    };
  }

  static void Lose() { throw Error(ErrorNumber::DriverFailure, u"connection lost"); }
  /// Presses OK, and the answer to the commit is lost.
  void LoseTheCommit() {
    watched.AfterCommit = Lose;
    this->PressOk();
    watched.AfterCommit = nullptr;
  }

  WatchedDriver watched{this->database.Driver()};
};

}  // namespace ktrv::tests
