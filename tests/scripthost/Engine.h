#pragma once

#include <windows.h>
#include <activscp.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ktrv::scripthost {

/// Gives up a reference to a COM object.
struct ReleaseInterface {
  void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <class T>
using Owned = std::unique_ptr<T, ReleaseInterface>;

/// One script engine with the objects that its scripts find by name. Belongs to the thread that
/// made it, on which COM must be started.
class Engine final : private IActiveScriptSite, private IActiveScriptSiteWindow {
 public:
  /// An object and its name in scripts; it must outlive the engine.
  using NamedObject = std::pair<std::wstring, IDispatch*>;

  /// \param language "JScript" or "VBScript". Throws ScriptFailure when there is no such engine.
  Engine(const std::wstring& language, std::vector<NamedObject> objects);
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;
  ~Engine();

  /// Runs the text to its end. \param name of the text in error messages. Returns the error that
  /// stopped it, as "name(line, column): number: description", or nothing.
  std::wstring Run(const std::wstring& name, const std::wstring& text);

 private:
  STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return 2; }
  STDMETHODIMP_(ULONG) Release() noexcept override { return 1; }
  STDMETHODIMP GetLCID(LCID*) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** object,
                           ITypeInfo** type) noexcept override;
  STDMETHODIMP GetDocVersionString(BSTR*) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) noexcept override {
    return S_OK;
  }
  STDMETHODIMP OnStateChange(SCRIPTSTATE) noexcept override { return S_OK; }
  STDMETHODIMP OnScriptError(IActiveScriptError* error) noexcept override;
  STDMETHODIMP OnEnterScript() noexcept override { return S_OK; }
  STDMETHODIMP OnLeaveScript() noexcept override { return S_OK; }
  STDMETHODIMP GetWindow(HWND* window) noexcept override;
  STDMETHODIMP EnableModeless(BOOL) noexcept override { return S_OK; }

  std::vector<NamedObject> objects_;
  std::wstring name_;
  std::wstring failure_;
  Owned<IActiveScript> script_;
  Owned<IActiveScriptParse> parser_;
};

}  // namespace ktrv::scripthost
