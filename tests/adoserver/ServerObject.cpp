#include "tests/adoserver/ServerObject.h"

#include <atomic>
#include <utility>

#include "common/Error.h"

namespace ktrv::adoserver {
namespace {

std::atomic<long> living = 0;

BSTR NewBstr(StringView text) {
  return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                           static_cast<UINT>(text.size()));
}

HRESULT CodeOf(std::int32_t number) {
  return number < 0 ? number : MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
}

/// \pre in a catch block
HRESULT Report(EXCEPINFO* exception) {
  const Error error = Error::Current();
  if (exception) {
    *exception = {};
    exception->scode = CodeOf(error.Number());
    exception->bstrDescription = NewBstr(error.Description());
    exception->bstrSource = NewBstr(error.Source());
  }
  return DISP_E_EXCEPTION;
}

}  // namespace

ServerObject::ServerObject() {
  ++living;
}

ServerObject::~ServerObject() {
  --living;
}

long ServerObject::Count() {
  return living;
}

STDMETHODIMP ServerObject::QueryInterface(REFIID wanted, void** object) noexcept {
  const bool known = wanted == IID_IUnknown || wanted == IID_IDispatch || wanted == OwnId();
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) ServerObject::AddRef() noexcept {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

STDMETHODIMP_(ULONG) ServerObject::Release() noexcept {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

STDMETHODIMP ServerObject::GetTypeInfoCount(UINT* count) noexcept {
  *count = 0;
  return S_OK;
}

STDMETHODIMP ServerObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                         DISPID* members) noexcept {
  if (GetCurrentThreadId() != thread_) return RPC_E_WRONG_THREAD;
  *members = DISPID_UNKNOWN;
  if (count != 1) return DISP_E_UNKNOWNNAME;
  for (std::size_t index = 0; index < members_.size(); ++index) {
    if (lstrcmpiW(members_[index].Name.c_str(), *names) != 0) continue;
    *members = static_cast<DISPID>(index + 1);
    return S_OK;
  }
  return DISP_E_UNKNOWNNAME;
}

STDMETHODIMP ServerObject::Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                  VARIANT* result, EXCEPINFO* exception, UINT*) noexcept {
  if (GetCurrentThreadId() != thread_) return RPC_E_WRONG_THREAD;
  const auto index = static_cast<std::size_t>(member - 1);
  if (index >= members_.size()) return DISP_E_MEMBERNOTFOUND;
  // A property's writing stands behind its reading, under the same name.
  for (const Member& each : members_) {
    if (each.Name != members_[index].Name || (each.Kinds & kind) == 0) continue;
    try {
      return Run(each, *parameters, result);
    } catch (...) {
      return Report(exception);
    }
  }
  return DISP_E_MEMBERNOTFOUND;
}

HRESULT ServerObject::Run(const Member& member, const DISPPARAMS& parameters, VARIANT* result) {
  const bool put = (member.Kinds & DISPATCH_PROPERTYPUT) != 0;
  if (parameters.cNamedArgs != (put ? 1u : 0u)) return DISP_E_NONAMEDARGS;
  if (put && parameters.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) return DISP_E_NONAMEDARGS;
  if (parameters.cArgs < member.Least || parameters.cArgs > member.Most) {
    return DISP_E_BADPARAMCOUNT;
  }
  // The object must outlive a call in which it loses its last user.
  AddRef();
  const std::unique_ptr<ServerObject, void (*)(ServerObject*)> guard(
      this, [](ServerObject* object) { object->Release(); });
  Value returned = member.Handle(Arguments(parameters));
  if (result) std::swap(*result, returned.Raw());
  return S_OK;
}

void ServerObject::Method(const wchar_t* name, UINT least, UINT most, Handler handler) {
  members_.push_back({name, DISPATCH_METHOD, least, most, std::move(handler)});
}

void ServerObject::Property(const wchar_t* name, std::function<Value()> get) {
  members_.push_back({name, DISPATCH_PROPERTYGET, 0, 0,
                      [get = std::move(get)](const Arguments&) { return get(); }});
}

void ServerObject::Property(const wchar_t* name, std::function<Value()> get,
                            std::function<void(const Arguments&)> put) {
  Property(name, std::move(get));
  constexpr WORD kKinds = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
  members_.push_back({name, kKinds, 1, 1, [put = std::move(put)](const Arguments& arguments) {
                        put(arguments);
                        return Value();
                      }});
}

void ServerObject::Item(Handler handler) {
  members_.push_back({L"Item", DISPATCH_PROPERTYGET, 1, 1, std::move(handler)});
}

}  // namespace ktrv::adoserver
