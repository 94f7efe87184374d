// The DLL's entry points; exported by KTRVAddressBook.def.
#include <windows.h>
#include <objbase.h>

#include <cwchar>

#include "KTRVAddressBook_h.h"
#include "windows/base/ComPtr.h"
#include "windows/com/ClassFactory.h"
#include "windows/com/Failure.h"
#include "windows/com/Registration.h"
#include "windows/com/Server.h"

using namespace ktrv::windows;

STDAPI DllGetClassObject(REFCLSID classId, REFIID wanted, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (classId != __uuidof(::clsMain)) return CLASS_E_CLASSNOTAVAILABLE;
  HRESULT found = E_NOINTERFACE;
  const HRESULT made = Guarded(GUID_NULL, [&] {
    const ComPtr<ClassFactory> factory(new ClassFactory);
    found = factory->QueryInterface(wanted, object);
  });
  return FAILED(made) ? made : found;
}

STDAPI DllCanUnloadNow() {
  return Server::MayUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return Registration::Write(Registration::For::Machine);
}

STDAPI DllUnregisterServer() {
  return Registration::Remove(Registration::For::Machine);
}

/// \param what "user" registers for the current user only, without administrator rights
STDAPI DllInstall(BOOL install, LPCWSTR what) {
  const auto whom =
      what && _wcsicmp(what, L"user") == 0 ? Registration::For::User : Registration::For::Machine;
  return install ? Registration::Write(whom) : Registration::Remove(whom);
}
