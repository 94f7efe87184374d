#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/scripthost/Value.h"

namespace ktrv::scripthost {

/// What a script passed to a method, in the order in which it wrote it.
class Arguments final {
 public:
  explicit Arguments(const DISPPARAMS& passed);

  size_t Count() const noexcept { return values_.size(); }
  /// Throws ScriptFailure when the script passed fewer.
  const Value& At(size_t index) const;
  std::wstring Text(size_t index) const { return At(index).Text(); }
  LONG Number(size_t index) const { return At(index).Number(); }
  LONG Number(size_t index, LONG otherwise) const;

 private:
  std::vector<Value> values_;
};

/// An object that a script calls by name, made of a table of functions. Its owner keeps it alive
/// until every script that knows it has ended, so references are not counted.
class ScriptObject : public IDispatch {
 public:
  using Function = std::function<Value(const Arguments&)>;

  ScriptObject() = default;
  ScriptObject(const ScriptObject&) = delete;
  ScriptObject& operator=(const ScriptObject&) = delete;
  virtual ~ScriptObject() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return 2; }
  STDMETHODIMP_(ULONG) Release() noexcept override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                             DISPID* ids) noexcept override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* passed, VARIANT* result,
                      EXCEPINFO* exception, UINT*) noexcept override;

 protected:
  /// A method, or a property to read; names have no case. The one named "Item" is the default.
  void Offer(std::wstring name, Function function);

 private:
  struct Member {
    std::wstring name;
    Function function;
  };

  const Member* Find(DISPID id) const noexcept;

  std::vector<Member> members_;
};

}  // namespace ktrv::scripthost
