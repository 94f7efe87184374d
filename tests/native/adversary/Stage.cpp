#include "tests/native/adversary/Stage.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "database/Recordset.h"
#include "database/odbc/OdbcDriver.h"
#include "tests/native/support/AddressBookDatabase.h"

namespace ktrv::tests {
namespace {

constexpr StringView kFileKeyword = u"Database=";

/// The one that the copies are taken from.
const std::string& OriginalPath() {
  static AddressBookDatabase database;
  static const std::string path = [] {
    database.Run({
        u"INSERT INTO SMS_USERS VALUES (1, 'Admin', 1, 0, 0), (2, 'Clerk', 0, 0, 0)",
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, USER_ID, "
        u"REMOTE_CONTACTS_CATEGORY) VALUES (1, 'S', 'Staff', 0, 1, ''), (2, 'R', 'Dealers', 0, 1, "
        u"'D'), (3, 'S', 'Friends', 0, 1, ''), (4, 'S', 'Old', 0, 1, '')",
        u"INSERT INTO \"ZUL$CONTACTS_CATEGORY\" VALUES ('D'), ('E'), ('F')",
        u"INSERT INTO \"ZUL$CONTACTS\" (CODE, NAME, MOBILENO, EMAIL, CATEGORY) VALUES ('R1', "
        u"'Rita', '97001', NULL, 'D'), ('R2', 'Rolf', '97002', NULL, 'D'), ('E1', 'Edda', '97003', "
        u"NULL, 'E')",
        u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO) "
        u"VALUES (1, 0, 'Anna', '', 'Ek', '91', '98001'), (2, 0, 'Bert', '', 'Al', '', '98002'), "
        u"(3, 1, 'Cora', '', 'By', '46', '98003'), (4, 1, 'Dora', '', 'Vik', '44', '98004')",
        u"INSERT INTO SMS_ABCONTACTS VALUES (5, 3, 'Ann', 'B', 'Lee', '44', '7700900', '31', '32', "
        u"'33', 'ann@lee.org', 'Acme', 'Street 1', 'Leeds', 'York', 'UK', 'LS1', 30, 'F', "
        u"'1990-02-28', '2015-06-01', 'Chess'), (6, 4, 'Otto', '', 'Old', '', '98006', NULL, NULL, "
        u"NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (11, 'Team', 0), (12, 'Crew', 1), "
        u"(13, 'Boat', 0)",
        u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '1', 'S'), (11, '2', 'S'), (11, 'R1', 'R'), (12, "
        u"'3', 'S'), (13, '5', 'S'), (13, '4', 'S')",
    });
    const String connection = database.ConnectionString();
    return ToUtf8(connection.substr(connection.find(kFileKeyword) + kFileKeyword.size()));
  }();
  return path;
}

std::vector<std::string> Lines(database::Connection& connection, StringView query) {
  database::Recordset rows(connection.Surroundings());
  rows.Open(query, connection);
  std::vector<std::string> lines;
  for (std::int64_t row = 0; row < rows.RecordCount(); ++row) {
    String line;
    for (std::size_t column = 0; column < rows.Columns().size(); ++column) {
      line += String(rows.CellText(row, column).value_or(u"null")) + u"|";
    }
    lines.push_back(ToUtf8(line));
  }
  return lines;
}

std::string NewPath() {
  static int count = 0;
  return OriginalPath() + "." + std::to_string(++count);
}

database::Environment Plain() {
  return {[](StringView) -> database::Driver& { return SampleBook::Driver(); }, [](const auto&) {}};
}

}  // namespace

// SampleBook

SampleBook::SampleBook()
    : path_(NewPath()),
      connection_(u"Driver=SQLite3;Database=" + FromUtf8(path_) +
                  u";SyncPragma=OFF;JournalMode=MEMORY;Timeout=1") {
  std::filesystem::copy_file(OriginalPath(), path_);
}

SampleBook::~SampleBook() {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
  std::filesystem::remove(path_ + "-journal", ignored);
}

database::Driver& SampleBook::Driver() {
  static database::OdbcDriver driver;
  return driver;
}

Rows SampleBook::Contents() const {
  database::Connection connection(Plain());
  connection.Open(connection_);
  Rows rows;
  for (const StringView table :
       {u"SMS_ABFOLDERS", u"SMS_ABCONTACTS", u"SMS_ABGROUPS", u"SMS_ABGROUPMAPS"}) {
    for (const std::string& line : Lines(connection, u"SELECT * FROM " + String(table))) {
      ++rows[ToUtf8(table) + " " + line];
    }
  }
  return rows;
}

bool SampleBook::Run(const std::vector<String>& statements) const {
  database::Connection connection(Plain());
  connection.Open(connection_);
  try {
    connection.Execute(u"BEGIN IMMEDIATE");
  } catch (const Error&) {
    return false;
  }
  for (const String& statement : statements) connection.Execute(statement);
  try {
    connection.Execute(u"COMMIT");
  } catch (const Error&) {
    connection.Execute(u"ROLLBACK");
    return false;
  }
  return true;
}

std::vector<std::string> SampleBook::Orphans() const {
  database::Connection connection(Plain());
  connection.Open(connection_);
  std::vector<std::string> orphans;
  const auto add = [&](const char* what, StringView query) {
    for (const std::string& line : Lines(connection, query)) orphans.push_back(what + line);
  };
  add("contact in no folder: ",
      u"SELECT ID, FNAME, FOLDER_ID FROM SMS_ABCONTACTS WHERE FOLDER_ID <> 0 AND FOLDER_ID NOT IN "
      u"(SELECT ID FROM SMS_ABFOLDERS WHERE TYPE = 'S')");
  add("group in no folder: ",
      u"SELECT ID, NAME, FOLDER_ID FROM SMS_ABGROUPS WHERE FOLDER_ID <> 0 AND FOLDER_ID NOT IN "
      u"(SELECT ID FROM SMS_ABFOLDERS WHERE TYPE = 'S')");
  add("membership in no group: ",
      u"SELECT * FROM SMS_ABGROUPMAPS WHERE GROUP_ID NOT IN (SELECT ID FROM SMS_ABGROUPS)");
  add("membership of no contact: ",
      u"SELECT * FROM SMS_ABGROUPMAPS WHERE CONTACT_TYPE = 'S' AND CAST(CONTACT_ID AS INTEGER) NOT "
      u"IN (SELECT ID FROM SMS_ABCONTACTS)");
  return orphans;
}

// AnsweringScreen

std::int16_t AnsweringScreen::ShowMessage(StringView text, StringView title, std::int32_t style) {
  const FailingAllocations::Scope uncounted(false);
  constexpr std::int32_t kButtons = 0xF;
  ScriptedScreen::ShowMessage(text, title, style);
  switch (style & kButtons) {
    case MessageStyle::YesNo:
      return OnQuestion ? OnQuestion(text) : MessageAnswer::Yes;
    case MessageStyle::OkCancel:
      return MessageAnswer::Ok;
    default:
      ++Refusals;
      return MessageAnswer::Ok;
  }
}

// Stage

Stage::Stage(StringView dialectWord)
    : session(screen, system,
              {[this](StringView) -> database::Driver& { return driver; },
               [this](std::function<void()> closure) {
                 // As the real queue does, which swallows what comes out of a closure.
                 post_([this, closure = std::move(closure)] { Do(closure); });
               }}) {
  constexpr std::size_t kNotes = 10000;
  screen.Log.reserve(kNotes);  // what the screen does is not what fails
  ExpectDialog();
  dialogs = std::make_unique<Dialogs>(session);
  main = std::make_unique<clsMain>(session, *dialogs);
  main->Init(u"", book.ConnectionString(), 0, dialectWord, u"log");
}

Stage::~Stage() {
  driver.Heal();
  Close();
}

void Stage::ExpectDialog() {
  screen.PlayModal([this](controls::Form& form) { Play(form); });
}

void Stage::Play(controls::Form& form) {
  const FailingAllocations::Scope uncounted(false);
  ExpectDialog();  // which may come over this one
  if (auto* contact = dynamic_cast<forms::frmNewContact*>(&form)) {
    if (InContact) std::exchange(InContact, nullptr)(*contact);
  } else if (auto* group = dynamic_cast<forms::frmGroupsNew*>(&form)) {
    if (InGroup) std::exchange(InGroup, nullptr)(*group);
  } else if (auto* folder = dynamic_cast<forms::frmSelectFolder*>(&form)) {
    if (InFolder) std::exchange(InFolder, nullptr)(*folder);
  }
  // Whatever is asked now is whether to close it.
  const auto answers = std::exchange(screen.OnQuestion, nullptr);
  if (form.IsLoaded()) Do([&] { form.UserCloses(); });
  screen.OnQuestion = answers;
}

bool Stage::PressOk(controls::Form& dialog, controls::CommandButton& ok) {
  for (int press = 0; press < 2; ++press) {
    Do([&] { ok.UserClicks(); });
    if (!dialog.IsLoaded()) return true;
    ++Refused;
    if (!TriesAgain) return false;
    driver.Heal();
    screen.Pump();
  }
  return false;
}

bool Stage::Wait(const std::function<bool()>& condition) {
  screen.WaitUntil([&] { return condition() || driver.IsHanging(); });
  return condition();
}

void Stage::Do(const std::function<void()>& act) {
  try {
    Work(act);
  } catch (...) {
    ++Escaped;
  }
}

int Stage::RowOf(const controls::FlexGrid& grid, StringView text) {
  for (int row = 1; row < grid.Rows(); ++row) {
    for (int column = 0; column < grid.Cols(); ++column) {
      if (Trim(grid.Text(row, column)) == text) return row;
    }
  }
  return 0;
}

bool Stage::IsListed(forms::frmAddressBook& window) {
  return !window.List().IsLoading() && window.rsUserContacts() != nullptr &&
         window.StatusBar1.PanelCount() == 2 &&
         window.StatusBar1.PanelAt(1).Text.find(u"item(s)") != String::npos;
}

forms::frmAddressBook* Stage::Book(StringView nodeKey, bool inTree) {
  constexpr std::int32_t kAdministrator = 1;
  if (Work([&] { return main->LoadAddressBook(kAdministrator); }) != 1) return nullptr;
  forms::frmAddressBook& window = dialogs->AddressBook();
  for (int attempt = 0; attempt < 2; ++attempt) {
    if (controls::TreeNode* node = window.tvwContacts.Find(nodeKey)) {
      Do([&] { window.tvwContacts.UserClicks(*node); });
      Wait([&] { return !window.List().IsLoading(); });
      if (IsListed(window) && window.Current().Key == nodeKey) {
        window.tvwContacts.UserFocuses(inTree);
        window.vsfContacts.UserFocuses(!inTree);
        return &window;
      }
    }
    driver.Heal();
    Do([&] { window.UserCloses(); });
    screen.Pump();
    if (Work([&] { return main->LoadAddressBook(kAdministrator); }) != 1) return nullptr;
  }
  return nullptr;
}

bool Stage::SelectRow(forms::frmAddressBook& window, const std::vector<StringView>& texts) {
  std::vector<int> rows;
  for (const StringView text : texts) {
    const int row = RowOf(window.vsfContacts, text);
    if (row == 0) return false;
    rows.push_back(row);
  }
  window.vsfContacts.UserSelects(rows, rows.front());
  return true;
}

bool Stage::WasTold() const {
  if (screen.Refusals > 0 || Log().find("Error Number") != std::string::npos) return true;
  return Log().find("Deletion stopped") != std::string::npos;
}

std::string Stage::Close() {
  if (!main) return {};
  main.reset();
  dialogs.reset();
  session.SessionConnection.reset();
  std::string left;
  if (!WaitForFetches()) left += "a fetch still runs; ";
  screen.Pump();
  const auto count = [&](const char* what) {
    return std::count(screen.Log.begin(), screen.Log.end(), what);
  };
  if (driver.LinksAlive() != 0) left += std::to_string(driver.LinksAlive()) + " links; ";
  if (driver.StatementsAlive() != 0) left += "statements; ";
  if (screen.Dispatcher.Waiting() != 0) left += "closures; ";
  if (count("realise") != count("gone")) left += "forms; ";
  return left;
}

}  // namespace ktrv::tests
