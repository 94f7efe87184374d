#include "tests/scripthost/Engine.h"

#include <cwchar>

#include "tests/scripthost/ScriptFailure.h"

namespace ktrv::scripthost {
namespace {

void Check(HRESULT result, const wchar_t* what) {
  if (FAILED(result)) {
    throw ScriptFailure{what};
  }
}

std::wstring Hexadecimal(HRESULT number) {
  wchar_t text[16];
  std::swprintf(text, std::size(text), L"%08lX", static_cast<unsigned long>(number));
  return text;
}

}  // namespace

Engine::Engine(const std::wstring& language, std::vector<NamedObject> objects)
    : objects_(std::move(objects)) {
  CLSID id;
  Check(CLSIDFromProgID(language.c_str(), &id), L"The script language is not installed");
  IActiveScript* script = nullptr;
  Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                         reinterpret_cast<void**>(&script)),
        L"The script engine does not start");
  script_.reset(script);
  IActiveScriptParse* parser = nullptr;
  Check(script->QueryInterface(__uuidof(IActiveScriptParse), reinterpret_cast<void**>(&parser)),
        L"The script engine reads no text");
  parser_.reset(parser);
  Check(script->SetScriptSite(static_cast<IActiveScriptSite*>(this)), L"No script site");
  Check(parser->InitNew(), L"The script engine does not start");
  for (const NamedObject& object : objects_) {
    Check(script->AddNamedItem(object.first.c_str(), SCRIPTITEM_ISVISIBLE), L"No named object");
  }
  Check(script->SetScriptState(SCRIPTSTATE_STARTED), L"The script engine does not start");
}

Engine::~Engine() {
  script_->Close();
}

std::wstring Engine::Run(const std::wstring& name, const std::wstring& text) {
  name_ = name;
  failure_.clear();
  EXCEPINFO exception = {};
  const HRESULT result = parser_->ParseScriptText(text.c_str(), nullptr, nullptr, nullptr, 0, 1,
                                                  SCRIPTTEXT_ISVISIBLE, nullptr, &exception);
  if (FAILED(result) && failure_.empty()) {
    failure_ = name_ + L": " + Hexadecimal(result);
  }
  return failure_;
}

STDMETHODIMP Engine::QueryInterface(REFIID iid, void** object) noexcept {
  *object = nullptr;
  if (iid == IID_IUnknown || iid == IID_IActiveScriptSite) {
    *object = static_cast<IActiveScriptSite*>(this);
  } else if (iid == IID_IActiveScriptSiteWindow) {
    *object = static_cast<IActiveScriptSiteWindow*>(this);
  }
  return *object != nullptr ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP Engine::GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** object,
                                 ITypeInfo** type) noexcept {
  if (type != nullptr) {
    *type = nullptr;
  }
  for (const NamedObject& known : objects_) {
    if (_wcsicmp(known.first.c_str(), name) == 0) {
      if ((wanted & SCRIPTINFO_IUNKNOWN) != 0) {
        *object = known.second;
        known.second->AddRef();
      }
      return S_OK;
    }
  }
  return TYPE_E_ELEMENTNOTFOUND;
}

STDMETHODIMP Engine::OnScriptError(IActiveScriptError* error) noexcept {
  EXCEPINFO exception = {};
  DWORD context = 0;
  ULONG line = 0;
  LONG column = 0;
  error->GetExceptionInfo(&exception);
  error->GetSourcePosition(&context, &line, &column);
  // Wine counts lines from the number that the text was given, columns from 0.
  failure_ = name_ + L"(" + std::to_wstring(line) + L", " + std::to_wstring(column + 1) + L"): " +
             Hexadecimal(exception.scode) + L": " +
             (exception.bstrDescription != nullptr ? exception.bstrDescription : L"no description");
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  return S_OK;
}

STDMETHODIMP Engine::GetWindow(HWND* window) noexcept {
  *window = nullptr;
  return S_OK;
}

}  // namespace ktrv::scripthost
