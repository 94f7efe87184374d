#include <set>

#include "tests/wine/component/Component.h"

namespace ktrv::tests {
namespace {

/// The registry of a machine on which nothing is registered: the DLL's writing is turned to keys of
/// the test's own, so that what other programs need stays as it is.
class Registration : public Component {
 protected:
  void SetUp() override {
    Component::SetUp();
    RegDeleteTreeW(HKEY_CURRENT_USER, kPlace);
    const std::wstring place = kPlace;
    RegCreateKeyW(HKEY_CURRENT_USER, (place + L"\\Machine").c_str(), &machine_);
    RegCreateKeyW(HKEY_CURRENT_USER, (place + L"\\User").c_str(), &user_);
    ASSERT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_), ERROR_SUCCESS);
    ASSERT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, user_), ERROR_SUCCESS);
  }
  void TearDown() override {
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(machine_);
    RegCloseKey(user_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kPlace);
    Component::TearDown();
  }

  HRESULT Call(const char* name) const { return Export<HRESULT WINAPI()>(name)(); }
  HRESULT Install(BOOL install, const wchar_t* what) const {
    return Export<HRESULT WINAPI(BOOL, LPCWSTR)>("DllInstall")(install, what);
  }

  static std::wstring Read(HKEY root, const std::wstring& key, const wchar_t* name = nullptr) {
    wchar_t text[1024] = L"";
    DWORD size = sizeof text;
    RegGetValueW(root, (L"Software\\Classes\\" + key).c_str(), name, RRF_RT_REG_SZ, nullptr, text,
                 &size);
    return text;
  }

  /// The keys below Software\Classes that hold no others.
  static std::set<std::wstring> Leaves(HKEY root, const std::wstring& path = L"Software\\Classes") {
    std::set<std::wstring> leaves;
    HKEY key = nullptr;
    if (RegOpenKeyW(root, path.c_str(), &key) != ERROR_SUCCESS) return leaves;
    wchar_t name[256];
    for (DWORD i = 0; RegEnumKeyW(key, i, name, 256) == ERROR_SUCCESS; ++i) {
      const auto below = Leaves(root, path + L"\\" + name);
      leaves.insert(below.begin(), below.end());
      if (below.empty()) leaves.insert(path + L"\\" + name);
    }
    RegCloseKey(key);
    return leaves;
  }

  static std::wstring TextOf(REFGUID id) {
    wchar_t text[40];
    StringFromGUID2(id, text, 40);
    return text;
  }
  static std::wstring ClassId() { return TextOf(__uuidof(::clsMain)); }

  static constexpr wchar_t kPlace[] = L"Software\\KTRVAddressBookTests";
  HKEY machine_ = nullptr;
  HKEY user_ = nullptr;
};

TEST_F(Registration, LeadsFromTheNameToTheDll) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  EXPECT_EQ(Read(machine_, L"KTRVAddressBook.clsMain\\CLSID"), ClassId());
  EXPECT_EQ(Read(machine_, L"KTRVAddressBook.clsMain\\CurVer"), L"KTRVAddressBook.clsMain.1");
  const std::wstring server = L"CLSID\\" + ClassId() + L"\\InprocServer32";
  EXPECT_EQ(_wcsicmp(Read(machine_, server).c_str(), DllPath().c_str()), 0);
  EXPECT_EQ(Read(machine_, server, L"ThreadingModel"), L"Apartment");
  EXPECT_TRUE(Leaves(user_).empty());
}

TEST_F(Registration, LeadsFromTheClassToTheTypeLibrary) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  const std::wstring id = TextOf(LIBID_KTRVAddressBook);
  EXPECT_EQ(Read(machine_, L"CLSID\\" + ClassId() + L"\\TypeLib"), id);
  const std::wstring version = L"TypeLib\\" + id + L"\\1.0";
  const std::wstring platform = sizeof(void*) == 8 ? L"win64" : L"win32";
  EXPECT_EQ(_wcsicmp(Read(machine_, version + L"\\0\\" + platform).c_str(), DllPath().c_str()), 0);
  const std::wstring folder = DllPath().substr(0, DllPath().find_last_of(L'\\'));
  EXPECT_EQ(_wcsicmp(Read(machine_, version + L"\\HELPDIR").c_str(), folder.c_str()), 0);
}

TEST_F(Registration, IsTakenAwayWithoutARest) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  ASSERT_FALSE(Leaves(machine_).empty());
  ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
  // The three folders are the system's own.
  EXPECT_EQ(Leaves(machine_),
            (std::set<std::wstring>{L"Software\\Classes\\CLSID", L"Software\\Classes\\Interface",
                                    L"Software\\Classes\\TypeLib"}));
}

TEST_F(Registration, TakingAwayWhatIsNotThereSucceeds) {
  EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(Install(FALSE, L"user"), S_OK);
}

TEST_F(Registration, ForTheUserOnlyLeavesTheMachineAlone) {
  ASSERT_EQ(Install(TRUE, L"user"), S_OK);
  EXPECT_EQ(Read(user_, L"KTRVAddressBook.clsMain\\CLSID"), ClassId());
  EXPECT_TRUE(Leaves(machine_).empty());
  ASSERT_EQ(Install(FALSE, L"user"), S_OK);
  EXPECT_EQ(Read(user_, L"KTRVAddressBook.clsMain\\CLSID"), L"");
}

TEST_F(Registration, TwiceIsAsGoodAsOnce) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  const auto once = Leaves(machine_);
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  EXPECT_EQ(Leaves(machine_), once);
}

}  // namespace
}  // namespace ktrv::tests
