#include "tests/wine/ado/rules/RulesFixture.h"

namespace ktrv::tests {
namespace {

TEST_F(AdoRules, CommandNeedsAnOpenConnection) {
  const Object command = Object::Create(L"ADODB.Command");
  command.Put(L"CommandText", Value(StringView(u"SELECT 1")));
  EXPECT_EQ(NumberOf([&] { command.Call(L"Execute"); }), ErrorNumber::InvalidConnection);
  const Object closed = Object::Create(L"ADODB.Connection");
  EXPECT_EQ(NumberOf([&] { command.PutReference(L"ActiveConnection", closed); }),
            ErrorNumber::InvalidConnection);
  EXPECT_EQ(NumberOf([&] { command.PutReference(L"ActiveConnection", command); }),
            ErrorNumber::InvalidArgument);
}

TEST_F(AdoRules, CommandNeedsAText) {
  EXPECT_EQ(NumberOf([&] { Command(u" ").Call(L"Execute"); }), ErrorNumber::NoCommandText);
}

TEST_F(AdoRules, CommandNeedsAValueForEachMark) {
  const Object command = Command(u"SELECT '?' FROM T WHERE ID = ?");
  EXPECT_EQ(NumberOf([&] { command.Call(L"Execute"); }), -2147217904);
  Append(command, Parameter(command, AdoType::Integer));
  EXPECT_EQ(NumberOf([&] { command.Call(L"Execute"); }), -2147217904) << "no value";
  const Value first(0);
  command.Part(L"Parameters").Part(L"Item", {&first}).Put(L"Value", Value(1));
  EXPECT_EQ(NumberOf([&] { command.Call(L"Execute"); }), 0);
}

TEST_F(AdoRules, OptionsAndTargetsOfAnotherKindAreRefused) {
  const Object command = Command(u"SELECT 1");
  const Value missing = Value::Missing();
  const Value options(0x4000);
  EXPECT_EQ(NumberOf([&] {
              command.Call(L"Execute", {&missing, &missing, &options});
            }),
            ErrorNumber::InvalidArgument);
  EXPECT_EQ(NumberOf([&] { command.Call(L"Execute", {&options}); }), ErrorNumber::InvalidArgument)
      << "the number of rows needs a variable";
}

TEST_F(AdoRules, ParameterOfATextNeedsASize) {
  const Object command = Command(u"SELECT 1");
  for (const std::int32_t type :
       {AdoType::VarChar, AdoType::LongVarChar, AdoType::VarWChar, AdoType::LongVarWChar}) {
    EXPECT_EQ(NumberOf([&] { Append(command, Parameter(command, type)); }), 3708) << type;
    EXPECT_EQ(NumberOf([&] { Append(command, Parameter(command, type, 1)); }), 0) << type;
  }
  EXPECT_EQ(NumberOf([&] { Append(command, Parameter(command, 0, 1)); }), 3708) << "no type";
}

TEST_F(AdoRules, ParameterOfAnUnknownTypeOrDirectionIsRefused) {
  const Object command = Command(u"SELECT 1");
  EXPECT_EQ(NumberOf([&] { Parameter(command, 99); }), ErrorNumber::InvalidArgument);
  EXPECT_EQ(NumberOf([&] { Parameter(command, AdoType::Integer, -1); }),
            ErrorNumber::InvalidArgument);
  EXPECT_EQ(NumberOf([&] { Parameter(command, AdoType::Integer, 0, 7); }),
            ErrorNumber::InvalidArgument);
}

TEST_F(AdoRules, ParameterIsAppendedOnce) {
  const Object command = Command(u"SELECT 1");
  const Object parameter = Parameter(command, AdoType::Integer);
  Append(command, parameter);
  EXPECT_EQ(NumberOf([&] { Append(command, parameter); }), 3367);
  EXPECT_EQ(NumberOf([&] { Append(command, connection); }), ErrorNumber::InvalidArgument);
  EXPECT_EQ(command.Part(L"Parameters").GetWhole(L"Count"), 1);
  const Value name{StringView(u"Q")};
  EXPECT_EQ(NumberOf([&] { command.Part(L"Parameters").Part(L"Item", {&name}); }),
            ErrorNumber::ItemNotFound);
}

TEST_F(AdoRules, ValueOfAnotherTypeIsRefused) {
  const Object command = Command(u"SELECT 1");
  const auto put = [&](std::int32_t type, const Variant& value, std::int32_t size = 0) {
    return NumberOf([&] { Parameter(command, type, size).Put(L"Value", Value(value)); });
  };
  EXPECT_EQ(put(AdoType::Integer, String(u"12")), 0);
  EXPECT_EQ(put(AdoType::Integer, String(u"twelve")), ErrorNumber::DataConversion);
  EXPECT_EQ(put(AdoType::Integer, std::int64_t{1} << 31), ErrorNumber::DataConversion);
  EXPECT_EQ(put(AdoType::BigInt, std::int64_t{1} << 31), 0);
  EXPECT_EQ(put(AdoType::Double, String(u"x")), ErrorNumber::DataConversion);
  EXPECT_EQ(put(AdoType::DbTimeStamp, String(u"x")), ErrorNumber::DataConversion);
  EXPECT_EQ(put(AdoType::Boolean, String(u"x")), ErrorNumber::DataConversion);
  EXPECT_EQ(put(AdoType::VarWChar, String(u"abc"), 3), 0);
  EXPECT_EQ(put(AdoType::VarWChar, String(u"abcd"), 3), ErrorNumber::DataConversion);
  EXPECT_EQ(put(AdoType::VarWChar, Null{}, 3), 0);
}

TEST_F(AdoRules, NarrowTextLosesWhatTheCodePageLacks) {
  const Object command = Command(u"INSERT INTO T (ID, NAME) VALUES (3, ?)");
  const Object parameter = Parameter(command, AdoType::VarChar, 20);
  parameter.Put(L"Value", Value(StringView(u"नाम")));
  Append(command, parameter);
  command.Call(L"Execute");
  const Object rows = Rows(u"SELECT NAME FROM T WHERE ID = 3");
  const Value first(0);
  EXPECT_EQ(rows.Part(L"Fields").Part(L"Item", {&first}).Get(L"Value").Text(), u"???");
}

}  // namespace
}  // namespace ktrv::tests
