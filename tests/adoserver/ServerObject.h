#pragma once

#include <functional>
#include <string>
#include <vector>

#include "database/ado/Value.h"
#include "tests/adoserver/Arguments.h"

namespace ktrv::adoserver {

/// A late-bound object of the server. It belongs to the thread that made it and refuses every
/// other; it refuses members that it does not have, too few and too many arguments, and named ones.
class ServerObject : public IDispatch {
 public:
  /// Objects that live.
  static long Count();

  STDMETHODIMP QueryInterface(REFIID wanted, void** object) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override;
  STDMETHODIMP_(ULONG) Release() noexcept override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                             DISPID* members) noexcept override;
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* wrong) noexcept override;

 protected:
  ServerObject();
  virtual ~ServerObject();
  ServerObject(const ServerObject&) = delete;
  ServerObject& operator=(const ServerObject&) = delete;

  /// The object's own id, by which the server knows its objects again; each class has one.
  virtual const IID& OwnId() const = 0;

  // For constructors: what the object can do.
  using Handler = std::function<Value(const Arguments&)>;
  void Method(const wchar_t* name, UINT least, UINT most, Handler handler);
  void Property(const wchar_t* name, std::function<Value()> get);
  void Property(const wchar_t* name, std::function<Value()> get,
                std::function<void(const Arguments&)> put);
  /// A property of a collection that is read with one argument.
  void Item(Handler handler);

 private:
  struct Member {
    std::wstring Name;
    WORD Kinds;
    UINT Least;
    UINT Most;
    Handler Handle;
  };

  HRESULT Run(const Member& member, const DISPPARAMS& parameters, VARIANT* result);

  LONG references_ = 1;
  const DWORD thread_ = GetCurrentThreadId();
  std::vector<Member> members_;
};

/// The server's own object of class T behind the pointer; null when it is none.
template <class T>
T* OwnObject(IDispatch* object) {
  void* found = nullptr;
  if (!object || FAILED(object->QueryInterface(T::kId, &found))) return nullptr;
  auto* own = static_cast<T*>(static_cast<IDispatch*>(found));
  own->Release();  // the caller's reference holds it
  return own;
}

}  // namespace ktrv::adoserver
