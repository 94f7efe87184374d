#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "common/Error.h"
#include "tests/native/support/UnusedPath.h"
#include "tests/native/tool/ToolFixture.h"

namespace ktrv::tests {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Commands with --json on a line that dies.
class FailedJsonTest : public ToolFixture {
 protected:
  FailedJsonTest() {
    Database.Run(
        {u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) "
         u"VALUES (1, 0, 'Anna', '1')"});
  }
  ~FailedJsonTest() override {
    std::error_code ignored;
    std::filesystem::remove(Path, ignored);
  }

  /// Lets the line die after the first rows of queries whose text contains this.
  void DieWithin(StringView part) {
    Driver.BeforeFetch = [this, part = String(part)](StringView text) {
      if (text.find(part) == StringView::npos) return;
      if (++fetches_ > 1) throw Error(ErrorNumber::DriverFailure, u"line \"1\" is dead");
    };
  }
  int Import(const std::string& bytes) {
    std::ofstream(Path, std::ios::binary) << bytes;
    return Run({"--json", "import", Path, "--rejects", Path + ".rejects"});
  }

  const std::string Path = UnusedPath(".csv").string();
  const std::string Failure = "{\"error\": \"line \\\"1\\\" is dead\"}";

 private:
  int fetches_ = 0;
};

TEST_F(FailedJsonTest, EndsTheArrayOfAList) {
  DieWithin(u"SMS_ABCONTACTS");
  EXPECT_EQ(Run({"--json", "list"}), 1);
  EXPECT_THAT(Output(), StartsWith("[\n{\"kind\": "));
  EXPECT_THAT(Output(), EndsWith("},\n" + Failure + "\n]\n"));
  EXPECT_THAT(Messages.str(), HasSubstr("is dead"));
}

TEST_F(FailedJsonTest, EndsTheArrayOfAnExport) {
  DieWithin(u"C.FNAME");
  EXPECT_EQ(Run({"export", "--format", "json"}), 1);
  EXPECT_THAT(Output(), StartsWith("[\n{\"FOLDER\": null, "));
  EXPECT_THAT(Output(), EndsWith("},\n" + Failure + "\n]\n"));
}

TEST_F(FailedJsonTest, WritesNoneIntoAnExportOfAnotherFormat) {
  DieWithin(u"C.FNAME");
  EXPECT_EQ(Run({"--json", "export"}), 1);
  EXPECT_THAT(Output(), StartsWith("FOLDER,GROUPS,"));
  EXPECT_THAT(Output(), EndsWith("\r\n"));
}

TEST_F(FailedJsonTest, EndsTheObjectOfAnImport) {
  Driver.BeforeExecute = [](StringView text) {
    if (text.starts_with(u"INSERT")) throw Error(ErrorNumber::DriverFailure, u"dead");
  };
  EXPECT_EQ(Import("First Name,Mobile\r\nBert,\r\nCora,2\r\n"), 1);
  EXPECT_EQ(Output(),
            "{\"rejected\": [\n{\"line\": 2, \"reason\": \"Please enter the Mobile No.\"}],\n"
            "\"notes\": [],\n\"added\": 0, \"merged\": 0, \"skipped\": 0,\n"
            "\"error\": \"dead\"}\n");
  std::filesystem::remove(Path + ".rejects");
}

TEST_F(FailedJsonTest, IsAnErrorIfThereIsNoResult) {
  EXPECT_EQ(Import("Vorname\r\n"), 1);
  EXPECT_THAT(Output(), StartsWith("{\"error\": \"No heading of the file is known"));
  EXPECT_EQ(Run({"--json", "list", "--folder", "none"}), 1);
  EXPECT_THAT(Output(), StartsWith("{\"error\": \""));
  EXPECT_THAT(Output(), EndsWith("\"}\n"));
  Driver.BeforeFetch = [](auto) { throw Error(ErrorNumber::DriverFailure, u"dead"); };
  EXPECT_EQ(Run({"--json", "check"}), 1);
  EXPECT_EQ(Output(), "{\"error\": \"dead\"}\n");
}

TEST_F(FailedJsonTest, HasNoPassword) {
  EXPECT_EQ(RunBare({"--connect", "Driver=NoSuchDriver;Uid=me;Pwd=geheim123", "--json", "list"}),
            1);
  EXPECT_THAT(Output(), StartsWith("{\"error\": \""));
  EXPECT_THAT(Output(), Not(HasSubstr("geheim123")));
}

}  // namespace
}  // namespace ktrv::tests
