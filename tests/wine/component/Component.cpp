#include "tests/wine/component/Component.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace ktrv::tests {

std::wstring TestFolder() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path().wstring();
}

std::wstring DllPath() {
  const std::filesystem::path folder = TestFolder();
  return (folder.parent_path().parent_path().parent_path() / L"KTRVAddressBook.dll").wstring();
}

std::wstring FreshFile(const std::wstring& name) {
  wchar_t folder[MAX_PATH];
  GetTempPathW(MAX_PATH, folder);
  std::wstring path = folder + std::to_wstring(GetCurrentProcessId()) + L"-" + name;
  DeleteFileW(path.c_str());
  return path;
}

std::string ReadFile(const std::wstring& path) {
  std::ifstream file(std::filesystem::path(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Component::SetUp() {
  ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
  module_ = LoadLibraryW(DllPath().c_str());
  ASSERT_NE(module_, nullptr) << GetLastError();
}

void Component::TearDown() {
  EXPECT_EQ(CanUnloadNow(), S_OK) << "something of the component is left";
  FreeLibrary(module_);
  EXPECT_EQ(GetModuleHandleW(L"KTRVAddressBook.dll") != nullptr, Stays);
  if (!Stays) {
    for (const wchar_t* name : {L"KTRVAddressBookForm", L"KTRVAddressBookArea",
                                L"KTRVAddressBookBand", L"KTRVAddressBookQueue"}) {
      WNDCLASSEXW left{};
      left.cbSize = sizeof left;
      EXPECT_FALSE(GetClassInfoExW(module_, name, &left)) << "a window class runs freed code";
    }
  }
  CoUninitialize();
}

HRESULT Component::GetClassObject(const CLSID& classId, const IID& wanted, void** object) const {
  return Export<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(classId, wanted,
                                                                               object);
}

HRESULT Component::CanUnloadNow() const {
  return Export<HRESULT WINAPI()>("DllCanUnloadNow")();
}

ComPtr<IClassFactory> Component::Factory() const {
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(GetClassObject(__uuidof(::clsMain), IID_IClassFactory,
                           reinterpret_cast<void**>(factory.Out())),
            S_OK);
  return factory;
}

ComPtr<_clsMain> Component::Make() const {
  ComPtr<_clsMain> made;
  EXPECT_EQ(
      Factory()->CreateInstance(nullptr, __uuidof(_clsMain), reinterpret_cast<void**>(made.Out())),
      S_OK);
  return made;
}

std::wstring Component::LastDescription() {
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, information.Out()) != S_OK) return {};
  Bstr description;
  information->GetDescription(description.Address());
  return description.Text();
}

}  // namespace ktrv::tests
