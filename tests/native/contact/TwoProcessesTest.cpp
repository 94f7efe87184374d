#ifdef _WIN32
#include <process.h>
#endif

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/native/contact/ContactFixture.h"
#include "tests/native/support/WatchedDialog.h"

namespace ktrv::tests {
namespace {

/// Runs another user's process to its end. \return its exit code, or -1 when it did not start
int RunOtherUser(const std::string& connection, const std::string& work) {
  const std::string program = KTRV_OTHER_USER;
#ifdef _WIN32
  // Without the command processor, which says 9009 to whatever keeps a program from starting.
  return static_cast<int>(_spawnl(_P_WAIT, ("Z:" + program).c_str(), "otheruser",
                                  ('"' + connection + '"').c_str(), work.c_str(), nullptr));
#else
  return std::system(('"' + program + "\" \"" + connection + "\" " + work).c_str());
#endif
}

/// This process edits a contact while another one works with it.
struct TwoProcessesTest : WatchedDialog<ContactFixture> {
  /// Another process does this with the database and ends; see otheruser.
  void OtherUser(StringView work) {
    ASSERT_EQ(RunOtherUser(ToUtf8(database.ConnectionString()), ToUtf8(work)), 0)
        << ToUtf8(work) << ": " << std::strerror(errno);
  }
  /// The other process works between this one's read and its write. While this one writes, SQLite
  /// lets nobody else write.
  void OtherUserBetween(String work) {
    watched.BeforeBegin = [this, work = std::move(work)] {
      watched.BeforeBegin = nullptr;
      OtherUser(work);
    };
  }

  void ExpectRecord(StringView number, StringView description) {
    EXPECT_EQ(Log(),
              u"************************* ERROR *************************\r\n"
              u"KTRVAddressBook:  Error occured. Sub : cmdSave_Click, Module: frmNewContact()\r\n"
              u"Error Date/Time   : 29/02/2024  13:05:00\r\n"
              u"Error Number      : " +
                  String(number) + u"\r\nError Description : " + String(description) +
                  u"\r\n"
                  u"Error DLLErrorNum : 0\r\n"
                  u"Error Source      : KTRVAddressBook\r\n"
                  u"*********************************************************\r\n");
  }
  void ExpectOpenWithItsText() {
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_TRUE(screen.Messages.empty());
    EXPECT_EQ(form->txtFname.Text(), u"Anna");
    EXPECT_EQ(form->txtCity.Text(), u"London");
    EXPECT_EQ(Left().Id, u"");
  }
  void EditAnna() {
    Ann();
    Edit();
    form->txtFname.SetText(u"Anna");
    form->txtCity.SetText(u"London");
  }
};

constexpr StringView kConflict =
    u"Row cannot be located for updating. Some values may have been changed since it was last "
    u"read.";
constexpr StringView kGone =
    u"Key value for this row was changed or deleted at the data store. The local row is now "
    u"deleted.";

TEST_F(TwoProcessesTest, TheLaterSaveHolds) {
  EditAnna();
  OtherUser(u"edit 5 Paris");
  ASSERT_EQ(Row(u"FNAME, CITY"), u"Ann|Paris");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"FNAME, CITY"), u"Anna|London");
  EXPECT_EQ(Log(), u"");
}

TEST_F(TwoProcessesTest, ARowThatChangesBetweenTheSavesReadAndItsWriteIsAConflict) {
  EditAnna();
  OtherUserBetween(u"edit 5 Paris");
  PressOk();
  ExpectOpenWithItsText();
  ExpectRecord(u"-2147217864", kConflict);
  EXPECT_EQ(Row(u"FNAME, CITY, LNAME"), u"Ann|Paris|Lee");
}

TEST_F(TwoProcessesTest, AfterAConflictASecondOkReadsAfreshAndHolds) {
  EditAnna();
  OtherUserBetween(u"edit 5 Paris");
  PressOk();
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Row(u"FNAME, CITY"), u"Anna|London");
  EXPECT_EQ(SaveErrors(), 1);
}

TEST_F(TwoProcessesTest, ASaveWithoutAnyChangeUndoesNothing) {
  Ann();
  Edit();
  OtherUser(u"edit 5 Paris");
  OtherUserBetween(u"edit 5 London");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Log(), u"");
  EXPECT_EQ(Row(u"CITY"), u"London");
}

TEST_F(TwoProcessesTest, ASaveOfOneColumnUndoesNoChangeOfAnother) {
  Ann();
  Edit();
  form->txtFname.SetText(u"Anna");
  OtherUser(u"edit 5 Paris");
  OtherUserBetween(u"edit 5 London");
  PressOk();
  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(Log(), u"");
  EXPECT_EQ(Row(u"FNAME, CITY"), u"Anna|London");
}

TEST_F(TwoProcessesTest, ARowThatGoesBetweenTheSavesReadAndItsWriteIsNotFound) {
  EditAnna();
  OtherUserBetween(u"delete 5");
  PressOk();
  ExpectOpenWithItsText();
  ExpectRecord(u"-2147217885", kGone);
  EXPECT_EQ(Row(u"ID"), u"no row");
}

TEST_F(TwoProcessesTest, ARowThatIsGoneBeforeTheSaveIsNotFound) {
  EditAnna();
  OtherUser(u"delete 5");
  PressOk();
  ExpectOpenWithItsText();
  ExpectRecord(u"3021",
               u"Either BOF or EOF is True, or the current record has been deleted. Requested "
               u"operation requires a current record.");
  EXPECT_EQ(Row(u"ID"), u"no row");
}

TEST_F(TwoProcessesTest, TwoWhoAddAtOnceGetAnIdEach) {
  AddNamed(u"Ann");
  // While the own row is being stored, SQLite lets nobody else write.
  watched.BeforeBegin = [this] { OtherUser(u"add Bob"); };
  PressOk();
  EXPECT_EQ(Left().Id, u"2");
  EXPECT_EQ(database.Rows(u"SELECT ID, FNAME FROM SMS_ABCONTACTS ORDER BY ID"),
            (std::vector<String>{u"1|Bob", u"2|Ann"}));
}

TEST_F(TwoProcessesTest, AnotherContactAddedAtOnceIsNotTakenForTheOwn) {
  AddNamed(u"Ann");
  // Until the own row is stored and read again, SQLite lets nobody else write.
  watched.AfterCommit = [this] { OtherUser(u"add Bob"); };
  PressOk();
  EXPECT_EQ(Left().Id, u"1");
  EXPECT_EQ(Left().Name, u"Ann  ");
}

}  // namespace
}  // namespace ktrv::tests
