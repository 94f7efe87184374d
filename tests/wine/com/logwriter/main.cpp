// logwriter FILE NAME COUNT: appends COUNT records to a log, as one of several host processes.
#include <windows.h>

#include "common/Logger.h"
#include "windows/base/WideText.h"
#include "windows/base/Win32OperatingSystem.h"

int wmain(int count, wchar_t** arguments) {
  using namespace ktrv;
  if (count != 4) return 2;
  windows::Win32OperatingSystem system;
  Logger logger(system, nullptr);
  const String path = windows::FromWide(arguments[1]);
  const Error error(1, String(300, u'x'), windows::FromWide(arguments[2]));
  for (int left = _wtoi(arguments[3]); left > 0; --left) {
    logger.LogError(path, error, u"context", 0, true);
  }
  return 0;
}
