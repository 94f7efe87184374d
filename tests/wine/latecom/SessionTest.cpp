#include <atomic>
#include <thread>

#include "tests/wine/component/Component.h"
#include "tests/wine/component/MessageBox.h"

namespace ktrv::tests {
namespace {

class ASession : public Component {
 protected:
  ASession() { Stays = true; }
};

TEST_F(ASession, OutlivesAnObjectThatTheHostReleasesAfterCom) {
  std::wstring seen;
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const ComPtr<_clsMain> object = Make();
    const Bstr text(L"DSN=Late");
    object->put_RemoteDBString(text.Get());
    CoUninitialize();
    Bstr read;
    object->get_RemoteDBString(read.Address());
    seen = read.Text();
  }).join();
  EXPECT_EQ(seen, L"DSN=Late");
  // TearDown finds that the thread left nothing.
}

/// Whether the thread has ended COM in the middle of its call.
std::atomic<bool> comEnded = false;

void CALLBACK EndCom(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  CoUninitialize();
  comEnded = true;
}

TEST_F(ASession, OutlivesACallDuringWhichTheHostEndsCom) {
  HRESULT returned = E_FAIL;
  long result = -1;
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      const ComPtr<_clsMain> object = Make();
      const Bstr log(FreshFile(L"late.log"));
      object->put_LogFile(log.Get());
      // Runs while the box is shown, because the box hands out the thread's messages.
      SetTimer(nullptr, 0, 50, &EndCom);
      std::future<std::wstring> shown = AnswerBoxWhen([] { return comEnded.load(); });
      returned = object->LoadAddressBook(1, &result);
      EXPECT_TRUE(comEnded) << "COM was not ended while the box was shown";
      EXPECT_EQ(shown.get(), L"Initialisation routine for AddressBook DLL has not been done.");
    }
  }).join();
  EXPECT_EQ(returned, S_OK);
  EXPECT_EQ(result, 0);
  // TearDown finds that the thread left nothing.
}

}  // namespace
}  // namespace ktrv::tests
