#pragma once

#include <utility>

#include "common/Logger.h"
#include "common/Trap.h"
#include "controls/Screen.h"
#include "services/ModalDialogs.h"

namespace ktrv {

/// The services shared by all windows of a host thread.
struct Services {
  /// Screen and system must outlive the object.
  Services(controls::Screen& screen, OperatingSystem& system);
  Services(const Services&) = delete;
  Services& operator=(const Services&) = delete;

  controls::Screen& Screen;
  OperatingSystem& System;

  /// Shows every editor, so that the component can close open ones at its end.
  ModalDialogs Modal;

  // The log, at its default path until the host sets another.
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

  /// Shows a message box titled kMessageTitle. \return the pressed button (MessageAnswer)
  std::int16_t ShowMessage(StringView text, std::int32_t style) {
    return Logger.ShowMessage(text, style);
  }
};

/// "AddressBook.log" in the folder of the component.
String DefaultLogFilePath(OperatingSystem& system);

}  // namespace ktrv
