#include "database/Command.h"
#include "tests/native/tool/import/ImportFixture.h"
#include "tool/Export.h"

namespace ktrv::tests {
namespace {

using tool::FileFormat;

constexpr StringView kContacts =
    u"SELECT FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, OFFICEPHONE, HOMEPHONE, FAX, EMAIL, "
    u"ORGANISATION, ADDRESS, CITY, STATE, COUNTRY, ZIP, AGE, SEX, BIRTHDAY, ANNIVERSARY, HOBBY "
    u"FROM "
    u"SMS_ABCONTACTS ORDER BY ID";
constexpr StringView kFolders =
    u"SELECT C.MOBILENO, F.NAME FROM SMS_ABCONTACTS C, SMS_ABFOLDERS F WHERE F.ID = C.FOLDER_ID "
    u"ORDER BY C.MOBILENO";
constexpr StringView kMembers =
    u"SELECT G.NAME, C.MOBILENO FROM SMS_ABGROUPS G, SMS_ABGROUPMAPS M, SMS_ABCONTACTS C WHERE "
    u"G.ID = M.GROUP_ID AND C.ID = M.CONTACT_ID ORDER BY G.NAME, C.MOBILENO";

/// Contacts that are exported from one address book and imported into an empty one.
class RoundTripOnDatabaseTest : public ImportFixture {
 protected:
  RoundTripOnDatabaseTest() {
    Database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (1, 'S', 'Staff, \"new\"')",
                  u"INSERT INTO SMS_ABGROUPS (ID, NAME) VALUES (1, 'Team'), (2, 'Crew; Ö')"});
    database::Command insert;
    insert.SetActiveConnection(&Connection);
    insert.SetCommandText(
        u"INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, "
        u"EMAIL, "
        u"ADDRESS, CITY, HOBBY, SEX) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    insert.Append(u"FOLDER_ID", database::DataType::Integer);
    for (int text = 0; text < 10; ++text) insert.Append(u"TEXT", database::DataType::VarWChar, 100);
    std::int64_t number = 98000;
    const auto add = [&](const String& text) {
      const String mobile = ToDecimal(++number);
      insert.Execute({number % 2, u"N" + text, text, text, Null{}, mobile, String(), text, Null{},
                      text + text, String(number % 2 ? u"F" : u"M")});
    };
    for (const StringView text : {u"\U0001F600\U0001D54F",
                                  u"e\u0301\u0327",
                                  u"\u05D0\u05D1\u200F\u202Ex\u202C",
                                  u"line 1\r\nline 2\nline 3\rend",
                                  u"say \"hi\"",
                                  u"\"",
                                  u"\"\"",
                                  u" blank ",
                                  u"\ttab",
                                  u"a,b;c|d",
                                  u"\\n \\, \\; \\\\",
                                  u"=3D=\u00E4",
                                  u"\uFEFFmark",
                                  u"a\u0085b\u2028c",
                                  u"\u0001\u001F\u007F",
                                  u"'=1+1",
                                  u"BEGIN:VCARD",
                                  u"null",
                                  u"sep=;",
                                  u":",
                                  u"\u00A0",
                                  u"|"}) {
      add(String(text));
    }
    add({});
    // Fields of all lengths, so that lines are folded at every place.
    for (std::size_t length = 1; length <= 48; ++length) add(String(length, u'\u00E9'));
    for (std::size_t length = 1; length <= 24; ++length) add(String(length, u'\n') + u"\U0001F600");
    insert.Execute({std::int64_t{0}, String(u"Numbers"), Null{}, Null{}, String(u"+46"),
                    String(u"+70 1.5"), Null{}, Null{}, Null{}, Null{}, Null{}});
    Database.Run(
        {u"UPDATE SMS_ABCONTACTS SET AGE = 30, BIRTHDAY = '1990-02-28' WHERE FOLDER_ID = 0",
         u"UPDATE SMS_ABCONTACTS SET ANNIVERSARY = '2015-06-01' WHERE FOLDER_ID = 1",
         u"INSERT INTO SMS_ABGROUPMAPS SELECT 1, TO_CHAR(ID), 'S' FROM SMS_ABCONTACTS WHERE AGE = "
         u"30",
         u"INSERT INTO SMS_ABGROUPMAPS SELECT 2, TO_CHAR(ID), 'S' FROM SMS_ABCONTACTS"});
  }

  void ExpectTheSame(FileFormat format) {
    const auto contacts = Rows(kContacts);
    const auto folders = Rows(kFolders);
    const auto members = Rows(kMembers);
    tool::Book book{Connection, data::Dialect::Sql};
    tool::Console console{Out, Messages, In};
    tool::ExportOptions options;
    options.Format = format;
    options.Output = Options.File;
    ASSERT_EQ(tool::Export(options, book, console), 0);
    for (const StringView table :
         {u"SMS_ABGROUPMAPS", u"SMS_ABCONTACTS", u"SMS_ABGROUPS", u"SMS_ABFOLDERS"}) {
      Database.Run({u"DELETE FROM " + String(table)});
    }
    EXPECT_EQ(Import(), 0) << Messages.str();
    EXPECT_EQ(Rows(kContacts), contacts);
    EXPECT_EQ(Rows(kFolders), folders);
    EXPECT_EQ(Rows(kMembers), members);
  }
};

TEST_F(RoundTripOnDatabaseTest, OfCsvChangesNothing) {
  ExpectTheSame(FileFormat::Csv);
}

TEST_F(RoundTripOnDatabaseTest, OfVCard3ChangesNothing) {
  ExpectTheSame(FileFormat::VCard3);
}

TEST_F(RoundTripOnDatabaseTest, OfVCard4ChangesNothing) {
  ExpectTheSame(FileFormat::VCard4);
}

TEST_F(RoundTripOnDatabaseTest, OfTheSameBookAddsNothing) {
  tool::Book book{Connection, data::Dialect::Sql};
  tool::Console console{Out, Messages, In};
  const auto contacts = Rows(kContacts);
  const auto members = Rows(kMembers);
  tool::ExportOptions options;
  options.Output = Options.File;
  ASSERT_EQ(tool::Export(options, book, console), 0);
  EXPECT_EQ(Import(), 0);
  EXPECT_EQ(Rows(kContacts), contacts);
  EXPECT_EQ(Rows(kMembers), members);
}

}  // namespace
}  // namespace ktrv::tests
