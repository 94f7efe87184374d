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
    session_.SessionConnectionString = std::move(connectionString);
    session_.SessionConnection = std::make_unique<database::Connection>(session_.Environment);
    session_.SessionUserId = 2;
  }

  void Work(StringView dialect) {
    session_.DbType = dialect;
    std::printf("%s\n", ToUtf8(dialect).c_str());
    const String shared = Add("Added");
    const String remote = Add("Mapped");
    Edit("Renamed", shared);
    Edit("Kept", remote);
    Edit("Left", shared);
    Add("Cancelled");
    Add("Closed");
    PrintFolders();
    session_.OpenConnection().Execute(u"DELETE FROM SMS_ABFOLDERS WHERE ID > 4");
  }

 private:
  String Add(const char* what) {
    forms::frmSelectFolder editor(session_);
    return Show(what, editor);
  }
  void Edit(const char* what, const String& id) {
    forms::frmSelectFolder editor(session_);
    editor.Mode = ModeOfOperation::Modify;
    editor.FolderIdText = id;
    Show(what, editor);
  }
  String Show(const char* what, forms::frmSelectFolder& editor) {
    session_.FolderType = static_cast<std::int32_t>(TypeOfFolder::SharedFolder);
    editor.ShowModal();
    std::printf("%s: %s|%s|%s|%s\n", what, ToUtf8(session_.SavedFolderId).c_str(),
                ToUtf8(session_.SavedFolderName).c_str(), ToUtf8(session_.SavedFolderType).c_str(),
                ToUtf8(session_.SavedFolderCategory).c_str());
    return session_.SavedFolderId;
  }
  void PrintFolders() {
    database::Recordset rows(session_.Environment);
    rows.Open(u"SELECT * FROM SMS_ABFOLDERS WHERE ID > 4 ORDER BY ID", session_.OpenConnection());
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
  Session session_{screen_,
                   system_,
                   {[this](StringView) -> database::Driver& { return driver_; }, screen_.Poster()}};
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
