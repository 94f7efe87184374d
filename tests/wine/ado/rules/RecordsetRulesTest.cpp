#include "tests/wine/ado/rules/RulesFixture.h"

namespace ktrv::tests {
namespace {

using database::ado::kAsyncExecute;

class AdoRulesInBackground : public AdoRules {
 protected:
  Object Start(StringView text) const {
    const Value missing = Value::Missing();
    const Value options(kAsyncExecute | 1);
    return Object(Command(text).Call(L"Execute", {&missing, &missing, &options}));
  }
};

TEST_F(AdoRules, RowsGoForwardOnlyAndCannotBeChanged) {
  const Object rows = Rows(u"SELECT * FROM T");
  EXPECT_EQ(NumberOf([&] { rows.Call(L"MovePrevious"); }), 3219);
  EXPECT_EQ(NumberOf([&] { rows.Call(L"AddNew"); }), ErrorNumber::NotUpdatable);
}

TEST_F(AdoRules, BehindTheLastRowThereIsNoCurrentOne) {
  const Object rows = Rows(u"SELECT NAME FROM T");
  const Value first(0);
  const Object name = rows.Part(L"Fields").Part(L"Item", {&first});
  EXPECT_EQ(name.Get(L"Value").Text(), u"Ann");
  rows.Call(L"MoveNext");
  rows.Call(L"MoveNext");
  EXPECT_TRUE(rows.Get(L"EOF").Truth());
  EXPECT_EQ(NumberOf([&] { name.Get(L"Value"); }), ErrorNumber::NoCurrentRecord);
  EXPECT_EQ(NumberOf([&] { rows.Call(L"MoveNext"); }), ErrorNumber::NoCurrentRecord);
  EXPECT_EQ(NumberOf([&] { rows.Call(L"GetRows"); }), ErrorNumber::NoCurrentRecord);
}

TEST_F(AdoRules, UnknownFieldIsNotFound) {
  const Object fields = Rows(u"SELECT NAME FROM T").Part(L"Fields");
  const Value name{StringView(u"name")};
  const Value other{StringView(u"ID")};
  const Value place(1);
  EXPECT_EQ(NumberOf([&] { fields.Part(L"Item", {&name}); }), 0);
  EXPECT_EQ(NumberOf([&] { fields.Part(L"Item", {&other}); }), ErrorNumber::ItemNotFound);
  EXPECT_EQ(NumberOf([&] { fields.Part(L"Item", {&place}); }), ErrorNumber::ItemNotFound);
}

TEST_F(AdoRules, NoRowsOrAWrongNumberOfThemCannotBeGot) {
  const Object rows = Rows(u"SELECT * FROM T");
  const Value none(0);
  const Value text{StringView(u"2")};
  EXPECT_EQ(NumberOf([&] { rows.Call(L"GetRows", {&none}); }), ErrorNumber::InvalidArgument);
  EXPECT_EQ(NumberOf([&] { rows.Call(L"GetRows", {&text}); }), ErrorNumber::InvalidArgument);
}

TEST_F(AdoRules, TextWithoutRowsGivesAClosedRecordset) {
  const Object rows = Rows(u"DELETE FROM T");
  EXPECT_EQ(rows.GetWhole(L"State"), 0);
  EXPECT_EQ(NumberOf([&] { rows.Get(L"EOF"); }), ErrorNumber::ObjectClosed);
  EXPECT_EQ(NumberOf([&] { rows.Call(L"Close"); }), ErrorNumber::ObjectClosed);
  EXPECT_EQ(NumberOf([&] { rows.Part(L"Fields"); }), ErrorNumber::ObjectClosed);
}

TEST_F(AdoRulesInBackground, NothingElseRunsMeanwhile) {
  const Object rows = Start(kEndless);
  EXPECT_NE(rows.GetWhole(L"State") & 4, 0);
  EXPECT_EQ(NumberOf([&] { rows.Get(L"EOF"); }), ErrorNumber::StillExecuting);
  EXPECT_EQ(NumberOf([&] { Rows(u"SELECT 1"); }), ErrorNumber::StillExecuting);
  rows.Call(L"Cancel");
  EXPECT_EQ(StateAtEnd(rows), 0);
  EXPECT_EQ(NumberOf([&] { Rows(u"SELECT 1"); }), 0);
}

TEST_F(AdoRulesInBackground, FailureIsInErrorsWhenTheWorkHasEnded) {
  const Object rows = Start(u"SELECT * FROM NO_SUCH_TABLE");
  EXPECT_EQ(StateAtEnd(rows), 0);
  EXPECT_EQ(connection.Part(L"Errors").GetWhole(L"Count"), 1);
}

TEST_F(AdoRulesInBackground, RowsAreThereWhenTheWorkHasEnded) {
  const Object rows = Start(u"SELECT * FROM T");
  EXPECT_EQ(StateAtEnd(rows), 1);
  EXPECT_FALSE(rows.Get(L"EOF").Truth());
}

TEST_F(AdoRulesInBackground, ReleasedWhileItRunsItEnds) {
  Start(kEndless).Release();
  EXPECT_EQ(NumberOf([&] { Rows(u"SELECT 1"); }), 0);
}

}  // namespace
}  // namespace ktrv::tests
