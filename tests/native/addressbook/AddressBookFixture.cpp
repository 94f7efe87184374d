#include "tests/native/addressbook/AddressBookFixture.h"

#include <stdexcept>

namespace ktrv::tests {

using database::DataType;

AddressBookTest::AddressBookTest() {
  SharedFolders({});
  RemoteFolders({});
  Groups({});
  Lists({});
  GroupsInFolders({});
  for (const StringView query : {Queries::kCountFolderContacts, Queries::kCountRemoteContacts,
                                 Queries::kCountFolderGroups, Queries::kCountGroupMembers}) {
    Counts(query, 0);
  }
}

void AddressBookTest::SharedFolders(std::vector<Row> idsAndNames) {
  for (Row& row : idsAndNames) row.emplace_back(u"0");
  driver.Answer(Queries::kSharedFolders,
                {{u"ID", DataType::Integer}, {u"NAME"}, {u"PARENTFOLDERID", DataType::Integer}},
                std::move(idsAndNames));
}

void AddressBookTest::RemoteFolders(std::vector<Row> idsAndNames) {
  for (Row& row : idsAndNames) {
    row.emplace_back(u"0");
    row.emplace_back(u"Dealers");
  }
  driver.Answer(Queries::kRemoteFolders,
                {{u"ID", DataType::Integer},
                 {u"NAME"},
                 {u"PARENTFOLDERID", DataType::Integer},
                 {u"REMOTE_CONTACTS_CATEGORY"}},
                std::move(idsAndNames));
}

void AddressBookTest::Groups(std::vector<Row> rows) {
  driver.Answer(Queries::kGroups,
                {{u"ID", DataType::Integer}, {u"NAME"}, {u"FOLDER_ID", DataType::Integer}},
                std::move(rows));
}

void AddressBookTest::GroupsInFolders(std::vector<Row> ids) {
  driver.Answer(kGroupsInFolder, {{u"ID", DataType::Integer}}, std::move(ids));
}

void AddressBookTest::Counts(StringView query, std::int64_t count) {
  driver.Answer(query, {{u"TOTALRECORDS", DataType::Integer}}, {{ToDecimal(count)}});
}

void AddressBookTest::Lists(std::vector<Row> rows) {
  driver.Answer(u"AS CONTACTTYPE",
                {{u"ID"},
                 {u"NAME"},
                 {u"SHARED", DataType::Integer},
                 {u"MOBILENO"},
                 {u"EMAIL"},
                 {u"ADDRESS"},
                 {u"ORGANISATION"},
                 {u"FOLDER_ID", DataType::Integer},
                 {u"CONTACTTYPE", DataType::Integer}},
                std::move(rows));
}

AddressBookTest::Row AddressBookTest::Item(String id, String name, String type) {
  return {std::move(id), std::move(name), u"1", u"91 98200",    u"a@b.c",
          u"Street 1",   u"Acme",         u"0", std::move(type)};
}

forms::frmAddressBook& AddressBookTest::Open() {
  if (!form) form = std::make_unique<forms::frmAddressBook>(session.Place(), editors);
  form->Show();
  return *form;
}

void AddressBookTest::Click(StringView key) {
  form->tvwContacts.UserClicks(Node(key));
}

void AddressBookTest::ClickAndWait(StringView key) {
  Click(key);
  ASSERT_TRUE(Complete());
}

bool AddressBookTest::Complete() {
  // The panel of the running load goes when the load is complete.
  return screen.WaitUntil([this] { return form->StatusBar1.PanelCount() == 2; });
}

controls::TreeNode& AddressBookTest::Node(StringView key) {
  controls::TreeNode* node = form->tvwContacts.Find(key);
  if (!node) throw std::logic_error("no node " + ToUtf8(key));
  return *node;
}

std::vector<String> AddressBookTest::Tree() const {
  std::vector<String> nodes;
  for (int index = 1; index <= form->tvwContacts.Count(); ++index) {
    const controls::TreeNode& node = form->tvwContacts.At(index);
    String line;
    for (const auto* parent = node.Parent; parent; parent = parent->Parent) line += u'.';
    nodes.push_back(line + node.Key + u":" + node.Text);
  }
  return nodes;
}

std::vector<String> AddressBookTest::Column(StringView key) const {
  std::vector<String> texts;
  const int column = form->vsfContacts.ColIndex(key);
  for (int row = 1; row < form->vsfContacts.Rows(); ++row) {
    texts.push_back(form->vsfContacts.Text(row, column));
  }
  return texts;
}

}  // namespace ktrv::tests
