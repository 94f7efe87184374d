#include "database/ado/Apartment.h"

#include <windows.h>
#include <objbase.h>

#include "common/Error.h"

namespace ktrv::database::ado {
namespace {

bool HasCom() {
  APTTYPE type = APTTYPE_CURRENT;
  APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
  // Without COM of its own, a thread is implicitly in the MTA while the process has one.
  return CoGetApartmentType(&type, &qualifier) == S_OK &&
         qualifier != APTTYPEQUALIFIER_IMPLICIT_MTA;
}

}  // namespace

Apartment::Apartment() {
  if (HasCom()) return;
  // ADO is registered for single-threaded apartments; inside one, its calls need no marshalling.
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {
    throw Error(ErrorNumber::DriverFailure, u"COM cannot be used on this thread", u"ADODB");
  }
  own_ = true;
}

Apartment::~Apartment() {
  if (own_) CoUninitialize();
}

void Apartment::Wait() const {
  constexpr DWORD kMilliseconds = 5;
  MsgWaitForMultipleObjectsEx(0, nullptr, kMilliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

}  // namespace ktrv::database::ado
