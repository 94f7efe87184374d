#include "services/Services.h"

namespace ktrv {

Services::Services(controls::Screen& screen, OperatingSystem& system)
    : Screen(screen),
      System(system),
      LogFilePath(DefaultLogFilePath(system)),
      Logger(system, [&screen](StringView text, StringView title, std::int32_t style) {
        return screen.ShowMessage(text, title, style);
      }) {}

String DefaultLogFilePath(OperatingSystem& system) {
  return system.ComponentDirectory() + u"\\AddressBook.log";
}

}  // namespace ktrv
