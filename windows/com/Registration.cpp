#include "windows/com/Registration.h"

#include <string>
#include <vector>

#include "KTRVAddressBook_h.h"
#include "windows/base/Module.h"
#include "windows/base/Unique.h"
#include "windows/com/Failure.h"

namespace ktrv::windows::Registration {
namespace {

using UniqueKey = Unique<HKEY, [](HKEY key) { RegCloseKey(key); }>;

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
constexpr wchar_t kName[] = L"KTRVAddressBook.clsMain";
constexpr wchar_t kDescription[] = L"KTRVAddressBook: shared address book";
constexpr wchar_t kTypeLibraryMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";
#ifdef _WIN64
constexpr wchar_t kPlatform[] = L"win64";
constexpr REGSAM kOtherWidth = KEY_WOW64_32KEY;
#else
constexpr wchar_t kPlatform[] = L"win32";
constexpr REGSAM kOtherWidth = KEY_WOW64_64KEY;
#endif

struct Value {
  std::wstring Key;   ///< relative to Software\Classes
  std::wstring Name;  ///< empty: the key's default value
  std::wstring Text;
};

/// A key that is removed with all its subkeys.
struct Tree {
  std::wstring Key;
  /// Whether the DLL of the other bitness uses it too.
  bool Shared = false;
};

std::wstring TextOf(const GUID& id) {
  wchar_t text[40];
  return {text, static_cast<std::size_t>(StringFromGUID2(id, text, 40)) - 1};
}

const std::wstring& ClassKey() {
  static const std::wstring key = L"CLSID\\" + TextOf(__uuidof(::clsMain));
  return key;
}

std::wstring LibraryKey() {
  return L"TypeLib\\" + TextOf(LIBID_KTRVAddressBook);
}

std::vector<Value> Interface(const IID& id, const wchar_t* name) {
  const std::wstring key = L"Interface\\" + TextOf(id);
  return {
      {key, L"", name},
      {key + L"\\ProxyStubClsid32", L"", kTypeLibraryMarshaler},
      {key + L"\\TypeLib", L"", TextOf(LIBID_KTRVAddressBook)},
      {key + L"\\TypeLib", L"Version", L"1.0"},
  };
}

std::vector<Value> Values() {
  const std::wstring name = kName;
  const std::wstring path = ModulePath();
  const std::wstring folder = path.substr(0, path.find_last_of(L'\\'));
  const std::wstring classId = TextOf(__uuidof(::clsMain));
  const std::wstring version = LibraryKey() + L"\\1.0";
  std::vector<Value> values = {
      {ClassKey(), L"", kDescription},
      {ClassKey() + L"\\InprocServer32", L"", path},
      {ClassKey() + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
      {ClassKey() + L"\\ProgID", L"", name + L".1"},
      {ClassKey() + L"\\VersionIndependentProgID", L"", name},
      {ClassKey() + L"\\TypeLib", L"", TextOf(LIBID_KTRVAddressBook)},
      {ClassKey() + L"\\Version", L"", L"1.0"},
      {ClassKey() + L"\\Programmable", L"", L""},
      {name, L"", kDescription},
      {name + L"\\CLSID", L"", classId},
      {name + L"\\CurVer", L"", name + L".1"},
      {name + L".1", L"", kDescription},
      {name + L".1\\CLSID", L"", classId},
      {version, L"", kDescription},
      {version + L"\\FLAGS", L"", L"0"},
      {version + L"\\HELPDIR", L"", folder},
      {version + L"\\0\\" + kPlatform, L"", path},
  };
  for (const auto& [id, interfaceName] :
       {std::pair{__uuidof(_clsMain), L"_clsMain"},
        std::pair{__uuidof(_TextCollection), L"_TextCollection"}}) {
    for (Value& value : Interface(id, interfaceName)) values.push_back(std::move(value));
  }
  return values;
}

/// CLSID and Interface keys exist once per bitness. Names and type library are shared.
std::vector<Tree> Trees() {
  const std::wstring name = kName;
  return {
      {ClassKey()},
      {L"Interface\\" + TextOf(__uuidof(_clsMain))},
      {L"Interface\\" + TextOf(__uuidof(_TextCollection))},
      {LibraryKey() + L"\\1.0\\0\\" + kPlatform},
      {LibraryKey(), true},
      {name, true},
      {name + L".1", true},
  };
}

HKEY Root(For whom) {
  return whom == For::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

/// \throws Error
void Check(LSTATUS status) {
  if (status == ERROR_SUCCESS) return;
  const auto code = static_cast<DWORD>(status);
  throw Error(HRESULT_FROM_WIN32(code), u"The registry cannot be written", u"KTRVAddressBook",
              code);
}

void WriteValue(For whom, const Value& value) {
  HKEY opened = nullptr;
  Check(RegCreateKeyExW(Root(whom), (kClasses + value.Key).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                        nullptr, &opened, nullptr));
  const UniqueKey key(opened);
  Check(RegSetValueExW(key.Get(), value.Name.empty() ? nullptr : value.Name.c_str(), 0, REG_SZ,
                       reinterpret_cast<const BYTE*>(value.Text.c_str()),
                       static_cast<DWORD>((value.Text.size() + 1) * sizeof(wchar_t))));
}

void RemoveTree(For whom, const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(Root(whom), (kClasses + key).c_str());
  if (status != ERROR_FILE_NOT_FOUND && status != ERROR_PATH_NOT_FOUND) Check(status);
}

bool OtherWidthIsRegistered(For whom) {
  HKEY opened = nullptr;
  const std::wstring key = kClasses + ClassKey() + L"\\InprocServer32";
  const bool found = RegOpenKeyExW(Root(whom), key.c_str(), 0, KEY_QUERY_VALUE | kOtherWidth,
                                   &opened) == ERROR_SUCCESS;
  const UniqueKey close(opened);
  if (!found) return false;
  // A system with only one bitness returns the same key for both.
  wchar_t path[MAX_PATH];
  DWORD size = sizeof path;
  const LSTATUS read =
      RegQueryValueExW(opened, nullptr, nullptr, nullptr, reinterpret_cast<BYTE*>(path), &size);
  return read == ERROR_MORE_DATA || (read == ERROR_SUCCESS && ModulePath() != path);
}

}  // namespace

HRESULT Write(For whom) noexcept {
  return Guarded(GUID_NULL, [&] {
    for (const Value& value : Values()) WriteValue(whom, value);
  });
}

HRESULT Remove(For whom) noexcept {
  return Guarded(GUID_NULL, [&] {
    // Check before the own keys are removed: with only one bitness they are also the other's.
    const bool shared = OtherWidthIsRegistered(whom);
    for (const Tree& tree : Trees()) {
      if (!tree.Shared || !shared) RemoveTree(whom, tree.Key);
    }
  });
}

}  // namespace ktrv::windows::Registration
