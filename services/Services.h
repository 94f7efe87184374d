#pragma once

#include <utility>

#include "common/Logger.h"
#include "common/Trap.h"
#include "controls/Screen.h"
#include "services/ModalDialogs.h"

namespace ktrv {

/// What the windows of a host thread share.
struct Services {
  /// Screen and system must outlive the services.
  Services(controls::Screen& screen, OperatingSystem& system);
  Services(const Services&) = delete;
  Services& operator=(const Services&) = delete;

  controls::Screen& Screen;
  OperatingSystem& System;

  /// Every editor is shown through this, so that the end of the component can close it.
  ModalDialogs Modal;

  // The log. Until the host names another file, it is the default one, so that refusals can be
  // logged.
  String LogFilePath;
  ktrv::Logger Logger;

  /// ktrv::Trap with this log.
  template <class Result, class Body>
  Result Trap(StringView context, const Result& failure, Body&& body) {
    return ktrv::Trap(Logger, LogFilePath, context, failure, std::forward<Body>(body));
  }
  template <class Body>
  void Trap(StringView context, Body&& body) {
    ktrv::Trap(Logger, LogFilePath, context, std::forward<Body>(body));
  }

  /// Appends one line to the log.
  void WriteLog(StringView line) { Logger.WriteLog(LogFilePath, line, true, false); }

  /// The shared message box, titled kMessageTitle. \return the button pressed (MessageAnswer)
  std::int16_t ShowMessage(StringView text, std::int32_t style) {
    return Logger.ShowMessage(text, style);
  }
};

/// "\AddressBook.log" in the component's own directory.
String DefaultLogFilePath(OperatingSystem& system);

}  // namespace ktrv
