#include "common/Passwords.h"

#include <gtest/gtest.h>

namespace ktrv::tests {
namespace {

TEST(PasswordsTest, NoKeywordsValueIsLeftInAText) {
  EXPECT_EQ(HidePasswords(u"DSN=Book;Uid=sms;Pwd=s3cr et;Port=1"),
            u"DSN=Book;Uid=sms;Pwd=***;Port=1");
  EXPECT_EQ(HidePasswords(u"PASSWORD = s3cret"), u"PASSWORD = ***");
  EXPECT_EQ(HidePasswords(u"Jet OLEDB:Database Password=s3cret;x"),
            u"Jet OLEDB:Database Password=***;x");
  EXPECT_EQ(HidePasswords(u"passwd=a;PWD=b"), u"passwd=***;PWD=***");
}

TEST(PasswordsTest, NoPartOfAQuotedValueIsLeft) {
  EXPECT_EQ(HidePasswords(u"PWD={a;b}}c};Port=1"), u"PWD=***;Port=1");
  EXPECT_EQ(HidePasswords(u"Password='a;''b';Port=1"), u"Password=***;Port=1");
  EXPECT_EQ(HidePasswords(u"Password=\"a;b\";Port=1"), u"Password=***;Port=1");
  EXPECT_EQ(HidePasswords(u"PWD={never closed; at all"), u"PWD=***");
}

TEST(PasswordsTest, ATextWithoutOneIsNotChanged) {
  for (const StringView text :
       {u"", u"=", u"Pwd", u"Pwd=", u"Pwd=;Port=1", u"Access denied (using password: YES)",
        u"no such column: NAME=x", u"PWDX=open"}) {
    EXPECT_EQ(HidePasswords(text), text);
  }
}

TEST(PasswordsTest, APasswordOfTheConnectionStringIsHiddenWhereverItStands) {
  EXPECT_EQ(HidePasswords(u"login sms/s3cret at s3cretary failed", u"DSN=Book;PWD=s3cret"),
            u"login sms/*** at ***ary failed");
  EXPECT_EQ(HidePasswords(u"'a;b}c' and {a;b}}c} refused", u"PWD={a;b}}c};DSN=x"),
            u"'***' and *** refused");
  EXPECT_EQ(HidePasswords(u"user x, word given", u"DSN=Book", u"given"), u"user x, word ***");
}

TEST(PasswordsTest, StarsDoNotMultiply) {
  String connection;
  for (int more = 0; more < 8; ++more) connection += u"Pwd=*;Pwd=**;Pwd=*a;";
  const String text = u"* ** and *a";
  EXPECT_EQ(HidePasswords(text, connection), u"* ** and ***");
  EXPECT_EQ(HidePasswords(text, text, u"*"), text);
}

TEST(PasswordsTest, APasswordBehindAnotherValueWithAQuoteIsHidden) {
  EXPECT_EQ(HidePasswords(u"secret1 refused", u"Driver={x Pwd='};Pwd=secret1"), u"*** refused");
}

TEST(PasswordsTest, AClosingBraceAtTheStartIsPartOfThePassword) {
  EXPECT_EQ(HidePasswords(u"Pwd=}secret};Port=1"), u"Pwd=***;Port=1");
  EXPECT_EQ(HidePasswords(u"}}secret} refused", u"PWD=}}secret};Uid=x"), u"*** refused");
}

TEST(PasswordsTest, AQuoteAtTheStartMayBePartOfThePassword) {
  EXPECT_EQ(HidePasswords(u"'secret refused", u"Pwd='secret;Uid=x"), u"*** refused");
  EXPECT_EQ(HidePasswords(u"\"sec'ret refused", u"Pwd=\"sec'ret;Uid=\"x\""), u"*** refused");
}

TEST(PasswordsTest, AShortPasswordIsHiddenAsAWordOnly) {
  EXPECT_EQ(HidePasswords(u"a table, password a refused", u"PWD=a"),
            u"*** table, password *** refused");
  EXPECT_EQ(HidePasswords(u"able to, table", u"PWD=ab"), u"able to, table");
  EXPECT_EQ(HidePasswords(u"a tab", u"PWD=tab"), u"a ***");
}

TEST(PasswordsTest, AnEmptyPasswordHidesNothing) {
  EXPECT_EQ(HidePasswords(u"no such table", u"DSN=Book;PWD=;UID=x"), u"no such table");
}

}  // namespace
}  // namespace ktrv::tests
