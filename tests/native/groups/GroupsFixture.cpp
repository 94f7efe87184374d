#include "tests/native/groups/GroupsFixture.h"

#include "data/GroupQueries.h"

namespace ktrv::tests {

using database::DataType;
namespace Queries = data::GroupQueries;

GroupsTest::GroupsTest() {
  WorkOn(TypeOfGroup::SharedGroup);
  driver.Changes(u"SMS_ABGROUPS SET NAME", 1);
  driver.Changes(u"DELETE FROM", 0);
  driver.Changes(u"INSERT INTO", 1);
  driver.Answer(Queries::kNameTaken, {{u"1", DataType::Integer}}, {});
  driver.Answer(Queries::kGroupIdByName, {{u"ID", DataType::Integer}}, {{u"77"}});
  GroupIs(u"Team");
  Folders({});
  Candidates({});
  MembersAre({});
  for (const StringView query : {Queries::kCountFolderContacts, Queries::kCountRemoteContacts,
                                 Queries::kCountFolderGroups, Queries::kCountMembers}) {
    Counts(query, 0);
  }
}

forms::frmGroupsNew& GroupsTest::Open(const forms::GroupRequest& request) {
  opened = request;
  Workplace place = session.Place();
  place.Database.TakeConnectionOf(session.Database);
  form = std::make_unique<forms::frmGroupsNew>(std::move(place), request);
  editors.Connect(*form);
  form->Load();
  return *form;
}

forms::frmGroupsNew& GroupsTest::OpenPicker() {
  return Open({.LoadGroupFor = LoadGroupFor::SelectReceipient,
               .GroupType = session.GroupType,
               .SharedMode = session.SharedMode,
               .ExpandGroups = session.ExpandGroups});
}

forms::frmGroupsNew& GroupsTest::OpenToAdd(String folderId) {
  if (folderId != u"0") {
    driver.Answer(Queries::kFolder,
                  {{u"ID", DataType::Integer}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                  {{folderId, u"Folder", u"S", u""}});
  }
  return Open({.GroupType = session.GroupType,
               .SharedMode = session.SharedMode,
               .FolderId = std::move(folderId)});
}

forms::frmGroupsNew& GroupsTest::OpenToModify(String groupId, String name) {
  GroupIs(name);
  return Open({.Mode = ModeOfOperation::Modify,
               .GroupType = session.GroupType,
               .SharedMode = session.SharedMode,
               .GroupId = std::move(groupId),
               .GroupName = std::move(name)});
}

Session& GroupsTest::Left() {
  EXPECT_FALSE(form->IsLoaded());
  if (opened.LoadGroupFor == LoadGroupFor::AddModify) session.Take(form->Result());
  if (form->Picked()) session.Take(*form->Picked());
  return session;
}

void GroupsTest::AnswerContacts(std::function<String(const forms::ContactRequest&)> editor) {
  form->OpenContact = [editor = std::move(editor)](Workplace,
                                                   const forms::ContactRequest& request) {
    return forms::ContactResult{request.SharedMode, editor(request), {}, {}};
  };
}

bool GroupsTest::Complete() {
  return screen.WaitUntil(
      [&] { return !form->Sources().IsLoading() && !form->Members().IsLoading(); });
}

void GroupsTest::Take(std::vector<int> rows) {
  form->vsfFolderContacts.UserSelects(rows, rows.front());
  form->cmdSelect.UserClicks();
}

bool GroupsTest::Choose(StringView source) {
  const int index = form->cboContactType.IndexOf(source);
  if (index < 0) return false;
  form->cboContactType.UserChooses(index);
  return Complete();
}

std::vector<String> GroupsTest::Column(const controls::FlexGrid& grid, StringView key) const {
  std::vector<String> texts;
  const int column = grid.ColIndex(key);
  for (int row = 1; row < grid.Rows(); ++row) texts.push_back(grid.Text(row, column));
  return texts;
}

std::vector<String> GroupsTest::Sources() const {
  std::vector<String> names;
  for (int index = 0; index < form->cboContactType.ListCount(); ++index) {
    names.push_back(form->cboContactType.List(index));
  }
  return names;
}

std::vector<String> GroupsTest::Texts(const TextCollection& collection) {
  std::vector<String> texts;
  for (std::int32_t item = 1; item <= collection.Count(); ++item) {
    texts.push_back(collection.Item(item));
  }
  return texts;
}

void GroupsTest::HoldFetches() {
  session.Database.Open();
  driver.OpenGate.Close();
}

bool GroupsTest::HoldRows(int fetches) {
  driver.FetchGate.Close();
  driver.OpenGate.Open();
  return screen.WaitUntil([&] { return driver.FetchGate.Waiting() == fetches; });
}

void GroupsTest::Folders(std::vector<Row> rows) {
  driver.Answer(Queries::kFolders,
                {{u"ID", DataType::Integer}, {u"NAME"}, {u"TYPE"}, {u"REMOTE_CONTACTS_CATEGORY"}},
                std::move(rows));
}

void GroupsTest::Counts(StringView query, std::int64_t count) {
  driver.Answer(query, {{u"TOTAL", DataType::Integer}}, {{ToDecimal(count)}});
}

namespace {
const std::vector<database::Column> kListColumns = {
    {u"ID"}, {u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}, {u"1"}, {u"MOBILE_DISPLAY"}};
}

void GroupsTest::GroupIs(StringView name) {
  driver.Answer(Queries::kGroup, {{u"NAME"}, {u"FOLDER_ID", DataType::Integer}},
                {{String(name), u"0"}});
}

void GroupsTest::AreThere(const std::vector<Row>& rows) {
  for (const Row& row : rows) there_.push_back({String(Trim(row.at(0).value_or(u"")))});
  driver.Answer(u"SELECT ID FROM SMS_ABCONTACTS WHERE ID IN", {{u"ID"}}, there_);
  driver.Answer(u"SELECT CODE FROM V_ZUL$REMOTE_CONTACTS", {{u"CODE"}}, there_);
}

void GroupsTest::Candidates(std::vector<Row> rows) {
  AreThere(rows);
  driver.Answer(u"AS MOBILE_DISPLAY FROM", kListColumns, std::move(rows));
}

void GroupsTest::MembersAre(std::vector<Row> rows) {
  AreThere(rows);
  std::vector<Row> memberships;
  for (const Row& row : rows) {
    memberships.push_back({row.at(0), row.at(4) == u"3" ? u"R" : u"S"});
  }
  driver.Answer(Queries::kMemberships, {{u"CONTACT_ID"}, {u"CONTACT_TYPE"}},
                std::move(memberships));
  driver.Answer(u"(SELECT CONTACT_ID FROM SMS_ABGROUPMAPS", kListColumns, std::move(rows));
}

std::vector<GroupsTest::Row> GroupsTest::Contacts(int count) {
  std::vector<Row> rows;
  for (int id = 1; id <= count; ++id) {
    rows.push_back({ToDecimal(id), u"Name " + ToDecimal(id), u"9", u"", u"1", u"9"});
  }
  return rows;
}

GroupsOnDatabase::GroupsOnDatabase() {
  DriverFor = [this](StringView) -> database::Driver& { return watched; };
  session.SessionConnectionString = database.ConnectionString();
  database.Run({
      u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, REMOTE_CONTACTS_CATEGORY) VALUES "
      u"(1, 'S', 'Friends', ''), (2, 'R', 'Dealers', 'D')",
      u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, COUNTRYCODE, MOBILENO) VALUES "
      u"(1, 0, 'Anna', '91', '98001'), (2, 0, 'Bert', '', '98002'), (3, 0, 'Cora', NULL, NULL), "
      u"(4, 1, 'Dora', '44', '98004')",
      u"INSERT INTO ZUL$CONTACTS (CODE, NAME, MOBILENO, CATEGORY) VALUES "
      u"('R1', 'Rita', '97001', 'D'), ('R2', 'Rolf', '97002', 'D')",
      u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (11, 'Team', 0), (12, 'Void', 0)",
      u"INSERT INTO SMS_ABGROUPMAPS VALUES (11, '1', 'S'), (11, '2', 'S'), (11, 'R1', 'R')",
  });
}

String GroupsOnDatabase::Query(StringView text) {
  database::Recordset rows(session.Database.Environment);
  rows.Open(text, session.SessionConnectionString);
  String joined;
  for (; !rows.EndOfFile(); rows.MoveNext()) {
    if (!joined.empty()) joined += u",";
    joined += ToText(rows.Field(rows.Columns().front().Name));
  }
  return joined;
}

void GroupsOnDatabase::FailOnce(StringView start, int n, std::function<void()> first) {
  watched.BeforeExecute = [this, start = String(start), left = std::make_shared<int>(n),
                           first = std::move(first)](StringView text) {
    if (!text.starts_with(start) || --*left > 0) return;
    watched.BeforeExecute = nullptr;
    if (first) first();
    throw Error(ErrorNumber::DriverFailure, u"line lost");
  };
}

String GroupsOnDatabase::MembershipsOf(StringView groupId) {
  return Query(
      u"SELECT CONTACT_ID || ':' || CONTACT_TYPE AS M FROM SMS_ABGROUPMAPS WHERE "
      u"GROUP_ID = " +
      String(groupId) + u" ORDER BY " + String(database.OrderOfWriting()));
}

}  // namespace ktrv::tests
