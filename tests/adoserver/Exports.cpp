#include <memory>

#include "tests/adoserver/CommandObject.h"

namespace ktrv::adoserver {
namespace {

// The ids that adoserver.manifest gives to the classes.
constexpr CLSID kConnection = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0xf1}};
constexpr CLSID kCommand = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0xf2}};

/// Makes objects of one class. Lives as long as the DLL.
template <class T>
class Factory final : public IClassFactory {
 public:
  STDMETHODIMP QueryInterface(REFIID wanted, void** object) noexcept override {
    const bool known = wanted == IID_IUnknown || wanted == IID_IClassFactory;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return 2; }
  STDMETHODIMP_(ULONG) Release() noexcept override { return 1; }
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID wanted, void** object) noexcept override {
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      const windows::ComPtr<T> made(new T);
      return made->QueryInterface(wanted, object);
    } catch (...) {
      return E_OUTOFMEMORY;
    }
  }
  STDMETHODIMP LockServer(BOOL) noexcept override { return S_OK; }
};

}  // namespace
}  // namespace ktrv::adoserver

STDAPI DllGetClassObject(REFCLSID classId, REFIID wanted, void** object) {
  using namespace ktrv::adoserver;
  static Factory<ConnectionObject> connections;
  static Factory<CommandObject> commands;
  if (classId == kConnection) return connections.QueryInterface(wanted, object);
  if (classId == kCommand) return commands.QueryInterface(wanted, object);
  *object = nullptr;
  return CLASS_E_CLASSNOTAVAILABLE;
}

/// Also how a test learns whether all objects have been given back.
STDAPI DllCanUnloadNow() {
  return ktrv::adoserver::ServerObject::Count() == 0 ? S_OK : S_FALSE;
}
