#include "tests/scripthost/ScriptObject.h"

#include <cwchar>
#include <exception>
#include <utility>

#include "tests/scripthost/ScriptFailure.h"

namespace ktrv::scripthost {
namespace {

HRESULT Raise(EXCEPINFO* exception, const std::wstring& description) noexcept {
  if (exception == nullptr) {
    return E_FAIL;
  }
  *exception = {};
  exception->bstrSource = SysAllocString(L"scripthost");
  exception->bstrDescription = SysAllocString(description.c_str());
  exception->scode = E_FAIL;
  return DISP_E_EXCEPTION;
}

}  // namespace

Arguments::Arguments(const DISPPARAMS& passed) {
  // Automation passes arguments backwards.
  for (UINT index = passed.cArgs; index > 0; --index) {
    values_.emplace_back(passed.rgvarg[index - 1]);
  }
}

const Value& Arguments::At(size_t index) const {
  if (index >= values_.size()) {
    throw ScriptFailure{L"Argument " + std::to_wstring(index + 1) + L" is missing"};
  }
  return values_[index];
}

LONG Arguments::Number(size_t index, LONG otherwise) const {
  return index < values_.size() ? values_[index].Number() : otherwise;
}

STDMETHODIMP ScriptObject::QueryInterface(REFIID iid, void** object) noexcept {
  const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP ScriptObject::GetTypeInfoCount(UINT* count) noexcept {
  *count = 0;
  return S_OK;
}

STDMETHODIMP ScriptObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                         DISPID* ids) noexcept {
  for (UINT index = 0; index < count; ++index) {
    ids[index] = DISPID_UNKNOWN;
  }
  for (size_t index = 0; index < members_.size(); ++index) {
    if (_wcsicmp(members_[index].name.c_str(), names[0]) == 0) {
      ids[0] = static_cast<DISPID>(index + 1);
      return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    }
  }
  return DISP_E_UNKNOWNNAME;
}

STDMETHODIMP ScriptObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* passed,
                                  VARIANT* result, EXCEPINFO* exception, UINT*) noexcept {
  const Member* member = Find(id);
  if (member == nullptr) {
    return DISP_E_MEMBERNOTFOUND;
  }
  try {
    Value value = member->function(Arguments(*passed));
    if (result != nullptr) {
      *result = value.Release();
    }
    return S_OK;
  } catch (const ScriptFailure& failure) {
    return Raise(exception, failure.description);
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

void ScriptObject::Offer(std::wstring name, Function function) {
  members_.push_back({std::move(name), std::move(function)});
}

const ScriptObject::Member* ScriptObject::Find(DISPID id) const noexcept {
  if (id == DISPID_VALUE) {
    for (const Member& member : members_) {
      if (member.name == L"Item") {
        return &member;
      }
    }
    return nullptr;
  }
  const auto index = static_cast<size_t>(id) - 1;
  return id > 0 && index < members_.size() ? &members_[index] : nullptr;
}

}  // namespace ktrv::scripthost
