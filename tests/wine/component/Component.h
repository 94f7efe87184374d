#pragma once

#include <windows.h>
#include <oleauto.h>

#include <gtest/gtest.h>
#include <string>

#include "KTRVAddressBook_h.h"
#include "windows/base/ComPtr.h"

namespace ktrv::tests {

using windows::ComPtr;

/// The folder of the test program; the DLL is three folders up, as the build leaves it.
std::wstring TestFolder();
std::wstring DllPath();
/// A path in the user's temporary folder, at which no file is.
std::wstring FreshFile(const std::wstring& name);
/// The whole text of a file; empty when there is none.
std::string ReadFile(const std::wstring& path);

/// A BSTR that frees itself.
class Bstr {
 public:
  Bstr() = default;
  explicit Bstr(const std::wstring& text)
      : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  ~Bstr() { SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;

  BSTR Get() const { return text_; }
  BSTR* Address() { return &text_; }
  std::wstring Text() const { return {text_ ? text_ : L"", SysStringLen(text_)}; }

 private:
  BSTR text_ = nullptr;
};

/// COM and the DLL for one test, made through the DLL's own exports, with no registry. At the end
/// of each test nothing of the component may be left.
class Component : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// The DLL stays in memory though the test frees it, and nothing is left nonetheless.
  bool Stays = false;

  HRESULT GetClassObject(const CLSID& classId, const IID& wanted, void** object) const;
  HRESULT CanUnloadNow() const;
  ComPtr<IClassFactory> Factory() const;
  ComPtr<_clsMain> Make() const;
  /// The description that the last failure left; empty when it left none.
  static std::wstring LastDescription();

  template <class Function>
  Function* Export(const char* name) const {
    return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module_, name)));
  }

 private:
  HMODULE module_ = nullptr;
};

}  // namespace ktrv::tests
