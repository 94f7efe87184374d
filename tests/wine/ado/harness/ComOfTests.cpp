#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

namespace ktrv::tests {
namespace {

/// The main thread is a host's: it has COM, in an apartment of its own.
class ComOfTests final : public testing::Environment {
 public:
  void SetUp() override { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  void TearDown() override { CoUninitialize(); }
};

/// Fails each test that leaves an object of the server behind.
class ObjectsWatch final : public testing::EmptyTestEventListener {
 public:
  void OnTestEnd(const testing::TestInfo&) override {
    const HMODULE server = GetModuleHandleW(L"adoserver.dll");
    if (!server) return;
    const auto ask = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(server, "DllCanUnloadNow")));
    if (ask() != S_OK) ADD_FAILURE() << "Objects of ADO were not released";
  }
};

const bool kAdded = [] {
  testing::AddGlobalTestEnvironment(new ComOfTests);
  testing::UnitTest::GetInstance()->listeners().Append(new ObjectsWatch);
  return true;
}();

}  // namespace
}  // namespace ktrv::tests
