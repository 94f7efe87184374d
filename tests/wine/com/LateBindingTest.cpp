#include <chrono>
#include <functional>
#include <future>

#include "tests/wine/com/Late.h"

namespace ktrv::tests {
namespace {

// A connection string that fails at once: what arrives of the arguments is seen in the log file and
// in RemoteDBString.
constexpr wchar_t kNowhere[] = L"Driver=SQLite3;Database=/nowhere/at/all.db";

class LateBinding : public Component {
 protected:
  std::wstring Remote(_clsMain* object) {
    Bstr text;
    object->get_RemoteDBString(text.Address());
    return text.Text();
  }
  std::wstring Log = FreshFile(L"late.log");
  void TearDown() override {
    DeleteFileW(Log.c_str());
    Component::TearDown();
  }
};

TEST_F(LateBinding, EveryTextPropertyCanBeWrittenAndRead) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  for (const wchar_t* name : {L"LogFile", L"ClientDBString", L"RemoteDBString"}) {
    ASSERT_EQ(late.Put(name, L"Zo\u00EB \u0930"), S_OK);
    ASSERT_EQ(late.Call(name), S_OK);
    EXPECT_EQ(late.Result.Text(), L"Zo\u00EB \u0930");
  }
}

TEST_F(LateBinding, EveryReadOnlyPropertyCanBeReadAndNotWritten) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  for (const wchar_t* name : {L"NewContactId", L"NewContactType", L"NewGroupId", L"NewGroupType",
                              L"NewGroupName", L"strContactsName"}) {
    EXPECT_EQ(late.Call(name), S_OK);
    EXPECT_EQ(V_VT(&late.Result.Get()), VT_BSTR);
    EXPECT_EQ(late.Put(name, L"x"), DISP_E_MEMBERNOTFOUND);
  }
  for (const wchar_t* name : {L"SelectedRecipients", L"SelectedMobileNos"}) {
    EXPECT_EQ(late.Call(name), S_OK);
    EXPECT_EQ(V_VT(&late.Result.Get()), VT_DISPATCH);
  }
}

TEST_F(LateBinding, NamesHaveNoCase) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  EXPECT_EQ(late.Call(L"NEWGROUPTYPE"), S_OK);
  EXPECT_EQ(late.Result.Text(), L"0");
}

TEST_F(LateBinding, ANumberBecomesTextWhereTextIsWanted) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  ASSERT_EQ(late.Put(L"LogFile", 12L), S_OK);
  ASSERT_EQ(late.Call(L"LogFile"), S_OK);
  EXPECT_EQ(late.Result.Text(), L"12");
}

TEST_F(LateBinding, InitTakesVariablesByReferenceAndLeavesThemAsTheyAre) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  Value remote(kNowhere), dialect(L"SQL"), log(Log.c_str()), runFor(1.0);
  EXPECT_EQ(late.Call(L"Init", L"", Value::Variable(remote.Get()), Value::Variable(runFor.Get()),
                      Value::Variable(dialect.Get()), Value::Variable(log.Get())),
            S_OK);
  EXPECT_EQ(V_VT(&late.Result.Get()), VT_I2);
  EXPECT_EQ(V_I2(&late.Result.Get()), 0);
  EXPECT_EQ(Remote(object.Get()), kNowhere);
  EXPECT_NE(ReadFile(Log), "");
  EXPECT_EQ(V_VT(&runFor.Get()), VT_R8);
  EXPECT_EQ(dialect.Text(), L"SQL");
}

TEST_F(LateBinding, InitTakesNamedArguments) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  Value values[] = {Log.c_str(), L"SQL", 0L, kNowhere, L""};
  EXPECT_EQ(
      late.CallNamed(
          L"Init", {L"LogFile", L"p_DbType", L"p_Runfor", L"p_RemoteDBString", L"p_ClientDBString"},
          values),
      S_OK);
  EXPECT_EQ(Remote(object.Get()), kNowhere);
  EXPECT_NE(ReadFile(Log), "");
}

TEST_F(LateBinding, InitNeedsTheArgumentsThatAreNotOptional) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  EXPECT_EQ(late.Call(L"Init", L"", kNowhere, 0L), DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(late.Call(L"Init", L"", kNowhere, 0L, Value::LeftOut()), DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(LateBinding, TooManyArgumentsAreRefused) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  EXPECT_EQ(late.Call(L"LoadFolders", 1L, 2L), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(late.Call(L"NewGroupType", 1L), DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBinding, AnArgumentOfAnotherKindIsATypeMismatchAndNamed) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  EXPECT_EQ(late.Call(L"LoadRecipients", L"many", 0L), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(late.WrongArgument, 1U);
}

TEST_F(LateBinding, ANumberBeyondTheRangeOverflows) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  EXPECT_EQ(late.Call(L"LoadFolders", 5e9), DISP_E_OVERFLOW);
}

TEST_F(LateBinding, AnUnknownNameIsUnknown) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  EXPECT_EQ(late.Call(L"Initialise"), DISP_E_UNKNOWNNAME);
}

TEST_F(LateBinding, AnIndexBehindAPropertyGoesToItsCollection) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  EXPECT_EQ(late.Call(L"SelectedRecipients", 1L), DISP_E_EXCEPTION);
  EXPECT_EQ(late.Failure, MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 9));
  EXPECT_EQ(late.Description, L"Subscript out of range");
  EXPECT_EQ(late.Source, L"KTRVAddressBook.clsMain");
}

TEST_F(LateBinding, AnUnknownKeyIsAnInvalidArgument) {
  const ComPtr<_clsMain> object = Make();
  Late late(object.Get());
  EXPECT_EQ(late.Call(L"SelectedMobileNos", L"key"), DISP_E_EXCEPTION);
  EXPECT_EQ(late.Failure, MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 5));
}

TEST_F(LateBinding, AnEmptyCollectionCanBeEnumeratedInEitherWayThatScriptsAsk) {
  const ComPtr<_clsMain> object = Make();
  ComPtr<_TextCollection> texts;
  ASSERT_EQ(object->get_SelectedRecipients(texts.Out()), S_OK);
  for (const WORD flags : {WORD{DISPATCH_METHOD}, WORD{DISPATCH_PROPERTYGET}}) {
    DISPPARAMS none{};
    Value result;
    ASSERT_EQ(texts->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT, flags, &none,
                            &result.Get(), nullptr, nullptr),
              S_OK);
    ASSERT_EQ(V_VT(&result.Get()), VT_UNKNOWN);
    ComPtr<IEnumVARIANT> enumerator;
    ASSERT_EQ(V_UNKNOWN(&result.Get())
                  ->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(enumerator.Out())),
              S_OK);
    Value first;
    ULONG fetched = 7;
    EXPECT_EQ(enumerator->Next(1, &first.Get(), &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0U);
  }
}

TEST_F(LateBinding, AFailureLeavesItsDescriptionForEarlyBoundHostsToo) {
  const ComPtr<_clsMain> object = Make();
  ComPtr<_TextCollection> texts;
  ASSERT_EQ(object->get_SelectedRecipients(texts.Out()), S_OK);
  Value index(1L);
  Bstr text;
  EXPECT_EQ(texts->get_Item(index.Get(), text.Address()),
            MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 9));
  EXPECT_EQ(LastDescription(), L"Subscript out of range");
}

/// An index whose number is only known by asking it; asked, it lets the collection go, and when the
/// component gives it back it tells whether the component may be taken out of memory.
class AnswerThatLetsGo final : public IDispatch {
 public:
  ComPtr<_TextCollection> Held;
  std::function<HRESULT()> MayUnload;
  bool Asked = false;
  HRESULT WhenGivenBack = E_FAIL;

  STDMETHODIMP QueryInterface(REFIID wanted, void** object) noexcept override {
    const bool known = wanted == IID_IUnknown || wanted == IID_IDispatch;
    *object = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() noexcept override {
    if (--references_ == 1 && Asked) WhenGivenBack = MayUnload();
    return references_;
  }
  STDMETHODIMP GetTypeInfoCount(UINT*) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) noexcept override {
    Asked = true;
    Held = ComPtr<_TextCollection>();
    V_VT(result) = VT_I4;
    V_I4(result) = 1;
    return S_OK;
  }

 private:
  ULONG references_ = 1;
};

TEST_F(LateBinding, ACallDoesNotOutliveTheObjectThatRunsIt) {
  AnswerThatLetsGo index;
  index.MayUnload = [&] { return CanUnloadNow(); };
  {
    const ComPtr<_clsMain> object = Make();
    ASSERT_EQ(object->get_SelectedRecipients(index.Held.Out()), S_OK);
  }
  VARIANT argument;
  V_VT(&argument) = VT_DISPATCH;
  V_DISPATCH(&argument) = &index;
  DISPPARAMS passed{&argument, nullptr, 1, 0};
  Value result;
  EXCEPINFO exception{};
  _TextCollection* const collection = index.Held.Get();
  EXPECT_EQ(collection->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                               &passed, &result.Get(), &exception, nullptr),
            DISP_E_EXCEPTION);
  EXPECT_EQ(exception.scode, MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 9));
  for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) {
    SysFreeString(text);
  }
  ASSERT_TRUE(index.Asked);
  EXPECT_EQ(index.WhenGivenBack, S_FALSE) << "the call goes on in an object that is gone";
}

/// COM hands the calls of another apartment to the thread that made the object.
TEST_F(LateBinding, ACallFromAnotherApartmentIsRunInTheObjectsOwn) {
  const ComPtr<_clsMain> object = Make();
  ComPtr<IStream> ticket;
  ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, object.Get(), ticket.Out()), S_OK);
  std::wstring read;
  std::future<HRESULT> calls = std::async(std::launch::async, [&] {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    HRESULT result = E_UNEXPECTED;
    {
      ComPtr<IDispatch> proxy;
      CoUnmarshalInterface(ticket.Get(), IID_PPV_ARGS(proxy.Out()));
      EXPECT_NE(proxy.Get(), static_cast<IDispatch*>(object.Get())) << "not told apart";
      Late late(proxy.Get());
      late.Put(L"RemoteDBString", L"DSN=Other");
      result = late.Call(L"RemoteDBString");
      read = late.Result.Text();
    }
    CoUninitialize();
    return result;
  });
  while (calls.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&message);
  }
  EXPECT_EQ(calls.get(), S_OK);
  EXPECT_EQ(read, L"DSN=Other");
  Late own(object.Get());
  ASSERT_EQ(own.Call(L"RemoteDBString"), S_OK);
  EXPECT_EQ(own.Result.Text(), L"DSN=Other") << "of another thread's session";
}

TEST_F(LateBinding, TheSameCollectionIsTheSameObject) {
  const ComPtr<_clsMain> object = Make();
  ComPtr<_TextCollection> first, second;
  object->get_SelectedRecipients(first.Out());
  object->get_SelectedRecipients(second.Out());
  EXPECT_EQ(first.Get(), second.Get());
}

}  // namespace
}  // namespace ktrv::tests
