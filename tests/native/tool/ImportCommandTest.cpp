#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "tests/native/support/UnusedPath.h"
#include "tests/native/tool/ToolFixture.h"

namespace ktrv::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// The options of `import`. What they do is tested in import/.
class ImportCommandTest : public ToolFixture {
 protected:
  ~ImportCommandTest() override {
    std::error_code ignored;
    std::filesystem::remove(Path, ignored);
  }
  int Import(const std::string& bytes, std::vector<std::string> options) {
    std::ofstream(Path, std::ios::binary) << bytes;
    options.insert(options.begin(), {"import", Path});
    return Run(std::move(options));
  }

  const std::string Path = UnusedPath(".csv").string();
};

TEST_F(ImportCommandTest, TakesItsOptions) {
  EXPECT_EQ(Import("Vorname^Handy^Geburtstag\nJ\xFCrg^+46 70 1^4/5/1990\nJ^46701^\n",
                   {"--map", "Vorname=FNAME", "--map", "Handy=MOBILENO", "--map",
                    "Geburtstag=BIRTHDAY", "--delimiter", "^", "--encoding", "windows-1252",
                    "--dates", "dmy", "--duplicates", "add"}),
            0)
      << Messages.str();
  EXPECT_THAT(Database.Rows(u"SELECT FNAME, MOBILENO, BIRTHDAY FROM SMS_ABCONTACTS ORDER BY ID"),
              ElementsAre(u"Jürg|46701|1990-05-04", u"J|46701|null"));
}

TEST_F(ImportCommandTest, WritesNothingOnADryRun) {
  EXPECT_EQ(Import("First Name\tMobile\nAnna\t1\n", {"--dry-run", "--delimiter", "tab"}), 0);
  EXPECT_THAT(Output(), HasSubstr("would add 1"));
  EXPECT_TRUE(Database.Rows(u"SELECT ID FROM SMS_ABCONTACTS").empty());
}

TEST_F(ImportCommandTest, RefusesWrongOptions) {
  EXPECT_EQ(Run({"import"}), 2);
  EXPECT_EQ(Import("", {"--duplicates", "some"}), 2);
  EXPECT_EQ(Import("", {"--delimiter", "ab"}), 2);
  EXPECT_EQ(Import("", {"--encoding", "ebcdic"}), 2);
}

TEST_F(ImportCommandTest, FailsWithoutTheFile) {
  EXPECT_EQ(Run({"import", Path}), 1);
  EXPECT_THAT(Messages.str(), HasSubstr("The file to import cannot be read"));
}

}  // namespace
}  // namespace ktrv::tests
