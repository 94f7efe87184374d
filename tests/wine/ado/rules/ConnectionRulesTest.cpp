#include <thread>

#include "tests/wine/ado/rules/RulesFixture.h"

namespace ktrv::tests {
namespace {

TEST_F(AdoRules, OpenConnectionIsNotOpenedAgainAndClosedOneNotClosed) {
  EXPECT_EQ(NumberOf([&] { Open(connection); }), ErrorNumber::ObjectOpen);
  connection.Call(L"Close");
  EXPECT_EQ(connection.GetWhole(L"State"), 0);
  EXPECT_EQ(NumberOf([&] { connection.Call(L"Close"); }), ErrorNumber::ObjectClosed);
  Open(connection);
}

TEST_F(AdoRules, ConnectionStringOfAnOpenConnectionStays) {
  EXPECT_EQ(NumberOf([&] { connection.Put(L"ConnectionString", Value(StringView(u"x"))); }),
            ErrorNumber::ObjectOpen);
}

TEST_F(AdoRules, UnknownProviderIsNotFound) {
  const Object other = Object::Create(L"ADODB.Connection");
  const Value text{StringView(u"Provider=SQLOLEDB;Data Source=x")};
  EXPECT_EQ(NumberOf([&] { other.Call(L"Open", {&text}); }), 3706);
}

TEST_F(AdoRules, FailureOfTheProviderIsInErrorsUntilCleared) {
  EXPECT_EQ(NumberOf([&] { Rows(u"SELECT * FROM NO_SUCH_TABLE"); }), ErrorNumber::TableNotFound);
  const Object errors = connection.Part(L"Errors");
  ASSERT_EQ(errors.GetWhole(L"Count"), 1);
  const Value first(0);
  EXPECT_EQ(errors.Part(L"Item", {&first}).GetWhole(L"Number"), ErrorNumber::TableNotFound);
  errors.Call(L"Clear");
  EXPECT_EQ(errors.GetWhole(L"Count"), 0);
  EXPECT_EQ(NumberOf([&] { errors.Part(L"Item", {&first}); }), ErrorNumber::ItemNotFound);
}

TEST_F(AdoRules, ClosingTheConnectionClosesItsRecordsetsAndFreesItsCommands) {
  const Object rows = Rows(u"SELECT * FROM T");
  const Object command = Command(u"SELECT * FROM T");
  connection.Call(L"Close");
  EXPECT_EQ(rows.GetWhole(L"State"), 0);
  EXPECT_EQ(NumberOf([&] { rows.Get(L"EOF"); }), ErrorNumber::ObjectClosed);
  EXPECT_EQ(NumberOf([&] { command.Call(L"Execute"); }), ErrorNumber::InvalidConnection);
}

TEST_F(AdoRules, AnotherApartmentIsRefused) {
  HRESULT named = S_OK;
  HRESULT called = S_OK;
  const Value reference = connection.Reference();
  IDispatch* const raw = V_DISPATCH(&reference.Raw());
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    wchar_t name[] = L"State";
    LPOLESTR names = name;
    DISPID member = 1;
    named = raw->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_INVARIANT, &member);
    DISPPARAMS none = {};
    called = raw->Invoke(1, IID_NULL, LOCALE_INVARIANT, DISPATCH_PROPERTYGET, &none, nullptr,
                         nullptr, nullptr);
    CoUninitialize();
  }).join();
  EXPECT_EQ(named, RPC_E_WRONG_THREAD);
  EXPECT_EQ(called, RPC_E_WRONG_THREAD);
}

TEST_F(AdoRules, UnknownMembersAndWrongCountsOfArgumentsAreRefused) {
  EXPECT_EQ(NumberOf([&] { connection.Call(L"Reopen"); }), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(NumberOf([&] { connection.Call(L"State"); }), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(NumberOf([&] { connection.Put(L"State", Value(1)); }), DISP_E_MEMBERNOTFOUND);
  const Value any(1);
  EXPECT_EQ(NumberOf([&] { connection.Call(L"Close", {&any}); }), DISP_E_BADPARAMCOUNT);
  const Object other = Object::Create(L"ADODB.Connection");
  EXPECT_EQ(NumberOf([&] { other.Call(L"Open", {&any}); }), ErrorNumber::InvalidArgument);
}

}  // namespace
}  // namespace ktrv::tests
