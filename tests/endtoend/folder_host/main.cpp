// folderhost CONNECTION: shows the folder editor to a user as its openers do, once for each
// thing that is done with folders, and prints what each time leaves; for each dialect word.
#include <windows.h>

#include <cstdio>
#include <vector>

#include "database/odbc/OdbcDriver.h"
#include "forms/folder/frmSelectFolder.h"
#include "windows/base/WideText.h"
#include "windows/base/Win32OperatingSystem.h"
#include "windows/controls/Win32Screen.h"

namespace ktrv {
namespace {

class FolderHost {
 public:
  explicit FolderHost(String connectionString) {
    database_.ConnectionString = std::move(connectionString);
    database_.Renew();
  }

  void Work(StringView dialect) {
    database_.DbType = dialect;
    std::printf("%s\n", ToUtf8(dialect).c_str());
    const String shared = Add("Added");
    const String remote = Add("Mapped");
    Edit("Renamed", shared);
    Edit("Kept", remote);
    Edit("Left", shared);
    Add("Cancelled");
    Add("Closed");
    PrintFolders();
    database_.Open().Execute(u"DELETE FROM SMS_ABFOLDERS WHERE ID > 4");
  }

 private:
  String Add(const char* what) { return Show(what, {}); }
  void Edit(const char* what, const String& id) {
    Show(what, {.Mode = ModeOfOperation::Modify, .FolderIdText = id});
  }
  String Show(const char* what, const forms::FolderRequest& request) {
    forms::frmSelectFolder editor({services_, database_.Another(), {.Id = 2}}, request);
    editor.ShowModal();
    if (const auto saved = editor.Result().Saved) {
      last_ = *saved;
    } else {
      last_.Id.clear();
      last_.Name.clear();
    }
    std::printf("%s: %s|%s|%s|%s\n", what, ToUtf8(last_.Id).c_str(), ToUtf8(last_.Name).c_str(),
                ToUtf8(last_.Type).c_str(), ToUtf8(last_.Category).c_str());
    return last_.Id;
  }
  void PrintFolders() {
    database::Recordset rows(database_.Environment);
    rows.Open(u"SELECT * FROM SMS_ABFOLDERS WHERE ID > 4 ORDER BY ID", database_.Open());
    for (std::int64_t row = 0; row < rows.RecordCount(); ++row) {
      for (std::size_t column = 0; column < rows.Columns().size(); ++column) {
        const String text(rows.CellText(row, column).value_or(u"null"));
        std::printf("%s%s", column == 0 ? "  " : "|", ToUtf8(text).c_str());
      }
      std::printf("\n");
    }
  }

  database::OdbcDriver driver_;
  windows::Win32Screen screen_;
  windows::Win32OperatingSystem system_;
  Services services_{screen_, system_};
  BookDatabase database_{
      {[this](StringView) -> database::Driver& { return driver_; }, screen_.Poster()}};
  forms::SavedFolder last_;  ///< type and category outlive a cancel
};

}  // namespace
}  // namespace ktrv

int wmain(int count, wchar_t** arguments) {
  using namespace ktrv;
  if (count != 2) return 2;
  try {
    FolderHost host(windows::FromWide(arguments[1]));
    for (const StringView dialect : {u"SQL", u"ORACLE", u"MYSQL"}) host.Work(dialect);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "folderhost: %s\n", failure.what());
    return 1;
  }
}
