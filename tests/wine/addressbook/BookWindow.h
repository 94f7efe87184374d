#pragma once

#include <gtest/gtest.h>

#include "component/Session.h"
#include "forms/addressbook/frmAddressBook.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/wine/controls/Play.h"

namespace ktrv::windows {

/// The address book on a real window, as a host opens it, with two folders and a group in each.
/// Each list has the rows that Lists said last.
class BookWindow : public testing::Test {
 protected:
  BookWindow();

  void Lists(int rows);
  /// Lets what loads come, and the rows be shown.
  void Settle();
  int Rows() const { return form_.vsfContacts.Rows() - 1; }

  HWND Window() const { return WindowOf(form_); }
  HWND List() const { return WindowOf(form_.vsfContacts); }
  HWND Tree() const { return WindowOf(form_.tvwContacts); }

  tests::FakeDriver driver_;
  Win32Screen screen_;
  tests::FakeOperatingSystem system_;
  Session session_{screen_,
                   system_,
                   {[this](StringView) -> database::Driver& { return driver_; }, screen_.Poster()}};
  forms::Editors editors_{session_};
  forms::frmAddressBook form_{Place(), editors_};

 private:
  /// As a host at the server leaves it.
  Workplace Place();
};

}  // namespace ktrv::windows
