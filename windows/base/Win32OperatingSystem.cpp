#include "windows/base/Win32OperatingSystem.h"

#include <windows.h>

#include "common/Error.h"
#include "windows/base/Module.h"
#include "windows/base/Unique.h"
#include "windows/base/WideText.h"

namespace ktrv::windows {
namespace {

[[noreturn]] void Fail() {
  throw Error(ErrorNumber::DriverFailure, u"The file cannot be written", u"KTRVAddressBook",
              GetLastError());
}

using UniqueFile = Unique<HANDLE, [](HANDLE file) { CloseHandle(file); }>;

/// Locks out other writers that use the same lock, where the system does not append atomically
/// (network drives, Wine). The locked byte is beyond the end of any file, so readers are not
/// affected. After two seconds the writer goes on without the lock.
class WriterLock {
 public:
  explicit WriterLock(HANDLE file) : file_(file) {
    constexpr ULONGLONG kPatience = 2000;  // milliseconds
    const ULONGLONG end = GetTickCount64() + kPatience;
    do {
      locked_ = LockFileEx(file_, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                           &place_) != FALSE;
      if (locked_ || GetLastError() != ERROR_LOCK_VIOLATION) return;
      Sleep(1);
    } while (GetTickCount64() < end);
  }
  ~WriterLock() {
    if (locked_) UnlockFileEx(file_, 0, 1, 0, &place_);
  }
  WriterLock(const WriterLock&) = delete;
  WriterLock& operator=(const WriterLock&) = delete;

 private:
  static OVERLAPPED BeyondTheEnd() {
    OVERLAPPED place{};
    place.Offset = 0xFFFFFFFE;
    place.OffsetHigh = 0x7FFFFFFF;
    return place;
  }

  HANDLE file_;
  OVERLAPPED place_ = BeyondTheEnd();
  bool locked_ = false;
};

}  // namespace

void Win32OperatingSystem::Append(StringView path, std::string_view bytes, bool flush) {
  // FILE_APPEND_DATA without FILE_WRITE_DATA: the system appends each write at the end of the file.
  HANDLE opened = CreateFileW(ToWide(path).c_str(), FILE_APPEND_DATA | FILE_READ_DATA | SYNCHRONIZE,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) Fail();
  const UniqueFile file(opened);
  const WriterLock lock(file.Get());
  DWORD written = 0;
  if (!WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ||
      written != bytes.size()) {
    Fail();
  }
  if (flush && !FlushFileBuffers(file.Get())) Fail();
}

DateTime Win32OperatingSystem::Now() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  const std::chrono::year_month_day day{std::chrono::year(now.wYear),
                                        std::chrono::month(now.wMonth), std::chrono::day(now.wDay)};
  return std::chrono::local_days(day) + std::chrono::hours(now.wHour) +
         std::chrono::minutes(now.wMinute) + std::chrono::seconds(now.wSecond) +
         std::chrono::milliseconds(now.wMilliseconds);
}

String Win32OperatingSystem::ComponentDirectory() {
  const std::wstring path = ModulePath();
  return FromWide(path.substr(0, path.find_last_of(L'\\')));
}

}  // namespace ktrv::windows
