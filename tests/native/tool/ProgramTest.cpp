#include <fstream>
#include <gmock/gmock.h>

#include "tests/native/support/SqliteFile.h"
#include "tests/native/tool/ToolFixture.h"

namespace ktrv::tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class ProgramTest : public ToolFixture {
 protected:
  /// Writes the connection string to a file. \return its name
  std::string WriteConnectFile(const std::string& text) {
    auto name = Folder.File().string() + ".connect";
    std::ofstream(name, std::ios::binary) << text;
    return name;
  }

  SqliteFile Folder;  // for a file beside it
};

TEST_F(ProgramTest, PrintsItsHelp) {
  EXPECT_EQ(RunBare({"--help"}), 0);
  EXPECT_THAT(Output(), AllOf(HasSubstr("--connect-file"), HasSubstr("ADDRESSBOOK_CONNECT")));
}

TEST_F(ProgramTest, PrintsItsVersion) {
  EXPECT_EQ(RunBare({"--version"}), 0);
  EXPECT_THAT(Output(), HasSubstr("addressbook 1."));
}

TEST_F(ProgramTest, RefusesAnUnknownOption) {
  EXPECT_EQ(RunBare({"list", "--nonsense"}), 2);
  EXPECT_THAT(Messages.str(), HasSubstr("nonsense"));
}

TEST_F(ProgramTest, RefusesToRunWithoutACommand) {
  EXPECT_EQ(RunBare({}), 2);
}

TEST_F(ProgramTest, RefusesToRunWithoutAConnectionString) {
  EXPECT_EQ(RunBare({"list"}), 2);
  EXPECT_THAT(Messages.str(), HasSubstr("no connection string"));
}

TEST_F(ProgramTest, RefusesAnOleDbString) {
  EXPECT_EQ(RunBare({"--connect", "Provider=X;Data Source=Y", "list"}), 2);
}

TEST_F(ProgramTest, TakesTheConnectionStringFromTheEnvironment) {
  Environment["ADDRESSBOOK_CONNECT"] = ToUtf8(Database.ConnectionString());
  EXPECT_EQ(RunBare({"list"}), 0);
}

TEST_F(ProgramTest, TakesTheFirstLineOfAPrivateFile) {
  const auto file = WriteConnectFile(ToUtf8(Database.ConnectionString()) + "\r\nnotes\r\n");
  EXPECT_EQ(RunBare({"--connect-file", file, "list"}), 0) << Messages.str();
  std::filesystem::remove(file);
}

TEST_F(ProgramTest, RefusesAFileThatOthersCanRead) {
  FilesArePrivate = false;
  const auto file = WriteConnectFile(ToUtf8(Database.ConnectionString()));
  EXPECT_EQ(RunBare({"--connect-file", file, "list"}), 2);
  EXPECT_THAT(Messages.str(), HasSubstr("others can read"));
  std::filesystem::remove(file);
}

TEST_F(ProgramTest, RefusesAMissingFile) {
  EXPECT_EQ(RunBare({"--connect-file", "/no/such/file", "list"}), 2);
}

TEST_F(ProgramTest, TellsWhyTheDatabaseCannotBeOpenedWithoutItsPassword) {
  EXPECT_EQ(RunBare({"--connect", "Driver=NoSuchDriver;Uid=me;Pwd=geheim123", "list"}), 1);
  EXPECT_THAT(Messages.str(), AllOf(HasSubstr("addressbook: "), Not(HasSubstr("geheim123"))));
}

TEST_F(ProgramTest, DoesNotRepeatAPasswordAmongWrongArguments) {
  const std::string string = "Driver=X;Uid=me;Pwd=geheim123";
  const std::vector<std::vector<std::string>> wrong = {{"list", string},
                                                       {"--conect", string, "list"},
                                                       {"--conect=" + string, "list"},
                                                       {"--dialect", string, "list"},
                                                       {string, "list"},
                                                       {"list", "Pwd=a", "geheim123"}};
  for (const auto& arguments : wrong) {
    EXPECT_EQ(RunBare(arguments), 2);
    EXPECT_THAT(Messages.str(), Not(HasSubstr("geheim123")));
  }
}

TEST_F(ProgramTest, DoesNotTakeAnotherStringForAnEmptyOne) {
  Environment["ADDRESSBOOK_CONNECT"] = ToUtf8(Database.ConnectionString());
  EXPECT_EQ(RunBare({"--connect", "", "list"}), 2);
  EXPECT_THAT(Messages.str(), HasSubstr("--connect"));
  EXPECT_EQ(RunBare({"--connect-file", "", "list"}), 2);
  const auto file = WriteConnectFile("\nDriver=X\n");
  EXPECT_EQ(RunBare({"--connect-file", file, "list"}), 2);
  EXPECT_THAT(Messages.str(), HasSubstr("--connect-file"));
  std::filesystem::remove(file);
}

TEST_F(ProgramTest, DoesNotCreateAMissingFile) {
  const auto missing = Folder.File().string() + ".missing";
  EXPECT_EQ(RunBare({"--connect", "Driver=SQLite3;Database=" + missing, "list"}), 1);
  EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(ProgramTest, TellsThatItsOutputCouldNotBeWritten) {
  Out.setstate(std::ios::badbit);
  EXPECT_EQ(Run({"list"}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("could not be written"));
}

}  // namespace
}  // namespace ktrv::tests
