#include <future>
#include <gmock/gmock.h>
#include <thread>

#include "tests/native/support/SchemaScript.h"
#include "tests/native/support/SqliteFile.h"
#include "tests/wine/com/Late.h"
#include "tests/wine/component/Component.h"
#include "tests/wine/component/MessageBox.h"
#include "windows/base/WideText.h"

namespace ktrv::tests {
namespace {

class SessionOfAThread : public Component {
 protected:
  short Init(_clsMain* object, const std::wstring& connection) {
    const Bstr client, remote(connection);
    Bstr dialect(L"SQL"), log(Log);
    short result = -1;
    EXPECT_EQ(object->Init(client.Get(), remote.Get(), ::RuntAtClient, dialect.Address(),
                           log.Address(), &result),
              S_OK);
    return result;
  }
  void TearDown() override {
    DeleteFileW(Log.c_str());
    Component::TearDown();
  }
  std::wstring Log = FreshFile(L"session.log");
};

TEST_F(SessionOfAThread, InitReachesADatabaseAndLogsIt) {
  EXPECT_EQ(Init(Make().Get(), L"Driver=SQLite3;Database=:memory:"), 1);
  EXPECT_EQ(ReadFile(Log),
            "KTRVAddressBook: Starting initialization routine...\r\n"
            "KTRVAddressBook: Initialization routine completed.....\r\n");
}

TEST_F(SessionOfAThread, InitLeavesARecordWhenItCannotReachOne) {
  EXPECT_EQ(Init(Make().Get(), L"Driver=SQLite3;Database=/nowhere/at/all.db"), 0);
  EXPECT_THAT(ReadFile(Log),
              testing::HasSubstr("KTRVAddressBook: Error occured. Sub: Init, Module: clsMain\r\n"));
}

TEST_F(SessionOfAThread, EveryOperationIsRefusedInItsOwnWordsBeforeInit) {
  const ComPtr<_clsMain> object = Make();
  Init(object.Get(), L"Driver=SQLite3;Database=/nowhere/at/all.db");
  DeleteFileW(Log.c_str());
  Bstr text(L"1");
  ::TypeOfGroup group = ::SharedGroup;
  const auto refused = [&](auto&& call) {
    std::future<std::wstring> shown = AnswerBox();
    long result = -1;
    EXPECT_EQ(call(&result), S_OK);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(shown.get(), L"Initialisation routine for AddressBook DLL has not been done.");
  };
  refused(
      [&](long* r) { return object->EditContacts(1, ::SharedContact, 1, nullptr, nullptr, r); });
  refused([&](long* r) { return object->AddContacts(1, ::LocalContact, nullptr, nullptr, r); });
  refused([&](long* r) { return object->AddGroup(1, text.Address(), nullptr, nullptr, r); });
  refused([&](long* r) { return object->EditGroup(1, text.Address(), &group, nullptr, r); });
  refused([&](long* r) { return object->LoadAddressBook(1, r); });
  refused([&](long* r) { return object->LoadRecipients(1, VARIANT_TRUE, r); });
  refused([&](long* r) { return object->LoadFolders(1, r); });
  const std::string editGroup =
      "KTRVAddressBook: Could not load edit group because initialisation routine not "
      "completed....\r\n";
  EXPECT_EQ(ReadFile(Log),
            "KTRVAddressBook: Could not load edit contacts because initialisation routine not "
            "completed....\r\n"
            "KTRVAddressBook: Could not load add contacts because initialisation routine not "
            "completed....\r\n"
            "KTRVAddressBook: Could not load add group because initialisation routine not "
            "completed....\r\n" +
                editGroup + editGroup + editGroup + editGroup);
}

TEST_F(SessionOfAThread, OperationsLeaveVariablesAsTheyAre) {
  const ComPtr<_clsMain> object = Make();
  Init(object.Get(), L"Driver=SQLite3;Database=/nowhere/at/all.db");
  Late late(object.Get());
  Value text(L"3"), type(1L);
  const auto call = [&](const wchar_t* operation, auto&&... arguments) {
    std::future<std::wstring> refused = AnswerBox();
    EXPECT_EQ(late.Call(operation, 1L, std::forward<decltype(arguments)>(arguments)...), S_OK);
    refused.get();
    EXPECT_EQ(text.Text(), L"3");
    EXPECT_EQ(V_VT(&type.Get()), VT_I4);
    EXPECT_EQ(V_I4(&type.Get()), 1);
  };
  const auto variable = [](Value& value) { return Value::Variable(value.Get()); };
  call(L"EditGroup", variable(text), variable(type), variable(text));
  call(L"AddGroup", variable(text), variable(type), variable(text));
  call(L"EditContacts", variable(type), 5L, variable(text), variable(text));
  call(L"AddContacts", variable(type), variable(text), variable(text));
}

TEST_F(SessionOfAThread, AnotherThreadHasASessionOfItsOwnWhichEndsWithItsCom) {
  const ComPtr<_clsMain> object = Make();
  const Bstr text(L"DSN=First");
  object->put_RemoteDBString(text.Get());
  std::wstring seen = L"?";
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      const ComPtr<_clsMain> other = Make();
      Bstr read;
      other->get_RemoteDBString(read.Address());
      seen = read.Text();
    }
    CoUninitialize();
  }).join();
  EXPECT_EQ(seen, L"");
  Bstr read;
  object->get_RemoteDBString(read.Address());
  EXPECT_EQ(read.Text(), L"DSN=First");
  // TearDown finds that the other thread left nothing.
}

TEST_F(SessionOfAThread, NoLogThatCannotBeWrittenStopsTheWork) {
  for (const std::wstring& path : {TestFolder(), TestFolder() + L"\\no such folder\\a.log"}) {
    Log = path;
    const ComPtr<_clsMain> object = Make();
    EXPECT_EQ(Init(object.Get(), L"Driver=SQLite3;Database=:memory:"), 1);
    EXPECT_EQ(Init(object.Get(), L"Driver=SQLite3;Database=/nowhere/at/all.db"), 0);
  }
  Log = FreshFile(L"session.log");
}

TEST_F(SessionOfAThread, NoPasswordReachesTheLog) {
  Init(Make().Get(), L"Driver=no such driver;Uid=sms;Pwd=s3cr3t");
  const std::string log = ReadFile(Log);
  EXPECT_THAT(log, testing::HasSubstr("Error Description : "));
  EXPECT_THAT(log, testing::Not(testing::HasSubstr("s3cr3t")));
}

/// With a database that has the tables of an address book and one administrator, of id 1.
class SessionWithABook : public SessionOfAThread {
 protected:
  void SetUp() override {
    SessionOfAThread::SetUp();
    database::Connection connection(database_.Surroundings());
    connection.Open(database_.ConnectionString());
    RunSchemaScript(connection, "sqlite.sql");
    RunSchemaScript(connection, "sqlite-host.sql");
    connection.Execute(u"INSERT INTO SMS_USERS (ID, NAME, ADMIN) VALUES (1, 'One', 1)");
    connection.Execute(u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME) VALUES (5, 0, 'Anna')");
    connection.Execute(u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (3, 'Team', 0)");
    connection.Close();
  }
  ComPtr<_clsMain> MakeReady() {
    ComPtr<_clsMain> object = Make();
    EXPECT_EQ(Init(object.Get(), windows::ToWide(database_.ConnectionString())), 1);
    return object;
  }
  /// Whether the component says so within ten seconds: a fetch that was cancelled may still end.
  bool MayUnloadSoon() const {
    const ULONGLONG end = GetTickCount64() + 10000;
    while (CanUnloadNow() != S_OK) {
      if (GetTickCount64() > end) return false;
      Sleep(10);
    }
    return true;
  }
  static HWND Form() {
    HWND form = FindWindowW(L"KTRVAddressBookForm", nullptr);
    return form && IsWindowVisible(form) ? form : nullptr;
  }

 private:
  SqliteFile database_;
};

TEST_F(SessionWithABook, NothingIsLeftWhenTheLastReferenceGoesWithTheBookOpen) {
  ComPtr<_clsMain> object = MakeReady();
  long result = -1;
  ASSERT_EQ(object->LoadAddressBook(1, &result), S_OK);
  ASSERT_EQ(result, 1);
  ASSERT_NE(Form(), nullptr);
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  object = ComPtr<_clsMain>();
  EXPECT_EQ(Form(), nullptr);
  EXPECT_TRUE(MayUnloadSoon());
}

/// A user who closes each dialog that comes, while one of these lives.
class ImpatientUser {
 public:
  ImpatientUser() : timer_(SetTimer(nullptr, 0, 20, &Look)) { Closed = 0; }
  ~ImpatientUser() { KillTimer(nullptr, timer_); }
  ImpatientUser(const ImpatientUser&) = delete;
  ImpatientUser& operator=(const ImpatientUser&) = delete;

  static inline int Closed = 0;

 private:
  static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
    const HWND form = FindWindowW(L"KTRVAddressBookForm", nullptr);
    if (!form || !IsWindowVisible(form) || GetPropW(form, kSeen)) return;
    SetPropW(form, kSeen, form);
    ++Closed;
    PostMessageW(form, WM_CLOSE, 0, 0);
  }
  static constexpr const wchar_t* kSeen = L"Seen";

  UINT_PTR timer_;
};

TEST_F(SessionWithABook, AnOperationThatRanLeavesVariablesAsTheyAre) {
  const ComPtr<_clsMain> object = MakeReady();
  Late late(object.Get());
  const ImpatientUser user;
  Value id(L" 3 "), folder(L"0"), name(L"Other"), number(L" 98001"), type(1L);
  int dialogs = 0;
  const auto call = [&](const wchar_t* operation, auto&&... arguments) {
    EXPECT_EQ(late.Call(operation, 1L, std::forward<decltype(arguments)>(arguments)...), S_OK);
    EXPECT_EQ(V_I4(&late.Result.Get()), 1);
    EXPECT_EQ(user.Closed, ++dialogs);
    EXPECT_EQ(id.Text(), L" 3 ");
    EXPECT_EQ(folder.Text(), L"0");
    EXPECT_EQ(name.Text(), L"Other");
    EXPECT_EQ(number.Text(), L" 98001");
    EXPECT_EQ(V_VT(&type.Get()), VT_I4);
    EXPECT_EQ(V_I4(&type.Get()), 1);
  };
  const auto variable = [](Value& value) { return Value::Variable(value.Get()); };
  call(L"EditGroup", variable(id), variable(type), variable(name));
  call(L"AddGroup", variable(folder), variable(type), variable(name));
  call(L"EditContacts", variable(type), 5L, variable(name), variable(number));
  call(L"AddContacts", variable(type), variable(name), variable(number));
}

/// What happens while the dialog is open: the host lets its object go, and the user cancels.
struct WhileOpen {
  static inline ComPtr<_clsMain> Object;
  static inline HRESULT MayUnload = E_FAIL;
  static inline HRESULT(WINAPI* CanUnload)() = nullptr;
  static inline bool Ran = false;

  static void CALLBACK LetGo(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND form = FindWindowW(L"KTRVAddressBookForm", nullptr);
    if (!form || !IsWindowVisible(form)) return;
    KillTimer(nullptr, timer);
    Object = ComPtr<_clsMain>();
    MayUnload = CanUnload();
    Ran = IsWindow(form) && IsWindowVisible(form);
    PostMessageW(form, WM_CLOSE, 0, 0);
  }
};

TEST_F(SessionWithABook, NothingIsLeftWhenTheLastReferenceGoesUnderItsDialog) {
  WhileOpen::Object = MakeReady();
  WhileOpen::CanUnload = Export<HRESULT WINAPI()>("DllCanUnloadNow");
  SetTimer(nullptr, 0, 20, &WhileOpen::LetGo);
  Late late(WhileOpen::Object.Get());
  EXPECT_EQ(late.Call(L"LoadFolders", 1L), S_OK);
  EXPECT_EQ(V_I4(&late.Result.Get()), 1);
  EXPECT_TRUE(WhileOpen::Ran) << "the dialog went with the host's reference, or never came";
  EXPECT_EQ(WhileOpen::MayUnload, S_FALSE);
  EXPECT_EQ(Form(), nullptr);
  EXPECT_TRUE(MayUnloadSoon());
}

TEST_F(SessionOfAThread, TwoProcessesCanWriteOneLogWithoutMixingRecords) {
  constexpr int kRecords = 150;
  std::vector<PROCESS_INFORMATION> writers;
  for (const wchar_t* name : {L"one", L"two"}) {
    std::wstring command = L"\"" + TestFolder() + L"\\logwriter.exe\" \"" + Log + L"\" " + name +
                           L" " + std::to_wstring(kRecords);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION writer{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &start, &writer));
    writers.push_back(writer);
  }
  for (const PROCESS_INFORMATION& writer : writers) {
    EXPECT_EQ(WaitForSingleObject(writer.hProcess, 60000), WAIT_OBJECT_0);
    CloseHandle(writer.hProcess);
    CloseHandle(writer.hThread);
  }
  std::string log = ReadFile(Log);
  int records = 0;
  const std::string head = "************************* ERROR *************************\r\n";
  const std::string tail = "*********************************************************\r\n";
  while (!log.empty()) {
    ASSERT_EQ(log.compare(0, head.size(), head), 0) << "a record begins inside another";
    const std::size_t end = log.find(tail);
    ASSERT_NE(end, std::string::npos);
    ASSERT_EQ(log.find(head, 1) < end, false);
    log.erase(0, end + tail.size());
    ++records;
  }
  EXPECT_EQ(records, 2 * kRecords);
}

}  // namespace
}  // namespace ktrv::tests
