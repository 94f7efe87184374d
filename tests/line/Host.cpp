#include "tests/line/Host.h"

#include <stdexcept>

#include "database/Recordset.h"
#include "database/odbc/ConnectionString.h"

namespace ktrv::tests {
namespace {

constexpr int kGroups = 100;

/// The numbers from 1 in a column I, at most 10,000.
String NumbersTo(int last) {
  const String digit =
      u"(SELECT 0 AS D UNION ALL SELECT 1 UNION ALL SELECT 2 UNION ALL SELECT 3 UNION ALL SELECT 4 "
      u"UNION ALL SELECT 5 UNION ALL SELECT 6 UNION ALL SELECT 7 UNION ALL SELECT 8 UNION ALL "
      u"SELECT 9)";
  return u"(SELECT I FROM (SELECT ROW_NUMBER() OVER () AS I FROM " + digit + u" A, " + digit +
         u" B, " + digit + u" C, " + digit + u" D) F WHERE I <= " + ToDecimal(last) + u") N";
}

}  // namespace

void FillBook(database::Connection& connection, int contacts) {
  connection.Execute(u"INSERT INTO SMS_USERS VALUES (1, 'Admin', 1, 0, 0)");
  connection.Execute(
      u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, USER_ID, "
      u"REMOTE_CONTACTS_CATEGORY) VALUES (1, 'S', 'Lists', 0, 1, '')");
  // On the server, where many rows take a moment.
  connection.Execute(
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO) "
      u"SELECT I, 0, CONCAT('Name', I), '', 'Ek', '91', CONCAT('98', I) FROM " +
      NumbersTo(contacts));
  connection.Execute(u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (1, 'Team', 0)");
  connection.Execute(
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (1, '1', 'S'), (1, '2', 'S'), (1, '3', 'S')");
  connection.Execute(
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) SELECT I, CONCAT('Group ', I), 1 FROM " +
      NumbersTo(100 + kGroups) + u" WHERE I > 100");
  connection.Execute(u"INSERT INTO SMS_ABGROUPMAPS SELECT FLOOR((I - 1) / 2), I - 202, 'S' FROM " +
                     NumbersTo(202 + 2 * kGroups) + u" WHERE I > 202");
  const database::Engine engine = connection.CurrentLink()->Get().EngineKind();
  if (engine != database::Engine::PostgreSql) return;
  // It does not notice ids that a statement names.
  for (const StringView table : {u"SMS_ABFOLDERS", u"SMS_ABCONTACTS", u"SMS_ABGROUPS"}) {
    database::Recordset(connection.Surroundings())
        .Open(u"SELECT SETVAL('" + String(table) + u"_ID_SEQ', 20000)", connection);
  }
}

Host::Host(const String& connectionString, HostSettings settings)
    : settings_(std::move(settings)),
      limited_(
          odbc_,
          [this](StringView text) { return database::odbc::TimeLimitsOf(text, settings_.Limits); }),
      session_(screen_, system_,
               {[&driver = settings_.Through(driver_)](StringView) -> database::Driver& {
                  return driver;
                },
                screen_.Dispatcher.Post(),
                [this] {
                  driver_.CloseKept();
                  limited_.EndIdle();
                }}),
      dialogs_(std::make_unique<Dialogs>(session_)),
      main_(std::make_unique<clsMain>(session_, *dialogs_)) {
  constexpr std::int32_t kAtServer = 1;
  Require(main_->Init(u"", connectionString, kAtServer, u"SQL", u"log") == 1,
          "the component was not initialised");
  session_.SessionUserId = 1;
  session_.IsAdmin = UserType::Administrator;
}

Host::~Host() = default;

void Host::Require(bool done, const char* what) const {
  const std::string log = Log();
  if (!done || log.find("Error Number") != std::string::npos) {
    throw std::runtime_error(what + (": " + log));
  }
}

void Host::OpenContact() {
  contact_ = std::make_unique<forms::frmNewContact>(
      session_.Place(),
      forms::ContactRequest{.Mode = ModeOfOperation::Modify, .EditContactId = u"1000"});
  contact_->Load();
  Require(contact_->txtFname.Text() == u"Name1000", "the contact was not opened");
}

void Host::SaveContact() {
  contact_->txtCity.SetText(u"City " + ToDecimal(++saves_));
  contact_->cmdSave.UserClicks();
  Require(!contact_->IsLoaded(), "the contact was not saved");
}

void Host::OpenNewContact(const String& name) {
  contact_ = std::make_unique<forms::frmNewContact>(session_.Place(), forms::ContactRequest{});
  contact_->Load();
  contact_->txtFname.SetText(name);
  contact_->txtMobileno.SetText(u"98765");
}

void Host::SaveNewContact() {
  contact_->cmdSave.UserClicks();
  Require(!contact_->IsLoaded(), "the contact was not saved");
}

void Host::CloseEditors() {
  contact_.reset();
  group_.reset();
}

void Host::Forgive() {
  forgiven_ = ToUtf8(system_.TextOf(u"log")).size();
}

bool Host::WaitUntil(const std::function<bool()>& condition) {
  return screen_.Dispatcher.RunUntil(condition, settings_.Patience);
}

void Host::OpenAddressBook(const std::function<void()>& seen) {
  const bool opened = main_->LoadAddressBook(1) == 1;
  const forms::frmAddressBook& window = dialogs_->AddressBook();
  WaitUntil([&] { return window.vsfContacts.Rows() > 1; });
  seen();
  WaitUntil([&] { return !window.List().IsLoading(); });
  Require(opened && window.vsfContacts.Rows() > settings_.Contacts,
          "the address book was not opened");
}

void Host::ChooseNode(StringView key, int rows) {
  forms::frmAddressBook& window = dialogs_->AddressBook();
  controls::TreeNode* const node = window.tvwContacts.Find(key);
  Require(node != nullptr, "there is no such node");
  // A click on the current node does not load it again.
  window.Current().Key == key ? window.LoadContacts() : window.tvwContacts.UserClicks(*node);
  WaitUntil([&] { return !window.List().IsLoading(); });
  Require(window.vsfContacts.Rows() == rows + 1, "the node was not listed");
}

void Host::CloseAddressBook() {
  if (dialogs_->AddressBook().IsLoaded()) dialogs_->AddressBook().UserCloses();
}

void Host::CompleteGroup() {
  const bool came =
      WaitUntil([&] { return !group_->Sources().IsLoading() && !group_->Members().IsLoading(); });
  Require(came && group_->Members().IsComplete(), "the lists did not come");
}

void Host::ShowGroup(const forms::GroupRequest& request) {
  group_ = std::make_unique<forms::frmGroupsNew>(session_.Place(), request);
  group_->Load();
  CompleteGroup();
}

void Host::OpenGroup() {
  ShowGroup({.Mode = ModeOfOperation::Modify,
             .GroupType = TypeOfGroup::SharedGroup,
             .GroupId = u"1",
             .GroupName = u"Team"});
  constexpr int kMembers = 3;
  Require(group_->vsfGroupContacts.Rows() == kMembers + 1, "the members are not there");
}

void Host::CloseGroup() {
  group_->cmdCancel.UserClicks();
  group_.reset();
}

void Host::OpenPicker() {
  ShowGroup({.LoadGroupFor = LoadGroupFor::SelectReceipient,
             .GroupType = TypeOfGroup::SharedGroup,
             .ExpandGroups = true});
  group_->cboContactType.UserChooses(group_->cboContactType.IndexOf(u"Lists"));
  CompleteGroup();
  group_->cmdSelectAll.UserClicks();
  Require(group_->vsfGroupContacts.Rows() == kGroups + 1, "the groups were not taken");
  Require(WaitUntil([&] { return !group_->Reached().IsCounting(); }),
          "the groups were not counted");
}

void Host::Expand() {
  group_->cmdOK.UserClicks();
  const auto picked = group_->Picked();
  Require(picked && picked->Selected->Count() == 2 * kGroups, "the groups were not expanded");
  group_.reset();
}

void Host::OpenNewGroup() {
  ShowGroup({.GroupType = TypeOfGroup::SharedGroup});
  group_->cmdSelectAll.UserClicks();
  Require(group_->vsfGroupContacts.Rows() == settings_.Contacts + 1, "the contacts were not taken");
}

int Host::PlaceOfMember(StringView id) const {
  const controls::FlexGrid& grid = group_->vsfGroupContacts;
  int row = 1;
  while (row < grid.Rows() && grid.Text(row, grid.ColIndex(u"ID")) != id) ++row;
  return row;
}

void Host::SaveGroup(const String& name) {
  group_->txtGroupName.SetText(name);
  group_->cmdOK.UserClicks();
  Require(!group_->IsLoaded(), "the group was not saved");
  group_.reset();
}

}  // namespace ktrv::tests
