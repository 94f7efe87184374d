#include <windows.h>
#include <ocidl.h>

#include "tests/wine/component/Component.h"

namespace ktrv::tests {
namespace {

using Exports = Component;

TEST_F(Exports, AnUnknownClassIsNotAvailable) {
  void* object = this;
  EXPECT_EQ(GetClassObject(CLSID_StdGlobalInterfaceTable, IID_IClassFactory, &object),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
}

TEST_F(Exports, ANullOutPointerIsRefused) {
  EXPECT_EQ(GetClassObject(__uuidof(::clsMain), IID_IClassFactory, nullptr), E_POINTER);
  EXPECT_EQ(Factory()->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(Make()->get_LogFile(nullptr), E_POINTER);
  EXPECT_EQ(Make()->LoadFolders(1, nullptr), E_POINTER);
  EXPECT_EQ(Make()->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(Exports, AnUnknownInterfaceIsRefusedAndNothingLeaks) {
  void* object = this;
  EXPECT_EQ(Factory()->CreateInstance(nullptr, IID_IStream, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
}

TEST_F(Exports, AggregationIsRefused) {
  const ComPtr<IClassFactory> factory = Factory();
  void* object = this;
  EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
}

TEST_F(Exports, AnObjectKeepsTheDllLoaded) {
  const ComPtr<_clsMain> object = Make();
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
}

TEST_F(Exports, ACollectionKeepsTheDllLoadedAfterItsObjectIsGone) {
  ComPtr<_TextCollection> texts;
  ASSERT_EQ(Make()->get_SelectedRecipients(texts.Out()), S_OK);
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  long count = -1;
  EXPECT_EQ(texts->get_Count(&count), S_OK);
  EXPECT_EQ(count, 0);
}

TEST_F(Exports, ALockKeepsTheDllLoadedUntilItIsTakenOff) {
  Factory()->LockServer(TRUE);
  EXPECT_EQ(CanUnloadNow(), S_FALSE);
  Factory()->LockServer(FALSE);
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

TEST_F(Exports, AllInterfacesOfAnObjectAreOneObject) {
  const ComPtr<_clsMain> object = Make();
  ComPtr<IUnknown> first;
  object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(first.Out()));
  for (const IID& id : {IID_IDispatch, IID_ISupportErrorInfo, IID_IProvideClassInfo}) {
    ComPtr<IUnknown> other;
    ComPtr<IUnknown> second;
    ASSERT_EQ(object->QueryInterface(id, reinterpret_cast<void**>(other.Out())), S_OK);
    other->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(second.Out()));
    EXPECT_EQ(second.Get(), first.Get());
  }
}

TEST_F(Exports, TheClassTellsItsType) {
  const ComPtr<_clsMain> object = Make();
  ComPtr<IProvideClassInfo> provider;
  object->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(provider.Out()));
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(provider->GetClassInfo(type.Out()), S_OK);
  Bstr name;
  type->GetDocumentation(MEMBERID_NIL, name.Address(), nullptr, nullptr, nullptr);
  EXPECT_EQ(name.Text(), L"clsMain");
}

TEST_F(Exports, TheRegistrationEntriesAreThere) {
  EXPECT_NE(Export<void()>("DllRegisterServer"), nullptr);
  EXPECT_NE(Export<void()>("DllUnregisterServer"), nullptr);
  EXPECT_NE(Export<void()>("DllInstall"), nullptr);
}

TEST_F(Exports, ASessionLivesOnBetweenTheObjectsOfAThread) {
  const Bstr text(L"DSN=Kept");
  ASSERT_EQ(Make()->put_RemoteDBString(text.Get()), S_OK);
  Bstr read;
  ASSERT_EQ(Make()->get_RemoteDBString(read.Address()), S_OK);
  EXPECT_EQ(read.Text(), L"DSN=Kept");
}

TEST_F(Exports, TheSessionEndsWhenTheDllMayBeUnloaded) {
  const Bstr text(L"DSN=Gone");
  ASSERT_EQ(Make()->put_RemoteDBString(text.Get()), S_OK);
  ASSERT_EQ(CanUnloadNow(), S_OK);
  Bstr read;
  ASSERT_EQ(Make()->get_RemoteDBString(read.Address()), S_OK);
  EXPECT_EQ(read.Text(), L"");
}

}  // namespace
}  // namespace ktrv::tests
