#include "tool/program/windows/FileRights.h"

#include <windows.h>

#include <aclapi.h>
#include <array>

#include "common/Error.h"
#include "common/Unique.h"

namespace ktrv::tool {
namespace {

bool IsWellKnown(PSID sid, WELL_KNOWN_SID_TYPE kind) {
  return IsWellKnownSid(sid, kind) != 0;
}

/// Whether the entry gives somebody else the right to read.
bool LetsOthersRead(const ACE_HEADER* entry, PSID owner) {
  if (entry->AceType != ACCESS_ALLOWED_ACE_TYPE) return false;
  if ((entry->AceFlags & INHERIT_ONLY_ACE) != 0) return false;
  const auto* allowed = reinterpret_cast<const ACCESS_ALLOWED_ACE*>(entry);
  constexpr DWORD kReading = FILE_READ_DATA | GENERIC_READ | GENERIC_ALL;
  if ((allowed->Mask & kReading) == 0) return false;
  PSID who = const_cast<DWORD*>(&allowed->SidStart);
  return !EqualSid(who, owner) && !IsWellKnown(who, WinLocalSystemSid) &&
         !IsWellKnown(who, WinBuiltinAdministratorsSid) &&
         !IsWellKnown(who, WinCreatorOwnerRightsSid);
}

}  // namespace

bool IsPrivate(const std::filesystem::path& file) {
  PSID owner = nullptr;
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const DWORD failure = GetNamedSecurityInfoW(
      file.c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, &owner,
      nullptr, &list, nullptr, &descriptor);
  if (failure != ERROR_SUCCESS) {
    throw Error(ErrorNumber::DriverFailure, u"cannot read the rights of a file", u"addressbook",
                failure);
  }
  const Unique<PSECURITY_DESCRIPTOR, LocalFree> release(descriptor);
  if (!list) return false;  // everybody may do everything
  for (DWORD index = 0; index < list->AceCount; ++index) {
    void* entry = nullptr;
    if (!GetAce(list, index, &entry)) return false;
    if (LetsOthersRead(static_cast<const ACE_HEADER*>(entry), owner)) return false;
  }
  return true;
}

}  // namespace ktrv::tool
