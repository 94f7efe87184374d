// Runs one operation of the address book and prints its results:
//   operations OPERATION CONNECTION-STRING [USER-ID]
// OPERATION is book, recipients, contact, group or folder.
//
// widl generates the header from the IDL file. With Visual C++, #import "KTRVAddressBook.dll" gives
// the same declarations.
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <cwchar>
#include <memory>
#include <string>

#include "KTRVAddressBook_h.h"

namespace {

struct BstrDeleter {
  using pointer = BSTR;
  void operator()(BSTR text) const { SysFreeString(text); }
};
using Bstr = std::unique_ptr<BSTR, BstrDeleter>;

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <class T>
using ComPointer = std::unique_ptr<T, Releaser>;

Bstr MakeBstr(const std::wstring& text) {
  return Bstr(SysAllocString(text.c_str()));
}

using TextProperty = HRESULT (STDMETHODCALLTYPE _clsMain::*)(BSTR*);

void Print(_clsMain& book, const wchar_t* label, TextProperty property) {
  BSTR text = nullptr;
  if (SUCCEEDED((book.*property)(&text))) {
    const Bstr owner(text);
    std::wprintf(L"%ls: %ls\n", label, text ? text : L"");
  }
}

void PrintRecipients(_clsMain& book) {
  _TextCollection* recipients = nullptr;
  if (FAILED(book.get_SelectedRecipients(&recipients))) return;
  const ComPointer<_TextCollection> owner(recipients);
  long count = 0;
  recipients->get_Count(&count);
  for (long number = 1; number <= count; ++number) {
    VARIANT index = {};
    index.vt = VT_I4;
    index.lVal = number;
    BSTR text = nullptr;
    if (FAILED(recipients->get_Item(index, &text))) return;
    const Bstr textOwner(text);
    std::wprintf(L"%ls\n", text);
  }
  Print(book, L"Names", &_clsMain::get_strContactsName);
}

BOOL CALLBACK NoteVisible(HWND window, LPARAM found) {
  if (IsWindowVisible(window)) *reinterpret_cast<bool*>(found) = true;
  return TRUE;
}

bool HasWindows() {
  bool found = false;
  EnumThreadWindows(GetCurrentThreadId(), NoteVisible, reinterpret_cast<LPARAM>(&found));
  return found;
}

/// The address book needs a message loop. This host has no window of its own, so the loop ends when
/// the thread has no visible window any more.
void HandleMessages() {
  MSG message;
  while (HasWindows() && GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

/// \return the operation's result: 1 when its window was shown, else 0
long Run(_clsMain& book, const std::wstring& operation, long userId) {
  long result = 0;
  if (operation == L"book") {
    book.LoadAddressBook(userId, &result);
    HandleMessages();
  } else if (operation == L"recipients") {
    book.LoadRecipients(userId, VARIANT_TRUE, &result);
    PrintRecipients(book);
  } else if (operation == L"contact") {
    // An optional by-reference argument is omitted by a null pointer.
    book.AddContacts(userId, SharedContact, nullptr, nullptr, &result);
    Print(book, L"Contact", &_clsMain::get_NewContactId);
  } else if (operation == L"group") {
    const Bstr folder = MakeBstr(L"0");
    BSTR folderId = folder.get();
    TypeOfGroup type = SharedGroup;
    book.AddGroup(userId, &folderId, &type, nullptr, &result);
    Print(book, L"Group", &_clsMain::get_NewGroupId);
    Print(book, L"Name", &_clsMain::get_NewGroupName);
  } else if (operation == L"folder") {
    book.LoadFolders(userId, &result);
  }
  return result;
}

int Host(const std::wstring& operation, const std::wstring& connectionString, long userId) {
  _clsMain* created = nullptr;
  const HRESULT made = CoCreateInstance(__uuidof(clsMain), nullptr, CLSCTX_INPROC_SERVER,
                                        __uuidof(_clsMain), reinterpret_cast<void**>(&created));
  if (FAILED(made)) {
    std::fwprintf(stderr, L"KTRVAddressBook is not registered (%08lX).\n", made);
    return 1;
  }
  const ComPointer<_clsMain> book(created);
  const Bstr connection = MakeBstr(connectionString);
  const Bstr dialect = MakeBstr(L"SQL");
  BSTR dialectWord = dialect.get();
  short ready = 0;
  book->Init(nullptr, connection.get(), RuntAtServer, &dialectWord, nullptr, &ready);
  if (ready != 1) {
    std::fwprintf(stderr, L"The database did not open; AddressBook.log tells why.\n");
    return 1;
  }
  const long result = Run(*book, operation, userId);
  std::wprintf(L"Result: %ld\n", result);
  return result == 1 ? 0 : 1;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count < 3) {
    std::fwprintf(stderr, L"usage: operations OPERATION CONNECTION-STRING [USER-ID]\n");
    return 2;
  }
  const long userId = count > 3 ? std::wcstol(arguments[3], nullptr, 10) : 1;
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  const int code = Host(arguments[1], arguments[2], userId);
  CoUninitialize();
  return code;
}
