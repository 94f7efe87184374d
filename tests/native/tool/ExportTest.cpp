#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "tests/native/support/UnusedPath.h"
#include "tests/native/tool/ToolFixture.h"
#include "tool/FileFormat.h"

namespace ktrv::tests {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The file of one contact whose first name and address are these.
std::string Written(tool::FileFormat format, std::optional<StringView> first,
                    std::optional<StringView> address = std::nullopt, bool byteOrderMark = false) {
  std::ostringstream file;
  const auto writer = tool::MakeWriter(format, file, byteOrderMark);
  tool::ContactRecord contact;
  contact.Columns.resize(20);
  contact.Columns[0] = first;
  contact.Columns[10] = address;
  writer->Begin();
  writer->Write(contact);
  writer->End();
  return file.str();
}

std::string LineOf(const std::string& text, std::size_t number) {
  std::istringstream lines(text);
  std::string line;
  while (number-- > 0) std::getline(lines, line);
  return line;
}

std::string ContentOf(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

using tool::FileFormat;

TEST(CsvWriterTest, TellsNullFromTheEmptyText) {
  EXPECT_EQ(LineOf(Written(FileFormat::Csv, u"", std::nullopt), 2), ",,\"\",,,,,,,,,,,,,,,,,,,\r");
}

TEST(CsvWriterTest, QuotesWhatWouldBeReadOtherwise) {
  EXPECT_THAT(Written(FileFormat::Csv, u"a,b"), HasSubstr(",\"a,b\","));
  EXPECT_THAT(Written(FileFormat::Csv, u"say \"x\""), HasSubstr(",\"say \"\"x\"\"\","));
  EXPECT_THAT(Written(FileFormat::Csv, u"two\r\nlines"), HasSubstr(",\"two\r\nlines\","));
  EXPECT_THAT(Written(FileFormat::Csv, u" blank"), HasSubstr(",\" blank\","));
}

TEST(CsvWriterTest, WritesPairsOfSurrogatesAsOneCharacter) {
  EXPECT_THAT(Written(FileFormat::Csv, u"x\U0001F600y"), HasSubstr(",x\xF0\x9F\x98\x80y,"));
}

TEST(CsvWriterTest, StartsWithAByteOrderMarkIfAsked) {
  EXPECT_TRUE(Written(FileFormat::Csv, u"x", u"y", true)
                  .starts_with("\xEF\xBB\xBF"
                               "FOLDER,"));
  EXPECT_TRUE(Written(FileFormat::Csv, u"x").starts_with("FOLDER,GROUPS,FNAME,"));
}

TEST(VCardWriterTest, EscapesAndFolds) {
  const std::string long1(100, 'x');
  const std::string card = Written(FileFormat::VCard4, u"a;b,c\\d\ne", FromUtf8(long1));
  EXPECT_THAT(card, HasSubstr("N:;a\\;b\\,c\\\\d\\ne;;;\r\n"));
  EXPECT_THAT(card, HasSubstr("X-KTRV-ADDRESS:" + std::string(60, 'x') + "\r\n " +
                              std::string(40, 'x') + "\r\n"));
}

TEST(VCardWriterTest, DoesNotCutACharacter) {
  String names;
  for (int count = 0; count < 40; ++count) names += u"\u0928";
  std::istringstream lines(Written(FileFormat::VCard3, names));
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 76U);
    EXPECT_EQ(ToUtf8(FromUtf8(line)), line);
  }
}

TEST(VCardWriterTest, KeepsControlCharacters) {
  EXPECT_THAT(Written(FileFormat::VCard4, u"a\r\nb"),
              HasSubstr("X-KTRV-FNAME;ENCODING=QUOTED-PRINTABLE:=61=0D=0A=62\r\n"));
}

TEST(VCardWriterTest, TellsNullFromTheEmptyText) {
  const std::string card = Written(FileFormat::VCard4, u"x", u"");
  EXPECT_THAT(card, HasSubstr("X-KTRV-ADDRESS:\r\n"));
  EXPECT_THAT(card, Not(HasSubstr("X-KTRV-CITY")));
}

TEST(VCardWriterTest, NamesItsVersion) {
  EXPECT_THAT(Written(FileFormat::VCard3, u"x"), HasSubstr("VERSION:3.0\r\n"));
  EXPECT_THAT(Written(FileFormat::VCard4, u"x"), HasSubstr("VERSION:4.0\r\n"));
}

TEST(JsonWriterTest, EscapesWhatJsonCannotHold) {
  const std::string json = Written(FileFormat::Json, u"\"\\\n\u0001\u00E5\U0001F600");
  EXPECT_THAT(json, HasSubstr("\"FNAME\": \"\\\"\\\\\\u000a\\u0001\u00E5\xF0\x9F\x98\x80\""));
  EXPECT_THAT(json, HasSubstr("\"MNAME\": null"));
}

TEST(JsonWriterTest, KeepsAnUnpairedSurrogate) {
  EXPECT_THAT(Written(FileFormat::Json, String{u'a', char16_t{0xD800}, u'b'}),
              HasSubstr("\"a\\ud800b\""));
}

/// A folder of its own, removed at its end.
class Folder {
 public:
  Folder() { std::filesystem::create_directory(path_); }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string File(const char* name) const { return (path_ / name).string(); }
  std::ptrdiff_t Files() const {
    return std::distance(std::filesystem::directory_iterator(path_), {});
  }

 private:
  std::filesystem::path path_ = UnusedPath();
};

class ExportOnDatabaseTest : public ToolFixture {
 protected:
  void SetUp() override {
    Database.Run({
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (1, 'S', 'Staff')",
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, REMOTE_CONTACTS_CATEGORY) "
        u"VALUES (2, 'R', 'Dealers', 'D')",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, BIRTHDAY) "
        u"VALUES (1, 0, '\u00C5sa', '', '1985-03-14')",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, AGE) VALUES (2, 1, 'Sunil', 33)",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (1, 'Night', 0)",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (2, 'Day', 0)",
        u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '2', 'S')",
        u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '2', 'S')",
        u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (2, '2', 'S')",
        u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '1', 'R')",
    });
  }

  static constexpr const char* kFirst = ",,\u00C5sa,\"\",,,,,,,,,,,,,,,,1985-03-14,,\r\n";
  static constexpr const char* kSecond = "Staff,\"Night\nDay\",Sunil,,,,,,,,,,,,,,,33,,,,\r\n";
};

TEST_F(ExportOnDatabaseTest, WritesAllContactsWithTheirPlaces) {
  ASSERT_EQ(Run({"export"}), 0) << Messages.str();
  EXPECT_EQ(Output().substr(Output().find('\n') + 1), std::string(kFirst) + kSecond);
  EXPECT_EQ(Messages.str(), "2 exported\n");
}

TEST_F(ExportOnDatabaseTest, WritesAFolder) {
  ASSERT_EQ(Run({"export", "--folder", "Staff"}), 0) << Messages.str();
  EXPECT_EQ(Output().substr(Output().find('\n') + 1), kSecond);
}

TEST_F(ExportOnDatabaseTest, WritesTheContactsOfAGroupOnce) {
  ASSERT_EQ(Run({"export", "--group", "Night"}), 0) << Messages.str();
  EXPECT_EQ(Output().substr(Output().find('\n') + 1), kSecond);
}

TEST_F(ExportOnDatabaseTest, RefusesRemoteContacts) {
  EXPECT_EQ(Run({"export", "--folder", "Dealers"}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("belong to TALVERO"));
}

TEST_F(ExportOnDatabaseTest, WritesToAFile) {
  const Folder folder;
  const std::string name = folder.File("x.csv");
  ASSERT_EQ(Run({"export", "--output", name}), 0) << Messages.str();
  EXPECT_THAT(ContentOf(name), HasSubstr(kSecond));
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(folder.Files(), 1);
}

TEST_F(ExportOnDatabaseTest, WritesACompleteFileThoughAnotherExportDoesToo) {
  const Folder folder;
  const std::string name = folder.File("x.csv");
  Driver.BeforeFetch = [&](const auto&) {
    Driver.BeforeFetch = nullptr;
    EXPECT_EQ(Run({"export", "--folder", "Staff", "--output", name}), 0) << Messages.str();
  };
  EXPECT_EQ(Run({"export", "--output", name}), 0) << Messages.str();
  const std::string text = ContentOf(name);
  EXPECT_EQ(text.substr(text.find('\n') + 1), std::string(kFirst) + kSecond);
  EXPECT_EQ(folder.Files(), 1);
}

TEST_F(ExportOnDatabaseTest, LeavesNoFileIfItFails) {
  const Folder folder;
  Database.Run({u"ALTER TABLE SMS_ABCONTACTS DROP COLUMN HOBBY"});
  EXPECT_EQ(Run({"export", "--output", folder.File("x.csv")}), 1);
  EXPECT_EQ(folder.Files(), 0);
}

TEST_F(ExportOnDatabaseTest, TellsThatAFileCannotBeWritten) {
  EXPECT_EQ(Run({"export", "--output", "/no/such/folder/x.csv"}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("cannot be written"));
}

TEST_F(ExportOnDatabaseTest, TellsThatAFileCannotBeWrittenBeforeItReads) {
  Database.Run({u"ALTER TABLE SMS_ABCONTACTS DROP COLUMN HOBBY"});
  EXPECT_EQ(Run({"export", "--output", "/no/such/folder/x.csv"}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("cannot be written"));
}

TEST_F(ExportOnDatabaseTest, AFolderAndAGroupExcludeEachOther) {
  EXPECT_EQ(Run({"export", "--folder", "Staff", "--group", "Night"}), 2);
}

TEST_F(ExportOnDatabaseTest, NamesTheGroupsThatListAContact) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '1.0', 'S')"});
  ASSERT_EQ(Run({"export", "--group", "Night"}), 0) << Messages.str();
  const bool isListed = Output().find("\u00C5sa") != std::string::npos;
  ASSERT_EQ(Run({"export"}), 0) << Messages.str();
  EXPECT_EQ(Output().find("\n,Night,\u00C5sa") != std::string::npos, isListed) << Output();
}

using ExportTest = ExportOnDatabaseTest;

TEST_F(ExportTest, KnowsAContactHoweverItsIdIsWritten) {
  Database.Run(
      {u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (1, '1 ', 'S')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (2, '1', 'S')",
       u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES (2, '001', 'S')"});
  ASSERT_EQ(Run({"export"}), 0) << Messages.str();
  EXPECT_THAT(Output(), HasSubstr("\n,\"Night\nDay\",\u00C5sa,"));
}

TEST_F(ExportTest, WritesContactsWithTheSameId) {
  Database.Run({u"CREATE TABLE CONTACTS AS SELECT * FROM SMS_ABCONTACTS",
                u"DROP TABLE SMS_ABCONTACTS", u"ALTER TABLE CONTACTS RENAME TO SMS_ABCONTACTS",
                u"UPDATE SMS_ABCONTACTS SET ID = 1, FOLDER_ID = 0"});
  ASSERT_EQ(Run({"export"}), 0) << Messages.str();
  EXPECT_EQ(Messages.str(), "2 exported\n");
  EXPECT_THAT(Output(), HasSubstr("\n,,Sunil,"));
}

}  // namespace
}  // namespace ktrv::tests
